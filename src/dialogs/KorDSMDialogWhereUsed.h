#pragma once

#include "dialogs/KorDSMDialog.h"
#include "session/KorDSMWhereUsed.h"

/// Lists who uses a record, in all open databases. It can stay open beside the editor's window.
class KorDSMDialogWhereUsed : public KorDSMDialog {
    Q_OBJECT

public:
    /// `name` is what the record is called.
    KorDSMDialogWhereUsed(const KorString& name, std::vector<KorDSMUsage> usages, QWidget* parent);

Q_SIGNALS:
    /// The user wants to go to this user of the record: a click on its row, or Enter.
    void usageChosen(const KorDSMUsage& usage);
};
