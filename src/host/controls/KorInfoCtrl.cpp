#include "controls/KorInfoCtrl.h"

#include "controls/KorPictures.h"
#include "controls/KorQt.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int kMargin = 6;
constexpr int kTextWidth = 260; ///< of a text that may choose its width

} // namespace

KorInfoCtrl::KorInfoCtrl(QWidget* parent) : QFrame(parent) {
    setFrame(false);
    setFitToContent(false);
}

void KorInfoCtrl::setInfo(const KorString& text, int pictureId) {
    m_text = text;
    m_pictureId = pictureId;
    m_picture = pictureId ? KorPictures::bitmap(pictureId) : QIcon();
    m_pictureSize = pictureId ? KorPictures::bitmapSize(pictureId) : QSize(0, 0);
    setAccessibleName(toQt(text.isEmpty() && pictureId ? KorPictures::description(pictureId) : text));
    updateGeometry();
    update();
}

void KorInfoCtrl::setFrame(bool on) {
    setFrameStyle(on ? QFrame::StyledPanel | QFrame::Plain : QFrame::NoFrame);
}

void KorInfoCtrl::setFitToContent(bool on) {
    const auto policy = on ? QSizePolicy::Maximum : QSizePolicy::Preferred;
    QSizePolicy both(policy, policy);
    both.setHeightForWidth(true);
    setSizePolicy(both);
}

/// The room of the text in a panel of that width, from the top left of the content.
QRect KorInfoCtrl::textRect(int width) const {
    if (m_text.isEmpty())
        return {};
    const int left = m_pictureSize.isEmpty() ? 0 : m_pictureSize.width() + kMargin;
    const QRect room(left, 0, std::max(width - 2 * (kMargin + frameWidth()) - left, 40), 10'000);
    return fontMetrics().boundingRect(room, Qt::TextWordWrap, toQt(m_text));
}

QSize KorInfoCtrl::sizeHint() const {
    const int around = 2 * (kMargin + frameWidth());
    const QRect text = textRect(m_pictureSize.width() + kTextWidth);
    return m_pictureSize.expandedTo(QSize(text.right() + 1, text.bottom() + 1)) + QSize(around, around);
}

QSize KorInfoCtrl::minimumSizeHint() const {
    if (sizePolicy().horizontalPolicy() == QSizePolicy::Maximum)
        return sizeHint();
    return m_text.isEmpty() ? sizeHint().boundedTo(QSize(48, 36)) : QSize(80, 24);
}

bool KorInfoCtrl::hasHeightForWidth() const {
    return !m_text.isEmpty();
}

int KorInfoCtrl::heightForWidth(int width) const {
    const int content = std::max(textRect(width).bottom() + 1, m_pictureSize.height());
    return content + 2 * (kMargin + frameWidth());
}

void KorInfoCtrl::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    QPainter painter(this);
    const QRect content = contentsRect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const QSize fitting = m_pictureSize.boundedTo(m_pictureSize.scaled(content.size(), Qt::KeepAspectRatio));
    QRect picture(content.topLeft(), fitting);
    if (m_text.isEmpty())
        picture.moveCenter(content.center());
    m_picture.paint(&painter, picture, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    if (m_text.isEmpty())
        return;
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(textRect(width()).translated(content.topLeft()), Qt::TextWordWrap, toQt(m_text));
}

void KorInfoCtrl::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
    update();
}
