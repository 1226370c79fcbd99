#include "shell/StyleThumbnails.h"

#include "base/EditorSession.h"
#include "controls/KorLayoutStore.h"
#include "model/KorDSMBusy.h"
#include "services/KOSettings.h"
#include "services/KorResources.h"
#include "shell/PrimitivePainter.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>

namespace {

constexpr const char* kShownSetting = "ThumbnailsShown";
constexpr int kMargin = 3;          // logical pixels around a drawing
constexpr double kThinnest = 0.75;  // pixels of a line
constexpr std::size_t kMost = 400;  // that are kept
constexpr int kPauseWhenBusy = 100; // milliseconds

PaperColor::eGround ground() {
    const bool isDark = QApplication::palette().color(QPalette::Base).lightness() < 128;
    return isDark ? PaperColor::eGround::kDark : PaperColor::eGround::kPaper;
}

// What cannot be read in a small picture only makes the rest smaller.
std::vector<const Primitive*> shapesOf(const Drawing& drawing) {
    std::vector<const Primitive*> shapes = drawing.all();
    std::erase_if(shapes, [](const Primitive* each) {
        return each->kind == Primitive::kText || each->purpose >= Primitive::kDimension;
    });
    return shapes.empty() ? drawing.all() : shapes;
}

QPixmap paint(const Drawing& drawing, qreal ratio) {
    QPixmap picture(KorThumbnails::kSize * ratio);
    picture.setDevicePixelRatio(ratio);
    const PrimitivePainter::Ground paper{ground(), kThinnest};
    picture.fill(PrimitivePainter::paper(paper));
    const std::vector<const Primitive*> shapes = shapesOf(drawing);
    Box2 box;
    for (const Primitive* shape : shapes)
        box.add(shape->box());
    if (box.isEmpty())
        return picture;
    const QSizeF room = QSizeF(KorThumbnails::kSize).shrunkBy(QMarginsF(kMargin, kMargin, kMargin, kMargin));
    const double scale =
        std::min(room.width() / std::max(box.width(), 1.0), room.height() / std::max(box.height(), 1.0));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(KorThumbnails::kSize.width() / 2.0, KorThumbnails::kSize.height() / 2.0);
    painter.scale(scale, scale);
    painter.translate(-box.middle().u, box.middle().v);
    PrimitivePainter::paint(painter, shapes, paper);
    return picture;
}

KorDSMThumbnails::Subject rowOf(const KorThumbnails::Subject& subject) {
    return {{static_cast<eDSN>(subject.database), static_cast<eIndex>(subject.index)},
            {static_cast<eTableType>(subject.kind), subject.key}};
}

} // namespace

StyleThumbnails::StyleThumbnails()
    : m_drawn(KorResources::folder() / "parts",
              KOSettings::getInstance().dataFolder() / "Shared" / "Support"),
      m_areShown(!(KorLayoutStore::read(kShownSetting) == KorString("0"))) {
    // Another session may be the current one when it is time.
    connect(&m_timer, &QTimer::timeout, this, EditorSession::current().forLater([this] { makeOne(); }));
    setCurrent(this);
}

StyleThumbnails& StyleThumbnails::ofSession() {
    return EditorSession::currentPart<StyleThumbnails>();
}

KorThumbnails::Subject StyleThumbnails::subjectOf(const KorDSMDatabaseItem* item) {
    const auto subject = item ? KorDSMThumbnails::subjectOf(*item) : std::nullopt;
    return subject ? Subject{subject->source.dsn, subject->source.index, subject->row.table, subject->row.key}
                   : Subject();
}

void StyleThumbnails::setShown(bool shown) {
    m_areShown = shown;
    KorLayoutStore::write(kShownSetting, shown ? "1" : "0");
    if (!shown) {
        m_wishes.clear();
        m_timer.stop();
    }
    Q_EMIT switched();
}

// The picture as it was made last, where it is still of the right size and on the right paper.
StyleThumbnails::Made* StyleThumbnails::find(const Subject& subject, qreal ratio) {
    const auto found = m_made.find(subject);
    const bool isOne = found != m_made.end() && found->second.picture.devicePixelRatio() == ratio &&
                       found->second.ground == ground();
    return isOne ? &found->second : nullptr;
}

QPixmap StyleThumbnails::picture(const Subject& subject, qreal ratio) {
    Made* made = find(subject, ratio);
    if (!made)
        return {};
    made->used = ++m_uses;
    return made->picture;
}

bool StyleThumbnails::isRight(const Subject& subject, qreal ratio) {
    const Made* made = find(subject, ratio);
    return made && made->state == m_state;
}

void StyleThumbnails::want(const QObject& who, std::vector<Subject> subjects, qreal ratio) {
    if (!m_wishes.contains(&who))
        connect(&who, &QObject::destroyed, this, [this](QObject* gone) { m_wishes.erase(gone); });
    std::erase_if(subjects, [&](const Subject& subject) { return isRight(subject, ratio); });
    std::ranges::reverse(subjects); // they are taken from the end
    const bool isWork = !subjects.empty();
    m_wishes[&who] = {std::move(subjects), ratio};
    if (isWork && !m_timer.isActive())
        m_timer.start(0);
}

void StyleThumbnails::lookAgain() {
    ++m_state;
}

// One piece of work, for which a key that comes meanwhile has to wait.
void StyleThumbnails::makeOne() {
    if (KorDSMBusy::isBusy())
        return m_timer.start(kPauseWhenBusy);
    m_timer.setInterval(0);
    for (auto& [who, wish] : m_wishes) {
        if (wish.subjects.empty())
            continue;
        const Subject subject = wish.subjects.back();
        const qreal ratio = wish.ratio;
        const auto* const wisher = who;
        if (KorDSMThumbnails::readOneTable(rowOf(subject).source))
            return;
        // Reading can run events, by which wishes come and go.
        const auto now = m_wishes.find(wisher);
        if (now != m_wishes.end() && !now->second.subjects.empty() && now->second.subjects.back() == subject)
            now->second.subjects.pop_back();
        if (!isRight(subject, ratio))
            make(subject, ratio);
        return;
    }
    m_timer.stop();
}

void StyleThumbnails::make(const Subject& subject, qreal ratio) {
    Made* known = find(subject, ratio);
    if (!known)
        m_drawn.forget(rowOf(subject));
    const std::optional<Drawing> drawing = m_drawn.draw(rowOf(subject));
    if (!drawing) {
        known->state = m_state;
        return;
    }
    ++m_drawings;
    makeRoom();
    m_made[subject] = {paint(*drawing, ratio), ground(), m_state, ++m_uses};
    Q_EMIT made();
}

void StyleThumbnails::makeRoom() {
    if (m_made.size() >= kMost)
        m_made.erase(std::ranges::min_element(m_made, {}, [](const auto& each) { return each.second.used; }));
}
