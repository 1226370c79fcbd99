#pragma once

#include <QTimer>

/// Reads what of the open databases was not needed yet, piece by piece, while nothing else happens in the
/// window: what is selected or searched for later need not wait for it.
class ReadAhead : public QObject {
    Q_OBJECT

public:
    /// `window` must outlive the object.
    explicit ReadAhead(QObject& window);

    /// Begins, or begins again with what was opened or forgotten since.
    void begin();

private:
    void step();

    QTimer m_timer;
};
