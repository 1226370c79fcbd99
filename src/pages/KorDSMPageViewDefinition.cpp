#include "pages/KorDSMPageViewDefinition.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorFieldNote.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorQt.h"
#include "controls/VELComboTree.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "model/items/KorDsmItems.h"
#include "operations/CurrentRows.h"
#include "operations/KorDetStructureUtilities.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"
#include "pages/RecordButtons.h"
#include "pages/SelectionFills.h"
#include "services/Prompts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMStyleViews.h"
#include "session/KorDSMTwins.h"
#include "session/PendingGroup.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>

#include <algorithm>

using namespace KorDSMDefines;

namespace {

constexpr int kViewCaption = 1248;
constexpr int kViewCombo = 1020;
constexpr int kCopy = 1208;
constexpr int kRename = 1104;
constexpr int kInfoPicture = 1020;
constexpr int kColumnName = 1;
constexpr int kViewArrangementPage = 5;
constexpr int kViewImage = 22; // in the global icon table

/// What a view request refers to: one section of the page each.
struct Section {
    eItemType type; // of the items that show the records, and code of the page that edits them
    int column;
    int frame, framePrompt;
    int combo, comboPrompt;
    int goTo;
    int info, infoPrompt;
    int picture, bitmap;
    int text, textPrompt;
};

constexpr Section kSections[] = {
    {kSystemAndBox, 2, 1123, 33571, 1011, 33834, 1012, 1017, 33577, 1114, 1021, 1124, 33574},
    {kReprMapRule, 3, 1125, 33572, 1013, 33835, 1014, 1018, 33578, 1115, 1023, 1126, 33575},
    {kViewDimensioning, 6, 1127, 33573, 1015, 33836, 1016, 1019, 33579, 1116, 1022, 1128, 33576},
};

std::vector<PageField> sectionFields() {
    std::vector<PageField> fields;
    for (const Section& section : kSections)
        fields.push_back({section.combo, section.column, {}, true});
    return fields;
}

int firstViewSlot() {
    static const int column = KorOdbcMan::m_numberOfColumns[kTableDetailStyle];
    return column;
}

int addSorted(QComboBox& combo, const KorString& name) {
    int at = 0;
    while (at < combo.count() && KorDetStructureUtilities::isNameBefore(fromQt(combo.itemText(at)), name))
        ++at;
    combo.insertItem(at, toQt(name));
    return at;
}

} // namespace

KorDSMPageViewDefinition::KorDSMPageViewDefinition(QWidget* parent)
    : KorDSMPage(parent, 2004, {}), m_fields(*this, sectionFields()) {
    setTitle(Prompts::ups(33570));
    m_pageCode = kViewRequest;
    receive<DsmListChanged>([this](const DsmListChanged& notice) { onNotice(notice); });
}

bool KorDSMPageViewDefinition::OnInitDialog() {
    KorDSMPage::OnInitDialog();
    m_views = KorControls::find<VELComboTree>(this, kViewCombo);
    if (!KorAssert::check(m_views != nullptr, "the template has a view combo"))
        return false;
    setCaption(kViewCaption, 33591);
    addTooltip(kViewCombo, 33530);
    setButton(kCopy, 1230, 1069, 33555);
    setButton(kRename, 1024, 1070, 33556);
    setRenameKey(kRename);
    for (int i = 0; i < std::ssize(kSections); ++i) {
        const Section& section = kSections[i];
        setCaption(section.frame, section.framePrompt);
        addTooltip(section.combo, section.comboPrompt);
        setButton(section.goTo, 1196, 1211, 33557);
        KorControls::find<KorInfoCtrl>(this, section.info)
            ->setInfo(Prompts::ups(section.infoPrompt), kInfoPicture);
        KorControls::find<KorInfoCtrl>(this, section.picture)->setInfo({}, section.bitmap);
        setCaption(section.text, section.textPrompt);
        KorControls::find(this, section.text)->hide();
        connect(KorControls::find<QAbstractButton>(this, section.goTo), &QAbstractButton::clicked, this,
                [this, i] { goTo(i); });
    }
    KorFieldNote::prepare(m_views);
    connect(m_views, &VELComboTree::entrySelected, this, &KorDSMPageViewDefinition::onViewChosen);
    connect(KorControls::find<QAbstractButton>(this, kCopy), &QAbstractButton::clicked, this,
            &KorDSMPageViewDefinition::onCopy);
    connect(KorControls::find<QAbstractButton>(this, kRename), &QAbstractButton::clicked, this,
            &KorDSMPageViewDefinition::onRename);
    m_fields.connectControls();
    for (const Section& section : kSections) {
        KorControls::setName(KorControls::find(this, section.combo), toQt(Prompts::ups(section.framePrompt)));
        addMaker(section.combo, section.column);
    }
    connect(&m_fields, &PageFields::written, this, &KorDSMPageViewDefinition::replaceDependents);
    return true;
}

// The line of the combo ends with the way to the chosen record.
void KorDSMPageViewDefinition::addMaker(int combo, int column) {
    auto* maker = new RecordButtons(
        *this,
        [this, column] {
            const auto* view = item();
            return KorDSMRecordUse::Use{{kTableViewRequest, view ? view->recordKey() : 0},
                                        findTable(kTableViewRequest)->column(column),
                                        {}};
        },
        RecordButtons::eOffer::kAllButGoing);
    m_makers.push_back(maker);
    // A field that can tell something stands in a widget with its note.
    for (QWidget* part = KorControls::find(this, combo); part != this; part = part->parentWidget())
        for (auto* line : part->parentWidget()->findChildren<QHBoxLayout*>())
            if (const int place = line->indexOf(part); place >= 0)
                return line->insertWidget(place + 1, maker);
}

bool KorDSMPageViewDefinition::fillLists() {
    SelectionFills::fill(SelectionFills::kViewRequests, *m_views);
    m_fields.fillLists();
    return true;
}

bool KorDSMPageViewDefinition::refreshLists() {
    return fillLists();
}

bool KorDSMPageViewDefinition::loadData() {
    if (!viewItem())
        return false;
    m_views->selectPath(SelectionFills::viewRequestPath(viewItem()->getRecord()));
    m_fields.load();
    enableWays();
    return true;
}

void KorDSMPageViewDefinition::enableControls() {
    KorDSMPage::enableControls();
    enableWays();
}

// Going to a definition changes nothing, so it is allowed in every source.
void KorDSMPageViewDefinition::enableWays() {
    // A view that is in no style has no place in which another one could stand.
    for (const int control : {kViewCombo, kCopy})
        enableControl(control, placeInStyle() >= 0);
    for (RecordButtons* maker : m_makers)
        maker->enable();
    for (const Section& section : kSections)
        KorControls::find(this, section.goTo)
            ->setEnabled(leadsElsewhere() &&
                         KorControls::find<QComboBox>(this, section.combo)->currentIndex() >= 0);
}

std::vector<ShownColumns> KorDSMPageViewDefinition::shownColumns() const {
    std::vector<ShownColumns> shown = shownWith({kColumnName});
    if (const int place = placeInStyle(); place >= 0)
        shown.push_back({kTableDetailStyle, KorOdbcKey(styleItem()->recordKey()), {firstViewSlot() + place}});
    return shown;
}

std::vector<KorDSMPage::OwnField> KorDSMPageViewDefinition::ownFields() const {
    if (const int place = placeInStyle(); place >= 0)
        return {{kViewCombo, {kTableDetailStyle, styleItem()->recordKey()}, firstViewSlot() + place}};
    return {};
}

KorDsmViewRequestItem* KorDSMPageViewDefinition::viewItem() const {
    return dynamic_cast<KorDsmViewRequestItem*>(item());
}

KorDsmDetailStyleItem* KorDSMPageViewDefinition::styleItem() const {
    return item() ? dynamic_cast<KorDsmDetailStyleItem*>(item()->parent()) : nullptr;
}

int KorDSMPageViewDefinition::placeInStyle() const {
    return item() ? KorDSMStyleViews::slotOf(*item()) : -1;
}

bool KorDSMPageViewDefinition::putIntoStyle(const StructDetViewRequest& request) {
    KorDsmDetailStyleItem* style = styleItem();
    const int place = placeInStyle();
    if (place < 0 || !KorDSMGuardedWrite::setField(kTableDetailStyle, KorOdbcKey(style->recordKey()),
                                                   firstViewSlot() + place, std::int64_t{request.key})
                          .isStored())
        return false;
    KorDSMTwins::recordWritten(*style);
    viewItem()->setRecord(request);
    return true;
}

void KorDSMPageViewDefinition::onViewChosen() {
    StructDetViewRequest chosen;
    if (!item() ||
        KorOdbcGUI::getDetViewRequest(SelectionFills::nameOf(m_views->getSelectedPath()), chosen) != 1)
        return;
    const bool isShown = chosen.key == item()->recordKey();
    const bool stored = isShown || putIntoStyle(chosen);
    markStored(m_views, stored);
    if (isShown || !stored)
        return;
    loadData();
    setOtherPagesModified(true);
}

void KorDSMPageViewDefinition::onCopy() {
    if (placeInStyle() < 0)
        return;
    const StructDetViewRequest original = viewItem()->getRecord();
    KorDSMDialogNewItem dialog(kViewRequest, original.name, true, window());
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    StructDetViewRequest& copy = KorOdbcMan::m_structDetViewRequest;
    copy = original;
    copy.setRunBezeichnung(dialog.name());
    {
        const PendingGroup step(copy.name);
        if (KorDSMGuardedWrite::appendCurrentRecord(kTableViewRequest).isStored())
            putIntoStyle(copy);
    }
    if (item()->recordKey() != copy.key)
        return;
    // The copy is filed as its original is, and has its place among the names there.
    SelectionFills::fill(SelectionFills::kViewRequests, *m_views);
    loadData();
    notifyLinkedPages(copy.name, DsmListChanged::kAdded, -1);
}

void KorDSMPageViewDefinition::onRename() {
    if (!viewItem())
        return;
    const KorString oldName = viewItem()->getRecord().name;
    KorDSMDialogNewItem dialog(kViewRequest, oldName, false, window());
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty() || dialog.name() == oldName)
        return;
    const KorString newName = dialog.name();
    if (!KorDSMGuardedWrite::setField(kTableViewRequest, KorOdbcKey(item()->recordKey()), kColumnName,
                                      newName)
             .isStored())
        return;
    KorDSMTwins::recordWritten(*item());
    showNewName();
}

void KorDSMPageViewDefinition::showNewName() {
    KorDSMTwins::showName(*item());
    SelectionFills::fill(SelectionFills::kViewRequests, *m_views);
    loadData();
}

void KorDSMPageViewDefinition::replaceDependents(int column) {
    enableWays();
    const Section& section = *std::ranges::find(kSections, column, &Section::column);
    const StructDetViewRequest request = viewItem()->getRecord();
    for (KorDSMDatabaseItem* owner : item()->itemsOfRecord()) {
        if (!owner->isExpanded())
            continue;
        const auto child = std::ranges::find(owner->children(), section.type, &KorDSMDatabaseItem::type);
        if (child == owner->children().end()) {
            // It had none so far: its children are made anew when its entry is opened.
            owner->dropDependents();
            continue;
        }
        const Column* reference = findTable(kTableViewRequest)->column(column);
        if (const StructRecord* chosen =
                CurrentRows::find((*child)->tableType(), KorOdbcKey(reference->integerIn(&request))))
            (*child)->assignRecord(*chosen);
    }
}

void KorDSMPageViewDefinition::goTo(int section) {
    if (!item())
        return;
    // A reference that points nowhere has no entry, so those after it stand one further up.
    DsmGoToChild message;
    message.entry = item()->entry();
    for (int i = 0; i <= section; ++i) {
        const bool present = KorControls::find<QComboBox>(this, kSections[i].combo)->currentIndex() >= 0;
        if (i == section && !present)
            return;
        message.childIndex += i < section && present;
    }
    KorDSMMainWindow::sendMessage(message);
}

void KorDSMPageViewDefinition::onNotice(const DsmListChanged& notice) {
    if (!m_views)
        return;
    if (notice.senderPageCode == kViewArrangementPage)
        return onViewNotice(notice.action, notice.name);
    for (const Section& section : kSections)
        if (section.type == notice.senderPageCode)
            return onSectionNotice(*KorControls::find<QComboBox>(this, section.combo), notice.action,
                                   notice.name);
}

void KorDSMPageViewDefinition::onViewNotice(int action, const KorString& name) {
    StructDetViewRequest request;
    KorArray<KorString> tokens;
    const KorString path = m_views->getSelectedPath();
    switch (action) {
    case DsmListChanged::kAdded:
        if (KorOdbcGUI::getDetViewRequest(name, request) == 1)
            m_views->addEntry(SelectionFills::viewRequestPath(request), kViewImage);
        break;
    case DsmListChanged::kRenamed:
        if (KorOdbcGUI::getTokens(path, VELComboTree::GetPathDelimiter(), tokens) > 0) {
            const KorString renamed = path.replaced(tokens[tokens.length() - 1], name);
            m_views->deleteEntry(path);
            m_views->addEntry(renamed, kViewImage);
            m_views->selectPath(renamed);
        }
        break;
    case DsmListChanged::kReload:
        requestInit();
        break;
    default:
        KorAssert::check(false, "0");
    }
}

void KorDSMPageViewDefinition::onSectionNotice(QComboBox& combo, int action, const KorString& name) {
    if (action == DsmListChanged::kAdded) {
        addSorted(combo, name);
    } else if (action == DsmListChanged::kRenamed) {
        if (combo.currentIndex() >= 0)
            combo.removeItem(combo.currentIndex());
        combo.setCurrentIndex(addSorted(combo, name));
        // The record renamed may be another than the one that the page showed last.
        requestInit();
    } else {
        KorAssert::check(false, "0");
    }
}
