#include "controls/TabStops.h"

#include <QApplication>
#include <QButtonGroup>
#include <QRadioButton>

#include <algorithm>

namespace {

bool canFocus(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) && widget.isEnabled() && widget.isVisible() &&
           !widget.focusProxy();
}

// Of radio buttons that belong together the chosen one has the focus: on another one a space would choose
// that.
bool isBesideChosen(const QWidget& widget) {
    const auto* radio = qobject_cast<const QRadioButton*>(&widget);
    if (!radio || radio->isChecked())
        return false;
    const auto isChosen = [radio](const QAbstractButton* other) {
        return other->isChecked() && other->group() == radio->group() && canFocus(*other);
    };
    return radio->group() ? std::ranges::any_of(radio->group()->buttons(), isChosen)
                          : std::ranges::any_of(radio->parentWidget()->findChildren<QRadioButton*>(
                                                    QString(), Qt::FindDirectChildrenOnly),
                                                isChosen);
}

bool takesFocus(const QWidget& widget) {
    return canFocus(widget) && !isBesideChosen(widget);
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
