#include "controls/KorButtonGroup.h"

#include "base/KorAssert.h"
#include "controls/KorQt.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QStyle>
#include <QToolButton>

#include <algorithm>
#include <functional>

namespace {

constexpr int kMargin = 4; ///< around the picture of a button

// A strip that may wrap goes on in a row below where its buttons have no room beside each other, so that it
// does not keep what stands below it wide.
class StripLayout : public QBoxLayout {
public:
    explicit StripLayout(QWidget* strip) : QBoxLayout(LeftToRight, strip) {}

    bool hasHeightForWidth() const override { return mayWrap(); }
    int heightForWidth(int width) const override {
        return mayWrap() ? lay({0, 0, width, 0}, nullptr) : QBoxLayout::heightForWidth(width);
    }
    int minimumHeightForWidth(int width) const override { return heightForWidth(width); }
    QSize minimumSize() const override {
        QSize size = QBoxLayout::minimumSize();
        if (mayWrap()) {
            size.setWidth(0);
            for (int i = 0; i < count(); ++i)
                size.setWidth(std::max(size.width(), itemAt(i)->minimumSize().width()));
        }
        return size;
    }
    void setGeometry(const QRect& area) override {
        if (!mayWrap())
            return QBoxLayout::setGeometry(area);
        // NOLINTNEXTLINE(bugprone-parent-virtual-call): the rows are laid here, not by the box
        QLayout::setGeometry(area);
        lay(area, [this](QLayoutItem& item, const QRect& place) {
            item.setGeometry(QStyle::visualRect(parentWidget()->layoutDirection(), geometry(), place));
        });
    }

private:
    bool mayWrap() const { return parentWidget() && parentWidget()->property("mayWrap").toBool(); }

    // Goes through the places of the items, and returns how high all rows are.
    int lay(const QRect& area, const std::function<void(QLayoutItem&, const QRect&)>& take) const {
        QPoint at = area.topLeft();
        int rowHeight = 0;
        for (int i = 0; i < count(); ++i) {
            QLayoutItem& item = *itemAt(i);
            const QSize size = item.sizeHint();
            if (at.x() > area.left() && at.x() + size.width() > area.left() + area.width()) {
                at = {area.left(), at.y() + rowHeight + spacing()};
                rowHeight = 0;
            }
            if (take)
                take(item, {at, size});
            at.rx() += size.width() + spacing();
            rowHeight = std::max(rowHeight, size.height());
        }
        return at.y() + rowHeight - area.top();
    }
};

} // namespace

KorButtonGroup::KorButtonGroup(QWidget* parent) : KorButtonGroup(Qt::Horizontal, parent) {}

KorButtonGroup::KorButtonGroup(Qt::Orientation orientation, QWidget* parent)
    : QWidget(parent), m_layout(new StripLayout(this)) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(1);
    setOrientation(orientation);
}

void KorButtonGroup::setOrientation(Qt::Orientation orientation) {
    const bool horizontal = orientation == Qt::Horizontal;
    m_layout->setDirection(horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_layout->setAlignment(horizontal ? Qt::AlignLeft : Qt::AlignTop);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
}

void KorButtonGroup::setIconSize(const QSize& size) {
    m_iconSize = size;
    for (const Button& button : m_buttons) {
        button.widget->setIconSize(size);
        button.widget->setFixedSize(size + 2 * QSize(kMargin, kMargin));
    }
}

void KorButtonGroup::addButton(int id, const KorString& tooltip, const QIcon& icon) {
    auto* widget = new QToolButton(this);
    widget->setAutoRaise(true);
    widget->setIcon(icon);
    widget->setIconSize(m_iconSize);
    widget->setFixedSize(m_iconSize + 2 * QSize(kMargin, kMargin));
    widget->setCheckable(m_checkable);
    widget->setAutoExclusive(m_checkable);
    widget->installEventFilter(this);
    connect(widget, &QToolButton::clicked, this, [this, id] {
        keepOneTabStop();
        Q_EMIT buttonPressed(id);
    });
    m_layout->addWidget(widget);
    m_buttons.push_back({id, widget, true});
    setButtonText(id, tooltip, {});
    keepOneTabStop();
}

void KorButtonGroup::setButtonText(int id, const KorString& text, const QKeySequence& key) {
    QToolButton* widget = button(id);
    if (!KorAssert::check(widget != nullptr, "the strip has such a button"))
        return;
    widget->setAccessibleName(toQt(text));
    widget->setToolTip(
        key.isEmpty() ? toQt(text)
                      : QStringLiteral("%1 (%2)").arg(toQt(text), key.toString(QKeySequence::NativeText)));
}

void KorButtonGroup::setButtonMenu(int id, QMenu* menu) {
    QToolButton* widget = button(id);
    if (!KorAssert::check(widget != nullptr, "the strip has such a button"))
        return;
    widget->setMenu(menu);
    widget->setPopupMode(QToolButton::MenuButtonPopup);
    widget->setFixedWidth(widget->width() +
                          style()->pixelMetric(QStyle::PM_MenuButtonIndicator, nullptr, widget));
}

int KorButtonGroup::buttonId(int index) const {
    return index >= 0 && index < static_cast<int>(m_buttons.size())
               ? m_buttons[static_cast<std::size_t>(index)].id
               : -1;
}

KorButtonGroup::Button* KorButtonGroup::find(int id) {
    const auto at =
        std::find_if(m_buttons.begin(), m_buttons.end(), [id](const Button& b) { return b.id == id; });
    return at == m_buttons.end() ? nullptr : &*at;
}

QToolButton* KorButtonGroup::button(int id) const {
    const Button* found = const_cast<KorButtonGroup*>(this)->find(id);
    return found ? found->widget : nullptr;
}

void KorButtonGroup::setCheckable(bool on) {
    m_checkable = on;
    for (const Button& button : m_buttons) {
        button.widget->setCheckable(on);
        button.widget->setAutoExclusive(on);
    }
}

void KorButtonGroup::setCheckedButton(int id) {
    if (QToolButton* widget = button(id); widget && m_checkable)
        widget->setChecked(true);
    keepOneTabStop();
}

int KorButtonGroup::checkedButton() const {
    for (const Button& button : m_buttons)
        if (button.widget->isChecked())
            return button.id;
    return -1;
}

void KorButtonGroup::enableButton(int id, bool enable) {
    Button* button = find(id);
    if (!button || button->enabled == enable)
        return;
    button->enabled = enable;
    button->widget->setEnabled(enable && m_enabled);
    keepOneTabStop();
}

bool KorButtonGroup::isButtonEnabled(int id) const {
    const Button* button = const_cast<KorButtonGroup*>(this)->find(id);
    return button && button->enabled;
}

void KorButtonGroup::enableWindow(bool enable) {
    m_enabled = enable;
    for (const Button& button : m_buttons)
        button.widget->setEnabled(button.enabled && enable);
    keepOneTabStop();
}

/// The Tab key stops at the focused or pressed-down button, else at the first one that can be used.
void KorButtonGroup::keepOneTabStop() {
    const auto usable = [](const Button& b) { return b.widget->isEnabled(); };
    const auto preferred = [&](const Button& b) {
        return usable(b) && (b.widget->hasFocus() || (m_checkable && b.widget->isChecked()));
    };
    auto stop = std::find_if(m_buttons.begin(), m_buttons.end(), preferred);
    if (stop == m_buttons.end())
        stop = std::find_if(m_buttons.begin(), m_buttons.end(), usable);
    for (auto at = m_buttons.begin(); at != m_buttons.end(); ++at)
        at->widget->setFocusPolicy(at == stop ? Qt::TabFocus : Qt::NoFocus);
}

void KorButtonGroup::moveFocus(const QToolButton* from, int key) {
    std::vector<QToolButton*> usable;
    for (const Button& button : m_buttons)
        if (button.widget->isEnabled())
            usable.push_back(button.widget);
    const auto at = std::find(usable.begin(), usable.end(), from);
    if (at == usable.end())
        return;
    auto target = at;
    const bool back = key == Qt::Key_Left || key == Qt::Key_Up;
    if (key == Qt::Key_Home)
        target = usable.begin();
    else if (key == Qt::Key_End)
        target = usable.end() - 1;
    else if (back)
        target = at == usable.begin() ? at : at - 1;
    else
        target = at + 1 == usable.end() ? at : at + 1;
    (*target)->setFocus(back ? Qt::BacktabFocusReason : Qt::TabFocusReason);
    keepOneTabStop();
}

bool KorButtonGroup::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* press = static_cast<QKeyEvent*>(event);
    auto* widget = static_cast<QToolButton*>(watched);
    if (press->key() == Qt::Key_Down && press->modifiers() == Qt::AltModifier && widget->menu()) {
        widget->showMenu();
        return true;
    }
    switch (press->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
        moveFocus(widget, press->key());
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        widget->click();
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}
