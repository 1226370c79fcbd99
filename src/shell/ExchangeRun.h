#pragma once

#include "model/KorDSMBusy.h"
#include "model/KorDSMMessages.h"
#include "session/KorDSMExchange.h"

#include <QObject>
#include <QStringList>

/// One export or import as the user sees it: progress in the status bar, Escape cancels it, and nothing else
/// can be touched meanwhile. It begins with the construction and ends with the destruction.
class ExchangeRun : public QObject {
    Q_OBJECT

public:
    ExchangeRun();
    ~ExchangeRun() override;

    /// What the user should know of, in the order in which it came up.
    const QStringList& messages() const { return m_messages; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void start(int steps, const KorString& name);
    void step(int done);
    void end();

    KorDSMBusy m_busy;
    ExchangeCallbacks m_previous;
    DsmProgress m_progress;
    int m_steps = 0;
    QStringList m_messages;
};
