#pragma once

#include "base/LinetypeFile.h"

#include <QAbstractListModel>

/// The line types that a control offers, sorted by name without regard to case. Names that begin with a blank
/// come first and those that begin with a no-break space last: so the entries that are no line types stand
/// apart.
class LinetypeModel : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void removeAll();
    void setSupportPath(const KorString& folder) { m_supportPath = folder; }
    void setFile(const KorString& name) { m_fileName = name; }
    /// Adds the line type of that name from the file, or all of them when it is "*". Returns how many the
    /// file has of what was asked for.
    int load(const KorString& name);
    /// Adds a line type, or replaces the one of that name.
    void add(LinetypeDefinitionPtr definition, int lineTypeId = 0);

    /// The row of a name, without regard to case; -1 when there is none.
    int rowOf(const KorString& name) const;
    /// Null when there is no such row.
    const LinetypeDefinition* definition(int row) const;
    static const LinetypeDefinition* definition(const QModelIndex& index);
    /// The number that the host knows the line type by; 0 when it comes from a file or is not there.
    int lineTypeId(int row) const;
    /// The file that `load` read last; null before the first time, and after `removeAll`.
    const LinetypeFile* file() const { return m_file.get(); }
    std::filesystem::path filePath() const { return LinetypeFile::pathOf(m_supportPath, m_fileName); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Entry {
        std::string key; // what it is sorted and found by
        LinetypeDefinitionPtr definition;
        int lineTypeId = 0;
    };

    void addAll(const std::vector<LinetypeDefinitionPtr>& definitions);

    KorString m_supportPath;
    KorString m_fileName;
    std::shared_ptr<const LinetypeFile> m_file;
    std::filesystem::path m_readPath;
    std::vector<Entry> m_entries;
};
