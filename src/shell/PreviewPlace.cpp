#include "shell/PreviewPlace.h"

#include "controls/KorLayoutStore.h"
#include "controls/KorQt.h"
#include "controls/KorVerticalSplitter.h"
#include "services/Prompts.h"
#include "shell/PreviewPane.h"

#include <QEvent>
#include <QScreen>
#include <QSize>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int kBelow = 907;
constexpr int kBeside = 915;

constexpr int kWideScreen = 1700; // pixels, in which pages and preview stand side by side
constexpr int kWidth = 460;
constexpr int kHeight = 260;
constexpr QSize kPages = {460, 240}; // that the pages keep, where there is room for both

constexpr const char* kShownSetting = "PreviewShown";
constexpr const char* kPlaceSetting = "PreviewPlace";
constexpr const char* kWidthSetting = "PreviewWidth";
constexpr const char* kHeightSetting = "PreviewHeight";

} // namespace

PreviewPlace::PreviewPlace(QWidget& window, KorVerticalSplitter& splitter, PreviewPane& pane)
    : m_window(window), m_splitter(splitter), m_pane(pane) {
    m_pane.hide();
    m_splitter.addWidget(&m_pane);
    const KorString place = KorLayoutStore::read(kPlaceSetting);
    const bool below = place.isEmpty() ? !isWide() : place == KorString("below");
    setOrientation(below ? Qt::Vertical : Qt::Horizontal);
    connect(&m_splitter, &QSplitter::splitterMoved, this, &PreviewPlace::remember);
    m_splitter.installEventFilter(this);
}

bool PreviewPlace::isWide() const {
    return m_window.screen()->availableGeometry().width() >= kWideScreen;
}

bool PreviewPlace::isBelow() const {
    return m_splitter.orientation() == Qt::Vertical;
}

bool PreviewPlace::wasShown() const {
    const KorString shown = KorLayoutStore::read(kShownSetting);
    return shown.isEmpty() ? isWide() : shown == KorString("1");
}

bool PreviewPlace::setShown(bool shown) {
    m_isShown = shown;
    if (m_pane.isVisibleTo(&m_splitter) == shown)
        return false;
    m_pane.setVisible(shown);
    layOut();
    return true;
}

void PreviewPlace::turn() {
    setOrientation(isBelow() ? Qt::Horizontal : Qt::Vertical);
    layOut();
    remember();
}

int PreviewPlace::wantedWidth() const {
    return m_isShown && !isBelow() ? kWidth : 0;
}

void PreviewPlace::remember() const {
    KorLayoutStore::write(kShownSetting, m_isShown ? "1" : "0");
    KorLayoutStore::write(kPlaceSetting, isBelow() ? "below" : "beside");
    if (m_isShown)
        KorLayoutStore::write(isBelow() ? kHeightSetting : kWidthSetting,
                              KorString::number(m_splitter.sizes().value(1)));
}

void PreviewPlace::setOrientation(Qt::Orientation orientation) {
    m_splitter.setOrientation(orientation);
    m_pane.setPlaceText(toQt(Prompts::dsm(isBelow() ? kBeside : kBelow)));
}

// The pages keep what the preview leaves them. Before the window is shown nothing has its size.
void PreviewPlace::layOut() {
    if (!m_isShown || !m_splitter.isVisible())
        return;
    const int room = isBelow() ? m_splitter.height() : m_splitter.width();
    const int stored = toQt(KorLayoutStore::read(isBelow() ? kHeightSetting : kWidthSetting)).toInt();
    const int wanted = stored > 0 ? stored : isBelow() ? kHeight : kWidth;
    // It may have got its size on a larger screen.
    const int most = std::max(room - (isBelow() ? kPages.height() : kPages.width()), room / 2);
    const int size = std::min(wanted, most);
    m_splitter.setSizes({std::max(room - size, 1), size});
}

bool PreviewPlace::eventFilter(QObject*, QEvent* event) {
    // The window gives the splitter its size after that.
    if (event->type() == QEvent::Show)
        QTimer::singleShot(0, this, &PreviewPlace::layOut);
    return false;
}
