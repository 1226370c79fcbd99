#pragma once

#include "records/TableSchema.h"

#include <QAbstractListModel>
#include <QIcon>

#include <functional>
#include <optional>
#include <vector>

/// The rows that a column can refer to, as the list of a combo box: names, with pictures where rows have
/// some. It is asked for what is seen, so that a list of tens of thousands of names costs nothing where
/// nobody opens it. A long list is put in order when somebody begins to choose.
class RecordNames : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// Lists the rows of the table in the current source: as people sort their names, or by key. With
    /// `isOptional` an entry for none, key 0, comes first. Of a short list only those are there that
    /// `isOffered`.
    void fill(const TableSchema& table, bool isSorted, bool isOptional, bool isPictured,
              const std::function<bool(const StructRecord&)>& isOffered);
    /// Puts a long list in its order; entries that are chosen stay so. Nothing to do is fine.
    void putInOrder();
    /// The entry of the row with this key, -1 where it is not listed.
    int entryOf(std::int32_t key) const;
    /// What rows look like is asked anew.
    void forgetPictures();

    /// Entries that are added by name alone have no key; the record is found by the name.
    bool insertRows(int row, int count, const QModelIndex& parent = {}) override;
    bool removeRows(int row, int count, const QModelIndex& parent = {}) override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    int rowCount(const QModelIndex& parent = {}) const override;
    /// The name, the picture, the name of the group that the row is filed in, of a qualifier set as tooltip
    /// what it selects, and as user data the key.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    struct Entry {
        std::int32_t key = 0;
        std::optional<QString> name = {};
        std::optional<QIcon> picture = {};
    };

    const QString& nameAt(std::size_t at) const;
    const QIcon& pictureAt(std::size_t at) const;
    QVariant groupAt(std::size_t at) const;

    const TableSchema* m_table = nullptr;
    const Column* m_filing = nullptr; // null where rows stand in no groups
    bool m_isOptional = false;
    bool m_isPictured = false;
    bool m_isInOrder = true;
    mutable std::vector<Entry> m_entries; // known as far as it was asked for
};
