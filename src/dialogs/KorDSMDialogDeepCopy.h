#pragma once

#include "dialogs/KorDSMDialog.h"
#include "session/KorDSMDeepCopy.h"

#include <optional>

class CopyPreview;
class RecordChoice;

/// Asks where records are copied with all that they use, and shows before what would become of each of them.
/// What it shows is what is done.
class KorDSMDialogDeepCopy : public KorDSMDialog {
    Q_OBJECT

public:
    /// Copies these records of the source, which has a target; `to` is the one that is proposed, and `group`
    /// the group there under which new records are filed.
    KorDSMDialogDeepCopy(SourceId from, std::vector<RowRef> records, QWidget* parent,
                         std::optional<SourceId> to = {}, RowRef group = {});
    /// Lets the user choose among the records of a section, in all sources but the target. New records are
    /// filed under `group` of the target, or where they were filed.
    KorDSMDialogDeepCopy(SourceId to, const KorDSMSection& section, QWidget* parent, RowRef group = {});

    /// What is to be copied, when the dialog was accepted.
    const KorDSMDeepCopy::Wish& wish() const { return m_wish; }

private:
    KorDSMDialogDeepCopy(KorDSMDeepCopy::Wish wish, const KorDSMSection* section, QWidget* parent);
    void setTexts();
    void setUpSources();
    void fillChoices();

    KorDSMDeepCopy::Wish m_wish;
    const KorDSMSection* m_section;
    std::vector<SourceId> m_sources; // of which one can be chosen: targets, or where to copy from
    RecordChoice* m_choice;          // null where the records are given
    CopyPreview* m_preview;
};
