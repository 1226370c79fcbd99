#pragma once

#include "base/KorString.h"

#include <optional>
#include <set>

class KorLinetypeCombo;
class QWidget;

/// The line types of the current database in a line type control, with an entry that stands for the default
/// and one that loads another line type from a file.
class ClippingLinetypes {
public:
    static constexpr int kDefaultKey = -1;

    /// `combo` is not owned.
    void setControl(KorLinetypeCombo* combo);

    /// Fills the control. A line type that its file does not have is offered without its line.
    void fill();
    /// Chooses the line type of that key, the default entry for -1, nothing when there is no such key.
    void select(int key);
    /// The key of what the user chose; -1 for the default. Choosing the load entry asks for a line type of a
    /// file; a line type that the database lacks is appended to it. Nothing when no line type came of it.
    std::optional<int> keyOfChoice(const KorString& chosen, QWidget* window);

private:
    std::optional<KorString> pickFromFile(QWidget* window);
    bool appendHostLinetype(const KorString& name);
    void load(const KorString& name, const KorString& filePath);

    KorLinetypeCombo* m_combo = nullptr;
    std::set<KorString> m_loadedNames; // in lower case
    KorString m_supportPath;
    KorString m_loadEntry;
    KorString m_defaultEntry;
};
