#include "pages/KorDSMPageViewProperties.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorFieldNote.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorQt.h"
#include "controls/VELComboTree.h"
#include "model/CurrentUnits.h"
#include "pages/FormBody.h"
#include "pages/LabelDesignerSetup.h"
#include "pages/SelectionFills.h"
#include "records/OwnWords.h"
#include "records/ViewRecords.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

#include <QBoxLayout>

#include <algorithm>

namespace {

constexpr int kScales = 2300;
constexpr int kCalloutTemplate = 2022;
constexpr int kInfo = 1112;
constexpr int kInfoText = 22006;
constexpr int kInfoPicture = 1020;
constexpr int kColumnScale = 10;

constexpr std::pair<int, int> kCaptions[] = {
    {1168, 33751}, {1169, 33752}, {1170, 33753}, {1171, 33754},
    {1172, 33755}, {1242, 33765}, {1250, 33767}, {2033, 33768},
};
constexpr std::pair<int, int> kTooltips[] = {
    {2300, 33859},
    {1024, 33860},
    {1022, 33861},
    {1097, 33862},
};
constexpr int kFieldLabels[] = {1169, 1170, 1171, 1242, 2033};

constexpr int kFirstField = 6000;
constexpr int kPlaceOfForm = 2; // below the frames of the template
constexpr int kDepth = 675;
constexpr int kAreaAndScale = 676;

const std::vector<FormGroup> kGroups = {
    {.caption = kDepth, .fields = {{.column = 4}, {.column = 3, .via = {4}}, {.column = 7}}},
    {.caption = kAreaAndScale,
     .fields = {{.column = 8},
                {.column = 15},
                {.column = 3, .via = {14}, .live = {.column = 2, .values = {0}, .isNoneOf = true}}},
     .side = eFormSide::kRight},
};

// The code is split by plain division here although it is composed of corners from 1 on. The two don't match
// for the upper right corner (4 and 8), and users know the display as it is: keep it so.
CompassChoice::Shown compassShownFor(int code) {
    return {code % 4, code / 4};
}

} // namespace

KorDSMPageViewProperties::KorDSMPageViewProperties(QWidget* parent)
    : KorDSMPage(parent, 2005, {}),
      m_fields(*this, {{1097, 11}, {1024, 14}, {1022, 5}, {1250, 16}, {2022, 17}}),
      m_compass(*this, compassShownFor) {
    setTitle(Prompts::ups(33750));
    m_pageCode = 18;
}

bool KorDSMPageViewProperties::OnInitDialog() {
    KorDSMPage::OnInitDialog();
    m_scales = KorControls::find<VELComboTree>(this, kScales);
    if (!KorAssert::check(m_scales != nullptr, "the template has a scale combo"))
        return false;
    for (const auto& [control, prompt] : kCaptions)
        setCaption(control, prompt);
    for (const auto& [control, prompt] : kTooltips)
        addTooltip(control, prompt);
    KorControls::find(this, kCalloutTemplate)->setToolTip(toQt(LabelDesignerSetup::variableHelp()));
    KorControls::find<KorInfoCtrl>(this, kInfo)->setInfo(Prompts::ups(kInfoText), kInfoPicture);
    alignFields();
    m_fields.connectControls();
    KorFieldNote::prepare(m_scales);
    connect(m_scales, &VELComboTree::entrySelected, this, &KorDSMPageViewProperties::onScaleChosen);
    m_compass.connectControls();
    m_form = new FormBody(*this, kGroups, kTableViewRequest, kFirstField);
    static_cast<QBoxLayout*>(layout())->insertWidget(kPlaceOfForm, m_form);
    m_form->connectControls();
    // The factor is that of the way in which the scale is adapted.
    connect(&m_fields, &PageFields::written, m_form, &FormBody::load);
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
    m_form->fillLists();
    return true;
}

bool KorDSMPageViewProperties::loadData() {
    if (!item())
        return false;
    selectScale();
    m_fields.load();
    m_compass.load();
    m_form->load();
    return true;
}

void KorDSMPageViewProperties::enableControls() {
    KorDSMPage::enableControls();
    m_form->enable();
}

std::vector<ShownColumns> KorDSMPageViewProperties::shownColumns() const {
    return shownWith({kColumnScale});
}

std::vector<KorDSMPage::OwnField> KorDSMPageViewProperties::ownFields() const {
    const RowRef view{item()->tableType(), item()->recordKey()};
    std::vector<OwnField> fields = {{kScales, view, kColumnScale}};
    for (const int control : CompassChoice::controls())
        fields.push_back({control, view, CompassChoice::kColumn});
    return fields;
}

const StructDetViewRequest& KorDSMPageViewProperties::request() const {
    return static_cast<const StructDetViewRequest&>(*item()->record());
}

void KorDSMPageViewProperties::fillScales() {
    m_scales->deleteAll();
    KorArray<KorString> names;
    KorArray<KorString> groups;
    KorArray<KorArray<KorString>> members;
    if (kor_odbc_getScaleList(getScaleUnitsOfCurrentDatabase(), names) > 0 &&
        KorOdbcGrouping::getScaleList(getScaleUnitsOfCurrentDatabase(), groups, members) == 1 &&
        groups.length() < names.length())
        for (const KorString& group : groups)
            m_scales->addEntry(OwnWords::nameOf(kTableScaleGroup, group))->selectable = false;
    else
        members.clear();
    for (const KorString& name : names) {
        int group = 0;
        while (group < members.length() && members[group].find(name) < 0)
            ++group;
        m_scales->addEntry(group < members.length()
                               ? SelectionFills::path(OwnWords::nameOf(kTableScaleGroup, groups[group]), name)
                               : name);
    }
}

KorString KorDSMPageViewProperties::scaleName() const {
    return KorDSMValueText::scaleText(request().scale);
}

void KorDSMPageViewProperties::selectScale() {
    const KorString name = scaleName();
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
    const KorString name = SelectionFills::nameOf(m_scales->getSelectedPath());
    const double factor = kor_odbc_getSpecificScale(name);
    // What other programs stored need not be the same number to the last digit.
    if (name == scaleName())
        markStored(m_scales, true);
    else if (factor > 0.0)
        writeFrom(m_scales, kColumnScale, factor);
}
