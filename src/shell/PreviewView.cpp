#include "shell/PreviewView.h"

#include "controls/KorStyle.h"
#include "shell/PrimitivePainter.h"

#include <QEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kMargin = 8;      // pixels around a whole drawing
constexpr double kReach = 6;    // pixels in which a pointer means a line
constexpr double kLeast = 0.01; // pixels in a millimetre
constexpr double kMost = 400;

PrimitivePainter::Ground groundOf(const QPalette& palette) {
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    return {isDark ? PaperColor::eGround::kDark : PaperColor::eGround::kPaper, 1.0};
}

double distanceToSegment(const QPointF& p, const QPointF& a, const QPointF& b) {
    const QPointF along = b - a;
    const double length = QPointF::dotProduct(along, along);
    const double part = length > 0 ? std::clamp(QPointF::dotProduct(p - a, along) / length, 0.0, 1.0) : 0.0;
    const QPointF apart = p - (a + along * part);
    return std::hypot(apart.x(), apart.y());
}

} // namespace

PreviewView::PreviewView(QWidget* parent) : QWidget(parent), m_single(new QTimer(this)) {
    m_single->setObjectName("singleClick");
    m_single->setSingleShot(true);
    connect(m_single, &QTimer::timeout, this, [this] {
        if (const auto place = std::exchange(m_clicked, std::nullopt))
            Q_EMIT clicked(*place, m_clickedAt);
    });
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    grabGesture(Qt::PinchGesture);
    setMinimumSize(160, 80);
}

void PreviewView::show(std::shared_ptr<const Drawing> drawing) {
    m_drawing = std::move(drawing);
    m_all = m_drawing ? m_drawing->all() : std::vector<const Primitive*>();
    m_starts.clear();
    std::size_t start = 0;
    for (const ViewPicture& view : m_drawing ? m_drawing->views : std::vector<ViewPicture>())
        m_starts.push_back(start += view.primitives.size());
    m_marked.clear();
    m_clicked.reset();
    forgetPictures();
    pointAt(std::nullopt);
    if (m_follows)
        showWanted();
    update();
}

void PreviewView::compareWith(std::shared_ptr<const Drawing> other, double share, const QString& emptyText) {
    if (m_other != other) {
        m_other = std::move(other);
        m_allOther = m_other ? m_other->all() : std::vector<const Primitive*>();
        m_otherPicture = {};
    }
    m_share = std::clamp(share, 0.0, 1.0);
    m_otherEmptyText = emptyText;
    update();
}

bool PreviewView::isOnDivider(const QPointF& position) const {
    constexpr double kGrip = 4; // pixels
    return m_other && std::abs(position.x() - m_share * width()) <= kGrip;
}

void PreviewView::forgetPictures() {
    m_picture = {};
    m_otherPicture = {};
}

void PreviewView::setEmptyText(const QString& text) {
    if (m_emptyText == text)
        return;
    m_emptyText = text;
    update();
}

void PreviewView::mark(Places places) {
    if (m_marked == places)
        return;
    m_marked = std::move(places);
    update();
}

QPointF PreviewView::toView(Vec2 point) const {
    return {width() / 2.0 + (point.u - m_centre.u) * m_scale,
            height() / 2.0 - (point.v - m_centre.v) * m_scale};
}

Vec2 PreviewView::toSheet(const QPointF& position) const {
    return {m_centre.u + (position.x() - width() / 2.0) / m_scale,
            m_centre.v - (position.y() - height() / 2.0) / m_scale};
}

void PreviewView::place(Vec2 centre, double scale) {
    m_centre = centre;
    m_scale = std::clamp(scale, kLeast, kMost);
    forgetPictures();
    update();
    Q_EMIT zoomed();
}

void PreviewView::showWanted() {
    const Box2 whole = m_drawing ? m_drawing->box() : Box2();
    const Box2& box = m_wanted.isEmpty() ? whole : m_wanted;
    if (box.isEmpty())
        return;
    const double across = (width() - 2 * kMargin) / std::max(box.width(), 1.0);
    const double up = (height() - 2 * kMargin) / std::max(box.height(), 1.0);
    // A single line does not fill the view, and what lies around belongs to a part of the drawing.
    constexpr double kNearest = 12; // pixels in a millimetre
    constexpr double kAround = 1.25;
    const double scale = std::min(across, up);
    place(box.middle(), m_wanted.isEmpty() ? scale : std::min(scale / kAround, kNearest));
}

void PreviewView::fit() {
    zoomTo({});
}

void PreviewView::zoomTo(const Box2& box) {
    m_follows = true;
    m_wanted = box;
    showWanted();
}

void PreviewView::actualSize() {
    constexpr double kInch = 25.4;
    m_follows = false;
    place(m_centre, logicalDpiX() / kInch);
}

void PreviewView::zoomBy(double factor) {
    zoomAbout(QPointF(width(), height()) / 2, factor);
}

void PreviewView::zoomAbout(const QPointF& position, double factor) {
    const Vec2 held = toSheet(position);
    const double scale = std::clamp(m_scale * factor, kLeast, kMost);
    m_follows = false;
    place({held.u - (position.x() - width() / 2.0) / scale, held.v + (position.y() - height() / 2.0) / scale},
          scale);
}

void PreviewView::move(const QPointF& by) {
    m_follows = false;
    place({m_centre.u - by.x() / m_scale, m_centre.v + by.y() / m_scale}, m_scale);
}

std::vector<const Primitive*> PreviewView::primitivesOf(const Places& places) const {
    std::vector<const Primitive*> primitives;
    for (const std::size_t each : places)
        if (each < m_all.size())
            primitives.push_back(m_all[each]);
    return primitives;
}

std::optional<std::size_t> PreviewView::placeAt(const QPointF& position) const {
    if (m_other && position.x() < m_share * width())
        return std::nullopt; // the other drawing lies there
    std::optional<std::size_t> nearest;
    double least = kReach;
    const auto consider = [&](std::size_t place, double distance) {
        if (distance <= least) {
            least = distance;
            nearest = place;
        }
    };
    for (std::size_t i = 0; i < m_all.size(); ++i) {
        const Primitive& primitive = *m_all[i];
        if (primitive.points.empty())
            continue;
        if (primitive.kind == Primitive::kLine) {
            for (std::size_t k = 1; k < primitive.points.size(); ++k)
                consider(i, distanceToSegment(position, toView(primitive.points[k - 1]),
                                              toView(primitive.points[k])));
        } else if (primitive.kind == Primitive::kArc) {
            const QPointF from = position - toView(primitive.points[0]);
            const double angle = std::atan2(-from.y(), from.x()) * 180 / M_PI;
            const double behind = std::fmod(angle - primitive.from + 720, 360);
            if (behind <= primitive.to - primitive.from)
                consider(i, std::abs(std::hypot(from.x(), from.y()) - primitive.radius * m_scale));
        } else {
            // Lines in front of an area, and around a text, are meant before it.
            constexpr double kInside = 2;
            const Box2 box = primitive.box();
            const Vec2 point = toSheet(position);
            const bool isInside = primitive.kind == Primitive::kFill
                                      ? contains({primitive.points}, point)
                                      : point.u >= box.low.u && point.u <= box.high.u &&
                                            point.v >= box.low.v && point.v <= box.high.v;
            if (isInside)
                consider(i, kInside);
        }
    }
    return nearest;
}

void PreviewView::pointAt(std::optional<std::size_t> place) {
    if (m_pointed == place)
        return;
    m_pointed = place;
    update();
    Q_EMIT pointedAt(place);
}

// What is marked, or stands in the middle.
std::optional<std::size_t> PreviewView::placeForKeys() const {
    if (!m_marked.empty())
        return m_marked.front();
    return placeAt(QPointF(width(), height()) / 2);
}

void PreviewView::setUpPainter(QPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(m_scale, m_scale);
    painter.translate(-m_centre.u, m_centre.v);
}

bool PreviewView::isCurrent(const QPixmap& picture) const {
    return !picture.isNull() && picture.devicePixelRatio() == devicePixelRatioF();
}

QPixmap PreviewView::painted(const std::vector<const Primitive*>& primitives) const {
    const double ratio = devicePixelRatioF();
    QPixmap picture((QSizeF(size()) * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    const PrimitivePainter::Ground ground = groundOf(palette());
    picture.fill(PrimitivePainter::paper(ground));
    QPainter painter(&picture);
    setUpPainter(painter);
    PrimitivePainter::paint(painter, primitives, ground);
    return picture;
}

void PreviewView::paintOther(QPainter& painter) {
    if (!m_other)
        return;
    if (!isCurrent(m_otherPicture))
        m_otherPicture = painted(m_allOther);
    const double at = m_share * width();
    painter.save();
    painter.setClipRect(QRectF(0, 0, at, height()));
    painter.drawPixmap(0, 0, m_otherPicture);
    if (m_allOther.empty())
        paintText(painter, QRectF(0, 0, at, height()), m_otherEmptyText);
    painter.restore();
    painter.fillRect(QRectF(at - 1, 0, 2, height()), KorStyle::focusColor(palette()));
}

void PreviewView::paintText(QPainter& painter, const QRectF& area, const QString& text) const {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(area.adjusted(kMargin, kMargin, -kMargin, -kMargin), Qt::AlignCenter | Qt::TextWordWrap,
                     text);
}

void PreviewView::paintMarks(QPainter& painter) const {
    const PrimitivePainter::Ground ground = groundOf(palette());
    painter.save();
    setUpPainter(painter);
    for (auto from = m_marked.begin(); from != m_marked.end();) {
        const auto end = std::ranges::upper_bound(m_starts, *from);
        const auto to = end == m_starts.end() ? m_marked.end() : std::ranges::lower_bound(m_marked, *end);
        PrimitivePainter::highlight(painter, primitivesOf({from, to}), ground);
        from = to;
    }
    if (m_pointed) {
        painter.setOpacity(0.5);
        PrimitivePainter::highlight(painter, primitivesOf({*m_pointed}), ground);
    }
    painter.restore();
}

void PreviewView::paintEvent(QPaintEvent*) {
    if (!isCurrent(m_picture))
        m_picture = painted(m_all);
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_picture);
    if (m_all.empty()) // in the part that it has
        paintText(painter, QRectF(rect()).adjusted(m_other ? m_share * width() : 0, 0, 0, 0), m_emptyText);
    paintMarks(painter);
    paintOther(painter);
    painter.setPen(hasFocus() ? KorStyle::focusColor(palette())
                              : KorStyle::lineColor(palette(), QPalette::Window));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void PreviewView::resizeEvent(QResizeEvent*) {
    forgetPictures();
    if (m_follows)
        showWanted();
}

void PreviewView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        forgetPictures();
        update();
    }
}
