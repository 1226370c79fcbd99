#include "pages/KorDSMPageViewProperties.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorQt.h"
#include "controls/VELComboTree.h"
#include "data/records/ViewRecords.h"
#include "model/CurrentUnits.h"
#include "pages/SelectionFills.h"
#include "services/Prompts.h"

#include <QAbstractButton>

#include <algorithm>

namespace {

constexpr int kScales = 2300;
constexpr int kInfo = 1112;
constexpr int kInfoText = 22006;
constexpr int kInfoPicture = 1020;
constexpr int kColumnScale = 10;

constexpr int kCompass = 1252;
constexpr int kCompassPicture = 1253;
constexpr int kFirstPosition = 1255;
constexpr int kLastPosition = 1258;
constexpr int kArrow = 1262;
constexpr int kSymbol = 1263;
constexpr int kArrowPicture = 1093;
constexpr int kSymbolPicture = 1107;
constexpr int kColumnCompass = 12;
constexpr int kPositions = 4;

constexpr std::pair<int, int> kCaptions[] = {
    {1168, 33751}, {1169, 33752}, {1170, 33753}, {1171, 33754}, {1172, 33755}, {1242, 33765},
    {1254, 33951}, {1252, 33952}, {1255, 33953}, {1258, 33954}, {1256, 33955}, {1257, 33956},
    {1261, 33960}, {1262, 33961}, {1263, 33962}, {1250, 33767}, {2033, 33768},
};
constexpr std::pair<int, int> kTooltips[] = {
    {2300, 33859}, {1024, 33860}, {1022, 33861}, {1097, 33862}, {1252, 33957},
};
constexpr int kFieldLabels[] = {1169, 1170, 1171, 1242, 2033};
constexpr int kCompassRadios[] = {1255, 1256, 1257, 1258, 1262, 1263};

} // namespace

KorDSMPageViewProperties::KorDSMPageViewProperties(QWidget* parent)
    : KorDSMPage(parent, 2005, {}),
      m_fields(*this, {{1097, 11}, {1024, 14}, {1022, 5}, {1250, 16}, {2022, 17}}) {
    setTitle(Prompts::getPrompt("UPS", 33750));
    m_pageCode = 18;
}

bool KorDSMPageViewProperties::OnInitDialog() {
    KorDSMPage::OnInitDialog();
    m_scales = KorControls::find<VELComboTree>(this, kScales);
    if (!KorAssert::check(m_scales != nullptr, "bRes"))
        return false;
    for (const auto& [control, prompt] : kCaptions)
        setCaption(control, prompt);
    for (const auto& [control, prompt] : kTooltips)
        addTooltip(control, prompt);
    KorControls::find<KorInfoCtrl>(this, kInfo)->setInfo(Prompts::getPrompt("UPS", kInfoText), kInfoPicture);
    alignFields();
    m_fields.connectControls();
    connect(m_scales, &VELComboTree::entrySelected, this, &KorDSMPageViewProperties::onScaleChosen);
    connect(button(kCompass), &QAbstractButton::clicked, this, &KorDSMPageViewProperties::onCompassClicked);
    for (const int radio : kCompassRadios)
        connect(button(radio), &QAbstractButton::clicked, this, [this, radio] {
            if (radio >= kArrow && checkedIn(kFirstPosition, kLastPosition))
                showCompassPicture(radio == kSymbol);
            writeCompass();
        });
    return true;
}

// The fields of both frames stand below each other.
void KorDSMPageViewProperties::alignFields() {
    int width = 0;
    for (const int label : kFieldLabels)
        width = std::max(width, KorControls::find(this, label)->sizeHint().width());
    for (const int label : kFieldLabels)
        KorControls::find(this, label)->setMinimumWidth(width);
}

bool KorDSMPageViewProperties::fillLists() {
    fillScales();
    m_fields.fillLists();
    return true;
}

bool KorDSMPageViewProperties::loadData() {
    if (!item())
        return false;
    selectScale();
    m_fields.load();
    showCompass();
    return true;
}

const StructDetViewRequest& KorDSMPageViewProperties::request() const {
    return static_cast<const StructDetViewRequest&>(*item()->record());
}

ScaleUnitType KorDSMPageViewProperties::scaleUnits() {
    return getUnitsOfCurrentDatabase().getBasisUnitForDistanceIsImperial() ? kScalesImperial : kScalesMetric;
}

void KorDSMPageViewProperties::fillScales() {
    m_scales->deleteAll();
    KorArray<KorString> names;
    KorArray<KorString> groups;
    KorArray<KorArray<KorString>> members;
    if (kor_odbc_getScaleList(scaleUnits(), names) > 0 &&
        KorOdbcGrouping::getScaleList(scaleUnits(), groups, members) == 1 && groups.length() < names.length())
        for (const KorString& group : groups)
            m_scales->addEntry(group)->selectable = false;
    else
        members.clear();
    for (const KorString& name : names) {
        int group = 0;
        while (group < members.length() && members[group].find(name) < 0)
            ++group;
        m_scales->addEntry(group < members.length() ? SelectionFills::path(groups[group], name) : name);
    }
}

void KorDSMPageViewProperties::selectScale() {
    KorString name;
    kor_odbc_getScaleDescription(request().scale, name, scaleUnits(), false);
    // A scale that is in no list is still legible: it stands where the choice would be.
    m_scales->setPlaceholderText(toQt(name));
    m_scales->selectPath({});
    const auto selectBelow = [&](KorTreeHandle parent) {
        for (int i = 0; i < m_scales->childCount(parent); ++i)
            if (const KorTreeHandle entry = m_scales->getChildAt(parent, i);
                entry->selectable && entry->text == name)
                m_scales->selectPath(m_scales->getPath(entry));
    };
    selectBelow(nullptr);
    for (int i = 0; i < m_scales->childCount(nullptr); ++i)
        selectBelow(m_scales->getChildAt(nullptr, i));
}

void KorDSMPageViewProperties::onScaleChosen() {
    if (!item())
        return;
    const double factor = kor_odbc_getSpecificScale(SelectionFills::nameOf(m_scales->getSelectedPath()));
    if (factor > 0.0)
        writeField(kColumnScale, factor);
}

QAbstractButton* KorDSMPageViewProperties::button(int controlId) const {
    return KorControls::find<QAbstractButton>(this, controlId);
}

// The radio button that is down among those numbered first to last, or 0.
int KorDSMPageViewProperties::checkedIn(int first, int last) const {
    for (int radio = first; radio <= last; ++radio)
        if (button(radio)->isChecked())
            return radio;
    return 0;
}

// The code is split by plain division here although it is composed of positions from 1 on. The two don't
// match for the upper right corner (4 and 8), and users know the display as it is: keep it so.
void KorDSMPageViewProperties::showCompass() {
    const int code = request().compassKey;
    KorControls::setChecked(button(kCompass), code != 0);
    for (const int radio : kCompassRadios) {
        const bool isPosition = radio <= kLastPosition;
        const int shown = isPosition ? code % kPositions + kFirstPosition - 1 : code / kPositions + kArrow;
        KorControls::setChecked(button(radio), code >= 1 && radio == shown);
    }
    showCompassPicture(code >= 1 && code / kPositions != 0);
    enableCompass(code != 0 && button(kCompass)->isEnabled());
}

void KorDSMPageViewProperties::showCompassPicture(bool symbol) {
    KorControls::find<KorInfoCtrl>(this, kCompassPicture)
        ->setInfo({}, symbol ? kSymbolPicture : kArrowPicture);
}

void KorDSMPageViewProperties::enableCompass(bool enable) {
    for (const int radio : kCompassRadios)
        button(radio)->setEnabled(enable);
}

void KorDSMPageViewProperties::onCompassClicked(bool shown) {
    if (!item())
        return;
    for (const int radio : kCompassRadios)
        KorControls::setChecked(button(radio), shown && (radio == kFirstPosition || radio == kArrow));
    showCompassPicture(false);
    writeField(kColumnCompass, std::int64_t{shown});
    enableCompass(shown);
}

void KorDSMPageViewProperties::writeCompass() {
    const int positionRadio = checkedIn(kFirstPosition, kLastPosition);
    if (!item() || !positionRadio)
        return;
    const int position = positionRadio - kFirstPosition + 1;
    KorAssert::check(position >= 0 && position <= kPositions, "nCompassKey >= 0 && nCompassKey<=4");
    // Code 8 shows no representation: what is stored stays.
    const int representationRadio = checkedIn(kArrow, kSymbol);
    const int representation =
        representationRadio ? representationRadio - kArrow : (request().compassKey - 1) / kPositions;
    writeField(kColumnCompass, std::int64_t{position + kPositions * representation});
}
