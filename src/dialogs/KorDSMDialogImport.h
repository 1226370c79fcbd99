#pragma once

#include "dialogs/KorDSMDialog.h"
#include "session/KorDSMImport.h"

class CopyPreview;
class QLabel;
class RecordChoice;

/// Asks which styles of an exchange file come into which source, and shows before what would become of each
/// record. What it shows is what is done.
class KorDSMDialogImport : public KorDSMDialog {
    Q_OBJECT

public:
    /// All styles of `import`, which is open and must outlive the dialog, into `to` at first.
    KorDSMDialogImport(const KorDSMImport& import, SourceId to, QWidget* parent);

    /// What is to be imported, when the dialog was accepted.
    const KorDSMDeepCopy::Wish& wish() const { return m_wish; }

private:
    void setTexts(const KorDSMImport& import);
    void setUpTargets();
    void showCount();

    KorDSMDeepCopy::Wish m_wish;
    std::vector<SourceId> m_targets;
    RecordChoice* m_styles;
    QLabel* m_count;
    CopyPreview* m_preview;
};
