#pragma once

#include "session/KorDSMRecordUse.h"

#include <QWidget>

#include <cstdint>
#include <functional>

class KorButtonGroup;
class KorDSMPage;

/// Buttons beside the choice of a record: make a new one, copy the chosen one for this user alone, rename it,
/// and go to it, or delete it where no tree has it. What is made is chosen at once, as one step of undo.
class RecordButtons : public QWidget {
    Q_OBJECT

public:
    using FindUse = std::function<KorDSMRecordUse::Use()>;

    /// Which buttons there are: what the page has none of its own for.
    enum class eOffer : std::uint8_t {
        kWithGoing,        ///< to make, copy, rename, and to go there
        kWithDeleting,     ///< to make, copy, rename and delete: for what stands in no tree
        kAllButGoing,      ///< to make, copy and rename
        kMakingAndDeleting ///< only these
    };
    /// The first or the second, whichever is for what the column refers to.
    static eOffer offerFor(const Column& column);

    /// `page` is not owned. `use` gives the cell that chooses; its row is 0 while nothing is shown.
    RecordButtons(KorDSMPage& page, FindUse use, eOffer offer);

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
    /// Deletes the chosen record, and leaves the choice empty; tells who else uses it where that forbids it.
    static void removeFor(KorDSMPage& page, const KorDSMRecordUse::Use& use);

private:
    KorDSMPage& m_page;
    FindUse m_use;
    KorButtonGroup* m_buttons;
};
