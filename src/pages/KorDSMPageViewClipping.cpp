#include "pages/KorDSMPageViewClipping.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorFieldNote.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorLineEdit.h"
#include "controls/KorQt.h"
#include "controls/linetype/KorLinetypeCombo.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "model/items/KorDsmItems.h"
#include "operations/CurrentRows.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"
#include "pages/ClippingLists.h"
#include "pages/RecordButtons.h"
#include "services/KorUnitsManager.h"
#include "services/Prompts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMValueText.h"
#include "session/PendingGroup.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

#include <algorithm>

namespace {

constexpr int kPageCode = 20;
constexpr int kNewItemKind = 30;
constexpr int kColumnOfView = 9; // where a view request names its strategy

enum eControl : int {
    kStrategy = 1091,
    kAlongY = 1092,
    kAlongX = 1093,
    kGap = 1094,
    kInterval = 1095,
    kKeepEachSide = 1096,
    kObliqueLines = 1097,
    kExtension = 1098,
    kUseDefault = 1099,
    kType = 1100,
    kRename = 1104,
    kStrategyPicture = 1113,
    kAxisPicture = 1114,
    kTypePicture = 1117,
    kCopy = 1208,
    kLinetype = 1269,
};

enum eColumn : int {
    kColumnName = 1,
    kColumnAlongX = 2,
    kColumnAlongY = 3,
    kColumnKeepEachSide = 4,
    kColumnInterval = 5,
    kColumnExtension = 6,
    kColumnType = 7,
    kColumnLinetype = 8,
    kColumnObliqueLines = 9,
    kColumnGap = 10,
};

constexpr int kTypeWithoutLine = 2;
constexpr int kTypeWithOwnLine = 3;

constexpr std::pair<int, int> kCaptions[] = {
    {1173, 33758}, {1174, 33759}, {kAlongX, 33763},       {kAlongY, 33764},
    {1179, 33918}, {1180, 33920}, {kObliqueLines, 33921}, {kUseDefault, 14101},
};

constexpr std::pair<int, int> kLengthCaptions[] = {
    {1175, 33760}, {1176, 33761}, {1177, 33762}, {1178, 33919}};

constexpr std::pair<int, int> kTooltips[] = {
    {kStrategy, 33863}, {kInterval, 33864}, {kKeepEachSide, 33865},
    {kGap, 33866},      {kAlongX, 33867},   {kAlongY, 33868},
};

// What only the views of a detail style show, and what every view with a strategy shows.
const std::vector<int> kStyledControls = {kKeepEachSide, kAlongX, kAlongY,       kExtension,
                                          kUseDefault,   kType,   kObliqueLines, kLinetype};
const std::vector<int> kCommonControls = {kInterval, kGap};

/// Which of the pictures of a clipping type applies.
int situationOf(double gap, double extension) {
    int situation = 1;
    if (gap == 0.0 && extension == 0.0)
        situation = 2;
    if (gap > 0.0 && extension > 0.0)
        situation = 3;
    if (gap == 0.0 && extension > 0.0)
        situation = 4;
    return situation;
}

} // namespace

KorDSMPageViewClipping::KorDSMPageViewClipping(QWidget* parent)
    : KorDSMPage(parent, 1086, {}), m_fields(*this, {{kInterval, kColumnInterval}},
                                             [this] {
                                                 return PageFields::Row{kTableLengthClip, clipKey()};
                                             }),
      m_styledFields(*this,
                     {{kAlongX, kColumnAlongX},
                      {kAlongY, kColumnAlongY},
                      {kKeepEachSide, kColumnKeepEachSide},
                      // Below 0 would mean the default, which has a box of its own.
                      {.control = kExtension, .column = kColumnExtension, .lowest = 0.0},
                      {kObliqueLines, kColumnObliqueLines}},
                     [this] {
                         return PageFields::Row{kTableLengthClip, clipKey()};
                     }) {
    setTitle(Prompts::ups(33917));
    m_pageCode = kPageCode;
}

bool KorDSMPageViewClipping::OnInitDialog() {
    KorDSMPage::OnInitDialog();
    if (!KorAssert::check(findControls(), "the template has all controls"))
        return false;
    setTexts();
    connectControls();
    return true;
}

bool KorDSMPageViewClipping::findControls() {
    m_strategy = KorControls::find<QComboBox>(this, kStrategy);
    m_gap = KorControls::find<QComboBox>(this, kGap);
    m_type = KorControls::find<QComboBox>(this, kType);
    m_extension = KorControls::find<KorLineEdit>(this, kExtension);
    m_useDefault = KorControls::find<QCheckBox>(this, kUseDefault);
    m_typePicture = KorControls::find<KorInfoCtrl>(this, kTypePicture);
    auto* linetype = KorControls::find<KorLinetypeCombo>(this, kLinetype);
    if (linetype)
        m_linetypes.setControl(linetype);
    return m_strategy && m_gap && m_type && m_extension && m_useDefault && m_typePicture && linetype;
}

void KorDSMPageViewClipping::setTexts() {
    for (const auto& [control, prompt] : kCaptions)
        setCaption(control, prompt);
    for (const auto& [control, prompt] : kTooltips)
        addTooltip(control, prompt);
    setButton(kCopy, 1230, 1069, 33555);
    setButton(kRename, 1024, 1070, 33556);
    setRenameKey(kRename);
    for (const auto& [control, picture] : {std::pair(kStrategyPicture, 1018), std::pair(kAxisPicture, 1017)})
        if (auto* panel = KorControls::find<KorInfoCtrl>(this, control))
            panel->setInfo({}, picture);
}

void KorDSMPageViewClipping::connectControls() {
    m_fields.connectControls();
    m_styledFields.connectControls();
    for (QWidget* control : {static_cast<QWidget*>(m_strategy), static_cast<QWidget*>(m_gap),
                             static_cast<QWidget*>(m_type), static_cast<QWidget*>(m_useDefault), linetype()})
        KorFieldNote::prepare(control);
    connect(m_strategy, &QComboBox::activated, this, &KorDSMPageViewClipping::onStrategyChosen);
    connect(m_gap, &QComboBox::activated, this, &KorDSMPageViewClipping::onGapChosen);
    connect(m_type, &QComboBox::activated, this, &KorDSMPageViewClipping::onTypeChosen);
    connect(m_useDefault, &QCheckBox::clicked, this, &KorDSMPageViewClipping::onUseDefaultClicked);
    connect(&m_styledFields, &PageFields::written, this, &KorDSMPageViewClipping::applySituation);
    connect(KorControls::find<KorLinetypeCombo>(this, kLinetype), &KorLinetypeCombo::chosen, this,
            &KorDSMPageViewClipping::onLinetypeChosen);
    if (auto* copy = KorControls::find<QAbstractButton>(this, kCopy))
        connect(copy, &QAbstractButton::clicked, this, &KorDSMPageViewClipping::onCopy);
    if (auto* rename = KorControls::find<QAbstractButton>(this, kRename))
        connect(rename, &QAbstractButton::clicked, this, &KorDSMPageViewClipping::onRename);
    addMaker();
}

// The line of the strategy begins with its own buttons; what they do not do follows them.
void KorDSMPageViewClipping::addMaker() {
    m_maker = new RecordButtons(
        *this,
        [this] {
            return KorDSMRecordUse::Use{{kTableViewRequest, item() ? item()->recordKey() : 0},
                                        findTable(kTableViewRequest)->column(kColumnOfView),
                                        {}};
        },
        RecordButtons::eOffer::kMakingAndDeleting);
    QWidget* rename = KorControls::find(this, kRename);
    for (auto* line : rename->parentWidget()->findChildren<QHBoxLayout*>())
        if (const int place = line->indexOf(rename); place >= 0)
            return line->insertWidget(place + 1, m_maker);
}

KorOdbcKey KorDSMPageViewClipping::clipKey() const {
    const auto* view = dynamic_cast<const KorDsmViewRequestItem*>(item());
    return KorOdbcKey(view ? view->getRecord().lengthClipKey : 0);
}

std::vector<ShownColumns> KorDSMPageViewClipping::shownColumns() const {
    std::vector<ShownColumns> shown = shownWith({kColumnOfView});
    shown.push_back({kTableLengthClip, clipKey(), {kColumnName, kColumnType, kColumnLinetype, kColumnGap}});
    return shown;
}

std::vector<KorDSMPage::OwnField> KorDSMPageViewClipping::ownFields() const {
    const RowRef clip{kTableLengthClip, clipKey().getKey()};
    return {{kStrategy, {item()->tableType(), item()->recordKey()}, kColumnOfView},
            {kGap, clip, kColumnGap},
            {kUseDefault, clip, kColumnExtension},
            {kType, clip, kColumnType},
            {kLinetype, clip, kColumnLinetype}};
}

bool KorDSMPageViewClipping::readClip(StructDetViewLengthClip& clip) const {
    return KorODBCDetStyle::getDetViewLengthClip(clipKey(), clip) == 1;
}

bool KorDSMPageViewClipping::writeClip(QWidget* control, int column, const CellValue& value) {
    const StructRecord* clip = CurrentRows::find(kTableLengthClip, clipKey());
    const Column& written = *findTable(kTableLengthClip)->column(column);
    const bool stored =
        clip &&
        (written.read(clip) == value ||
         KorDSMGuardedWrite::setAttributeValue(kTableLengthClip, clipKey(), column, value).isStored());
    markStored(control, stored);
    return stored;
}

QWidget* KorDSMPageViewClipping::linetype() const {
    return KorControls::find(this, kLinetype);
}

// A length stands in the unit of its database, which the caption names where the number does not.
void KorDSMPageViewClipping::showUnits() {
    for (const auto& [control, prompt] : kLengthCaptions)
        KorControls::find<QLabel>(this, control)
            ->setText(toQt(KorDSMValueText::withLengthUnit(Prompts::ups(prompt))));
}

bool KorDSMPageViewClipping::loadData() {
    if (!item() || !m_strategy)
        return false;
    enableControls(); // what another strategy, or none, leaves free
    m_maker->enable();
    KorFieldNote::clear(this);
    showUnits();
    ClippingLists::fillStrategies(*m_strategy);
    ClippingLists::fillGaps(*m_gap);
    m_linetypes.fill();
    ClippingLists::fillTypes(*m_type);
    StructDetViewLengthClip clip;
    const bool found = readClip(clip);
    enableControl(kCopy, found);
    enableControl(kRename, found);
    if (!found) {
        ClippingLists::selectStrategy(*m_strategy, std::max(clipKey().getKey(), ClippingLists::kNoClipping));
        clearControls(kCommonControls);
        clearControls(kStyledControls);
    } else {
        showClip(clip);
    }
    return found;
}

void KorDSMPageViewClipping::showClip(const StructDetViewLengthClip& clip) {
    ClippingLists::selectStrategy(*m_strategy, clip.key);
    ClippingLists::showGap(*m_gap, clip.gap);
    m_fields.load();
    const auto* style =
        dynamic_cast<const KorDsmDetailStyleItem*>(item()->ancestor(KorDSMDefines::kDetailStyle));
    if (!style) {
        clearControls(kStyledControls);
        return;
    }
    showStyledClip(clip, style->getRecord().getAutomaticClipping() == 0);
    applySituation();
}

void KorDSMPageViewClipping::showStyledClip(const StructDetViewLengthClip& clip, bool keepsEachSide) {
    m_styledFields.load();
    enableControl(kKeepEachSide, keepsEachSide);
    m_useDefault->setChecked(clip.extension < 0.0);
    m_extension->setText(toQt(formatValue(std::max(clip.extension, 0.0), KorUnitsManager::kLength)));
    m_type->setCurrentIndex(m_type->findData(clip.clippingTypeKey));
    m_linetypes.select(clip.linetypeKey);
}

void KorDSMPageViewClipping::clearControls(const std::vector<int>& controls) {
    for (const int number : controls) {
        QWidget* control = KorControls::find(this, number);
        if (auto* box = qobject_cast<QCheckBox*>(control)) {
            box->setChecked(false);
        } else if (auto* combo = qobject_cast<QComboBox*>(control)) {
            combo->setPlaceholderText({});
            combo->setCurrentIndex(-1);
        } else if (auto* edit = qobject_cast<KorLineEdit*>(control)) {
            edit->setText({});
        }
        enableControl(number, false);
    }
    m_typePicture->hide();
}

void KorDSMPageViewClipping::applySituation() {
    StructDetViewLengthClip clip;
    if (!readClip(clip) || !item()->ancestor(KorDSMDefines::kDetailStyle))
        return;
    const bool hasNoLine = clip.clippingTypeKey == kTypeWithoutLine;
    enableControl(kExtension, !hasNoLine && clip.extension >= 0.0);
    enableControl(kLinetype, !hasNoLine && clip.clippingTypeKey != kTypeWithOwnLine);
    const auto gap = ClippingLists::selectedGap(*m_gap);
    if (!gap) {
        m_typePicture->hide();
        return;
    }
    const double extension = parseValue(fromQt(m_extension->text()), KorUnitsManager::kLength).value_or(0.0);
    showTypePicture(clip, !hasNoLine ? situationOf(*gap, extension) : *gap <= 0.0 ? 2 : 1);
}

void KorDSMPageViewClipping::showTypePicture(const StructDetViewLengthClip& clip, int situation) {
    StructClippingType type;
    const bool known = KorODBCClippingType::getClippingType(KorOdbcKey(clip.clippingTypeKey), type) == 1;
    const int pictures[] = {type.picture1, type.picture2, type.picture3, type.picture4};
    m_typePicture->setInfo({}, known ? pictures[situation - 1] : 0);
    m_typePicture->setVisible(known);
}

void KorDSMPageViewClipping::onStrategyChosen() {
    const int before = clipKey().getKey();
    const int chosen = m_strategy->currentData().toInt();
    if (item() && writeFrom(m_strategy, kColumnOfView, std::int64_t{chosen}) && chosen != before)
        loadData();
}

void KorDSMPageViewClipping::onGapChosen() {
    StructDetViewLengthClip clip;
    StructClippingGap row;
    if (!readClip(clip) ||
        KorODBCClippingGap::getClippingGapByKey(KorOdbcKey(m_gap->currentData().toInt()), row) != 1)
        return;
    writeClip(m_gap, kColumnGap, row.gap);
    applySituation();
}

void KorDSMPageViewClipping::onUseDefaultClicked(bool useDefault) {
    if (!writeClip(m_useDefault, kColumnExtension, useDefault ? -1.0 : 0.0))
        return;
    m_extension->setText(toQt(formatValue(0.0, KorUnitsManager::kLength)));
    enableControl(kExtension, !useDefault);
    KorFieldNote::show(m_extension, {});
    applySituation();
}

void KorDSMPageViewClipping::onTypeChosen() {
    StructDetViewLengthClip clip;
    const int key = m_type->currentData().toInt();
    if (!readClip(clip))
        return;
    writeClip(m_type, kColumnType, std::int64_t{key});
    applySituation();
}

void KorDSMPageViewClipping::onLinetypeChosen(const KorString& name) {
    StructDetViewLengthClip clip;
    if (!readClip(clip))
        return;
    const PendingGroup step(clip.name);
    const auto key = m_linetypes.keyOfChoice(name, window());
    if (!key)
        m_linetypes.select(clip.linetypeKey);
    else
        writeClip(linetype(), kColumnLinetype, std::int64_t{*key});
}

void KorDSMPageViewClipping::onCopy() {
    StructDetViewLengthClip clip;
    if (!readClip(clip))
        return;
    KorDSMDialogNewItem dialog(kNewItemKind, clip.name, true, window());
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    StructDetViewLengthClip& copy = KorOdbcMan::m_structDetViewLengthClip;
    copy = clip;
    copy.setRunBezeichnung(dialog.name());
    const PendingGroup step(copy.name);
    if (!KorDSMGuardedWrite::appendCurrentRecord(kTableLengthClip).isStored())
        return;
    ClippingLists::fillStrategies(*m_strategy);
    ClippingLists::selectStrategy(*m_strategy, copy.key);
    onStrategyChosen();
}

void KorDSMPageViewClipping::onRename() {
    StructDetViewLengthClip clip;
    if (!readClip(clip))
        return;
    KorDSMDialogNewItem dialog(kNewItemKind, clip.name, false, window());
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty() || dialog.name() == clip.name)
        return;
    const QString note = KorFieldNote::textOf(m_strategy);
    const bool renamed = writeClip(m_strategy, kColumnName, dialog.name());
    KorFieldNote::show(m_strategy, note); // about the strategy that is shown, not about its name
    if (!renamed)
        return;
    ClippingLists::fillStrategies(*m_strategy);
    ClippingLists::selectStrategy(*m_strategy, clip.key);
}
