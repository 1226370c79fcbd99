#pragma once

#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QWidget>

/// A control asks its page for a tooltip. A page that has one fills in the first three members; one that
/// leaves `text` empty leaves the request unanswered, and nothing is shown.
struct VELTooltipRequest {
    QRect toolRect;              ///< while the mouse stays in here the tooltip stays; global coordinates
    QPointer<QWidget> toolOwner; ///< the control that the tooltip belongs to
    QString text;
    QPoint mousePoint; ///< global coordinates
};
