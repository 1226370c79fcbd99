#include "controls/KorVerticalSplitter.h"

#include "base/Translation.h"
#include "controls/KorQt.h"
#include "controls/KorStyle.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include <algorithm>

namespace {

constexpr int kStep = 16;
constexpr int kLeastLeft = 150; // in which names can be read

class Bar : public QSplitterHandle {
public:
    explicit Bar(KorVerticalSplitter* splitter) : QSplitterHandle(splitter->orientation(), splitter) {
        setFocusPolicy(Qt::TabFocus);
        setAccessibleName(toQt(translated("Divider")));
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        auto* owner = static_cast<KorVerticalSplitter*>(splitter());
        switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Up:
            return owner->setLeftWidth(owner->leftWidth() - kStep);
        case Qt::Key_Right:
        case Qt::Key_Down:
            return owner->setLeftWidth(owner->leftWidth() + kStep);
        case Qt::Key_Home:
            return owner->setLeftWidth(0);
        case Qt::Key_End:
            return owner->setLeftWidth(std::max(owner->width(), owner->height()));
        default:
            QSplitterHandle::keyPressEvent(event);
        }
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(KorStyle::markColor(palette()));
        if (orientation() == Qt::Horizontal)
            painter.drawLine(width() / 2, 0, width() / 2, height());
        else
            painter.drawLine(0, height() / 2, width(), height() / 2);
        if (!hasFocus())
            return;
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.state |= QStyle::State_KeyboardFocusChange;
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
};

} // namespace

KorVerticalSplitter::KorVerticalSplitter(QWidget* parent) : QSplitter(Qt::Horizontal, parent) {
    setChildrenCollapsible(false);
    setHandleWidth(7);
    connect(this, &QSplitter::splitterMoved, this, [this] { m_leftBefore = 0; });
}

void KorVerticalSplitter::setLeftWidth(int width) {
    const QList<int> now = sizes();
    if (now.size() < 2)
        return;
    const int both = now[0] + now[1];
    const int left = std::clamp(width, 0, both);
    m_leftBefore = 0;
    setSizes({left, both - left});
}

int KorVerticalSplitter::leftWidth() const {
    return sizes().value(0);
}

void KorVerticalSplitter::setRightRoom(int width) {
    m_rightRoom = width;
    giveWay();
}

QByteArray KorVerticalSplitter::saveWanted() {
    const QList<int> now = sizes();
    if (m_leftBefore == 0 || now.size() < 2)
        return saveState();
    const QSignalBlocker quiet(this);
    setSizes({m_leftBefore, now[0] + now[1] - m_leftBefore});
    QByteArray state = saveState();
    setSizes(now);
    return state;
}

void KorVerticalSplitter::restoreWanted(const QByteArray& state) {
    m_leftBefore = 0;
    restoreState(state);
    giveWay();
}

void KorVerticalSplitter::giveWay() {
    const QList<int> now = sizes();
    if (m_rightRoom == 0 || now.size() < 2)
        return;
    const int both = now[0] + now[1];
    const int wanted = std::max(now[0], m_leftBefore);
    const int left = std::min(wanted, std::max(both - m_rightRoom, kLeastLeft));
    m_leftBefore = left < wanted ? wanted : 0;
    if (left != now[0])
        setSizes({left, both - left});
}

QSplitterHandle* KorVerticalSplitter::createHandle() {
    return new Bar(this);
}

void KorVerticalSplitter::resizeEvent(QResizeEvent* event) {
    QSplitter::resizeEvent(event);
    giveWay();
}

void KorVerticalSplitter::showEvent(QShowEvent* event) {
    QSplitter::showEvent(event);
    for (int pane = 0; pane < count(); ++pane)
        setStretchFactor(pane, pane == 0 ? 0 : 1);
}
