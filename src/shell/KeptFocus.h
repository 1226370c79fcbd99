#pragma once

#include <QPointer>
#include <QWidget>

/// Gives the focus back at its end to the control that had it, where pages and trees that were filled anew
/// took it away meanwhile.
class KeptFocus {
public:
    KeptFocus();
    ~KeptFocus();
    KeptFocus(const KeptFocus&) = delete;
    KeptFocus& operator=(const KeptFocus&) = delete;

private:
    QPointer<QWidget> m_control;
};
