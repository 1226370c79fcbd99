#pragma once

#include "session/KorDSMRecordUse.h"

#include <QWidget>

#include <cstdint>
#include <functional>

class KorButtonGroup;
class KorDSMPage;

/// Buttons beside the choice of a record: make a new one, copy the chosen one for this user alone, rename it,
/// and go to it. What is made is chosen at once, as one step of undo.
class RecordButtons : public QWidget {
    Q_OBJECT

public:
    using FindUse = std::function<KorDSMRecordUse::Use()>;

    /// Whether the buttons have one that goes to the chosen record: not where the page has its own.
    enum class eGoes : std::uint8_t { kYes, kByPage };

    /// `page` is not owned. `use` gives the cell that chooses; its row is 0 while nothing is shown.
    RecordButtons(KorDSMPage& page, FindUse use, eGoes goes = eGoes::kYes);

    /// Whether users make records that the column refers to.
    static bool areFor(const Column& column);
    /// Brings the buttons in line with what is chosen and with what the page may change.
    void enable();

    /// Makes, copies or renames a record for the cell after asking for its name; the window follows. For
    /// lists that offer the same in a menu.
    static void makeFor(KorDSMPage& page, const KorDSMRecordUse::Use& use);
    static void copyFor(KorDSMPage& page, const KorDSMRecordUse::Use& use);
    static void renameFor(KorDSMPage& page, const KorDSMRecordUse::Use& use);
    static void goTo(const KorDSMRecordUse::Use& use);

private:
    KorDSMPage& m_page;
    FindUse m_use;
    KorButtonGroup* m_buttons;
};
