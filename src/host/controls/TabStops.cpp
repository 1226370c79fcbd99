#include "controls/TabStops.h"

#include <QApplication>
#include <QWidget>

namespace {

bool takesFocus(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) && widget.isEnabled() && widget.isVisible() &&
           !widget.focusProxy();
}

} // namespace

QWidgetList TabStops::in(const QWidgetList& parts) {
    QWidgetList stops;
    for (QWidget* part : parts) {
        if (takesFocus(*part))
            stops << part;
        for (QWidget* next = part->nextInFocusChain(); next != part; next = next->nextInFocusChain())
            if (part->isAncestorOf(next) && takesFocus(*next))
                stops << next;
    }
    return stops;
}

bool TabStops::step(const QWidgetList& parts, bool forward) {
    const QWidgetList stops = in(parts);
    if (stops.isEmpty())
        return false;
    const auto count = stops.size();
    const auto from = stops.indexOf(QApplication::focusWidget());
    const auto to = from < 0 ? (forward ? 0 : count - 1) : (from + (forward ? 1 : count - 1)) % count;
    stops[to]->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}
