#include "pages/CompassChoice.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorFieldNote.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorQt.h"
#include "pages/KorDSMPage.h"
#include "records/ViewRecords.h"
#include "services/Prompts.h"
#include "session/KorDSMGuardedWrite.h"

#include <QAbstractButton>

#include <algorithm>

namespace {

constexpr int kCorners = 4;

constexpr int kFrame = 1254;
constexpr int kCompass = 1252;
constexpr int kPicture = 1253;
constexpr int kFirstCorner = 1255;
constexpr int kLastCorner = 1258;
constexpr int kArrow = 1262;
constexpr int kSymbol = 1263;
constexpr int kArrowPicture = 1093;
constexpr int kSymbolPicture = 1107;

constexpr int kCornerRadios[] = {kFirstCorner, 1256, 1257, kLastCorner};
constexpr int kRepresentationRadios[] = {kArrow, kSymbol};
constexpr int kChoices[] = {kFirstCorner, 1256, 1257, kLastCorner, kArrow, kSymbol};
constexpr std::pair<int, int> kCaptions[] = {
    {kFrame, 33951}, {kCompass, 33952}, {1255, 33953},   {1258, 33954},    {1256, 33955},
    {1257, 33956},   {1261, 33960},     {kArrow, 33961}, {kSymbol, 33962},
};
constexpr int kCompassTooltip = 33957;
constexpr int kFrameName = 460;

} // namespace

CompassChoice::CompassChoice(KorDSMPage& page, ShowFunction shownFor)
    : QObject(&page), m_page(page), m_shownFor(shownFor) {}

std::vector<int> CompassChoice::controls() {
    std::vector<int> all = {kCompass};
    all.insert(all.end(), std::begin(kChoices), std::end(kChoices));
    return all;
}

void CompassChoice::connectControls() {
    for (const auto& [control, prompt] : kCaptions)
        m_page.setCaption(control, prompt);
    // The caption says where, not what.
    KorControls::find(&m_page, kFrame)->setAccessibleName(toQt(Prompts::dsm(kFrameName)));
    m_page.addTooltip(kCompass, kCompassTooltip);
    auto* picture = KorControls::find<KorInfoCtrl>(&m_page, kPicture);
    picture->setFrame(true);
    picture->setFitToContent(true);
    showPicture(false);
    KorFieldNote::prepare(button(kCompass));
    for (const int radio : kChoices)
        KorFieldNote::prepare(button(radio));
    KorControls::group(&m_page, kCornerRadios);
    KorControls::group(&m_page, kRepresentationRadios);
    connect(button(kCompass), &QAbstractButton::clicked, this, &CompassChoice::onCompassClicked);
    for (const int radio : kChoices)
        connect(button(radio), &QAbstractButton::clicked, this, [this, radio] { onChoiceClicked(radio); });
}

void CompassChoice::load() {
    const int code = storedCode();
    const Shown shown = code > 0 ? m_shownFor(code) : Shown{0, -1};
    for (const int radio : kChoices)
        KorControls::setChecked(button(radio), radio == kFirstCorner - 1 + shown.corner ||
                                                   radio == kArrow + shown.representation);
    // The stored value itself is the state of the box: one with two states shows all but 0 as checked.
    button(kCompass)->setChecked(code != 0);
    showPicture(shown.representation > 0);
    enableChoices();
}

void CompassChoice::enableChoices() {
    // Without a compass its picture is only hinted at.
    KorControls::find(&m_page, kPicture)->setEnabled(button(kCompass)->isChecked());
    for (const int radio : kChoices)
        button(radio)->setEnabled(m_page.isEditable() && button(kCompass)->isChecked());
}

QAbstractButton* CompassChoice::button(int controlId) const {
    return KorControls::find<QAbstractButton>(&m_page, controlId);
}

// The radio button that is down among those numbered first to last, or 0.
int CompassChoice::checkedIn(int first, int last) const {
    for (int radio = first; radio <= last; ++radio)
        if (button(radio)->isChecked())
            return radio;
    return 0;
}

int CompassChoice::storedCode() const {
    const auto* item = m_page.getData().as<KorDSMDatabaseItem>();
    return item ? static_cast<const StructDetViewRequest*>(item->record())->compassKey : 0;
}

void CompassChoice::showPicture(bool symbol) {
    KorControls::find<KorInfoCtrl>(&m_page, kPicture)->setInfo({}, symbol ? kSymbolPicture : kArrowPicture);
}

void CompassChoice::onCompassClicked(bool on) {
    for (const int radio : kChoices)
        KorControls::setChecked(button(radio), on && (radio == kFirstCorner || radio == kArrow));
    showPicture(false);
    mark(kCompass, m_page.writeField(kColumn, std::int64_t{on}));
    enableChoices();
}

void CompassChoice::onChoiceClicked(int radio) {
    const int cornerRadio = checkedIn(kFirstCorner, kLastCorner);
    if (!cornerRadio)
        return;
    if (radio >= kArrow)
        showPicture(radio == kSymbol);
    const int corner = cornerRadio - kFirstCorner + 1;
    KorAssert::check(corner >= 0 && corner <= kCorners, "nCompassKey >= 0 && nCompassKey<=4");
    // Where neither representation is shown the stored one stays.
    const int representationRadio = checkedIn(kArrow, kSymbol);
    const int representation =
        representationRadio ? representationRadio - kArrow : std::max(storedCode() - 1, 0) / kCorners;
    mark(radio, m_page.writeField(kColumn, std::int64_t{corner + kCorners * representation}));
}

// The code is one value, of which all three parts are stored or none.
void CompassChoice::mark(int control, const WriteResult& result) {
    if (!result.isStored())
        return m_page.markStored(button(control), false);
    for (const int part : {kCompass, kFirstCorner, kArrow})
        m_page.markStored(button(part), true);
}
