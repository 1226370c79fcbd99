#pragma once

#include "dialogs/KorDSMDialog.h"
#include "session/KorDSMWhereUsed.h"

#include <optional>

/// Says that a record cannot be deleted because others use it, and on demand who does.
class KorDSMDialogInUse : public KorDSMDialog {
    Q_OBJECT

public:
    /// `text` is the refusal.
    KorDSMDialogInUse(const KorString& text, std::vector<KorDSMUsage> users, QWidget* parent);

    /// The user of the record to which the reader wants to go; choosing one closes the dialog.
    const std::optional<KorDSMUsage>& chosen() const { return m_chosen; }

private:
    std::optional<KorDSMUsage> m_chosen;
};
