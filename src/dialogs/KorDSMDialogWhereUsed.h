#pragma once

#include "dialogs/KorDSMDialog.h"
#include "session/KorDSMWhereUsed.h"

#include <cstdint>

class UsageList;

/// Lists who uses a record, in all open databases. It can stay open beside the editor's window, and looks
/// again whenever the user comes back to it.
class KorDSMDialogWhereUsed : public KorDSMDialog {
    Q_OBJECT

public:
    enum class eUsers : std::uint8_t { kOfNamesakesToo, kOfRecordAlone };

    /// `name` is what the record, a row of `source`, is called.
    KorDSMDialogWhereUsed(const KorString& name, SourceId source, RowRef row, QWidget* parent,
                          eUsers users = eUsers::kOfNamesakesToo);

Q_SIGNALS:
    /// The user wants to go to this user of the record: a click on its row, or Enter.
    void usageChosen(const KorDSMUsage& usage);

protected:
    void changeEvent(QEvent* event) override;

private:
    void look();

    SourceId m_source;
    RowRef m_row;
    eUsers m_wanted;
    UsageList* m_users;
};
