#pragma once

#include "base/KorString.h"
#include "dialogs/KorDSMDialog.h"
#include "records/KorOdbcKey.h"
#include "records/TableTypes.h"

#include <vector>

struct KorDSMSharedRecord;
struct KorDSMUsage;

/// Asks what to do before a field of a shared record is changed.
class KorDSMDialogConfirmation : public KorDSMDialog {
    Q_OBJECT

public:
    enum eAction : int { kModify = 0, kMakeCopy = 1, kCancelModification = 2 };

    /// `table` 48 or an invalid key is a programming error: the dialog then speaks of an "item". `user` is
    /// the name of the record that can have a copy for itself alone; without one that is not offered.
    KorDSMDialogConfirmation(eTableType table, const KorOdbcKey& key, QWidget* parent,
                             const KorString& user = {});

    /// Runs the dialog for a record and turns the outcome into an answer: 1 write, 2 make a copy, 0 neither.
    static int ask(eTableType table, const KorOdbcKey& key, QWidget* parent, const KorString& user);
    static int ask(eTableType table, const KorOdbcKey& key, QWidget* parent) {
        return ask(table, key, parent, {});
    }

    void accept() override;
    eAction selectedAction() const { return m_action; }

private:
    void OnInitDialog(const KorDSMSharedRecord& record);
    void offerCopy(const KorString& user);
    // Who uses the record is seen before the answer; a small screen can fold it away.
    void showUsers(std::vector<KorDSMUsage> users);

    eAction m_action = kModify;
};
