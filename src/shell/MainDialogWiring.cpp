#include "base/KorAssert.h"
#include "controls/KorButtonGroupMenu.h"
#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "controls/KorTabCtrl.h"
#include "controls/KorTemplates.h"
#include "services/CKorHelp.h"
#include "services/Prompts.h"
#include "shell/GlobalIcons.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/SharedConsent.h"
#include "shell/WhenFree.h"
#include "shell/WindowKeys.h"
#include "shell/WindowParts.h"

#include <QAction>
#include <QPushButton>
#include <QSplitter>
#include <QToolButton>

// The layout of the window, and how its parts hear of each other.

using namespace KorDSMDefines;

namespace {

constexpr int kTemplate = 1000;
constexpr int kViewDefinitionPage = 2004;

} // namespace

void KorDSMMainDialog::setUpImages() {
    KorTemplates::setUp(kTemplate, this);
    appendGlobalIcons(*m_images);
    setWindowIcon(m_images->at(kIconHost));
}

void KorDSMMainDialog::setUpKeys() {
    auto* find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, this, [this] { m_parts->filter.focus(); });
    addAction(find);
    WindowKeys::press(m_parts->apply, {QKeySequence(QKeySequence::Save)});
    WindowKeys::press(m_parts->use, {QKeySequence(Qt::CTRL | Qt::Key_U)});
    WindowKeys::press(*KorControls::find<QPushButton>(this, 1),
                      {QKeySequence(Qt::CTRL | Qt::Key_Return), QKeySequence(Qt::CTRL | Qt::Key_Enter)});
    auto* tabs = KorControls::find<KorTabCtrl>(this, 1002);
    WindowKeys::turnPages(*this, *tabs);
    WindowKeys::openMenus(*this);
    WindowKeys::walk(*this, [this, tabs] {
        return QWidgetList{&m_parts->sections.currentControl(), tabs, KorControls::find(this, 1003),
                           &m_parts->preview.pane().view()};
    });
    m_parts->commands.giveDeleteKey(m_parts->sections.controls());
}

void KorDSMMainDialog::setUpTexts() {
    setWindowTitle(toQt(Prompts::ups(33510)));
    KorControls::find<QPushButton>(this, 1)->setText(toQt(Prompts::ups(33740)));
    KorControls::find<QPushButton>(this, 2)->setText(toQt(Prompts::ups(33741)));
    m_parts->apply.setText(toQt(Prompts::ups(33742)));
    m_parts->use.setText(toQt(Prompts::ups(rowOf(eItemCommand::kUse).prompt)));
}

void KorDSMMainDialog::setUpTabOrder() {
    const auto* sections = KorControls::find<KorButtonGroupMenu>(this, 1233);
    m_tabOrder << sections->buttonGroup() << sections->menuButton() << KorControls::find<QWidget>(this, 1011)
               << m_parts->sections.combos() << KorControls::find<QWidget>(this, 1210)
               << m_parts->sections.controls() << KorControls::find<QSplitter>(this, 1096)->handle(1);
    for (const int control : {1012, 1211, 1212, 1002, 1003})
        m_tabOrder << KorControls::find<QWidget>(this, control);
    m_tabOrder << KorControls::find<QSplitter>(this, 1097)->handle(1) << &m_parts->preview.pane();
    for (const int control : {1098, 1, 2, 3})
        m_tabOrder << KorControls::find<QWidget>(this, control);
}

void KorDSMMainDialog::connectSelection() {
    WindowParts& parts = *m_parts;
    connect(&parts.selection, &TreeSelection::changed, this, [this] {
        const KorDSMDatabaseItem* item = m_parts->selection.item();
        const RowRef now = item && item->record() ? RowRef{item->tableType(), item->recordKey()} : RowRef();
        SharedConsent::visit(now);
    });
    connect(&parts.sectionStrip, &SectionStrip::sectionWanted, &parts.navigation, &Navigation::switchSection);
    connect(&parts.sectionStrip, &SectionStrip::treesChanged, &parts.navigation, &Navigation::rebuildTrees);
    connect(&parts.navigation, &Navigation::sectionSwitched, &parts.sectionStrip, &SectionStrip::check);
    connect(&parts.refresh, &WindowRefresh::followed, &parts.preview, &StylePreview::follow);
    connect(&parts.rightSide.list(), &ItemList::opened, &parts.navigation, &Navigation::open);
    connect(&parts.rightSide.list(), &ItemList::deletePressed, &parts.commands, &CommandStrip::pressDelete);
    connect(&parts.commands, &CommandStrip::deleteElsewhere, &parts.records, &RecordMenu::removeSelected);
    connect(&parts.sections, &SectionViews::dropWanted, this, [&parts](KorTreeHandle from, KorTreeHandle to) {
        if (!parts.deepCopy.drop(from, to))
            parts.definitions.drop(from, to);
    });
}

void KorDSMMainDialog::connectCommands() {
    WindowParts& parts = *m_parts;
    parts.commands.on(eItemCommand::kUse, [this] { use(); });
    parts.commands.on(eItemCommand::kHelp, [] { CKorHelp::showTopic("_Drawing_Style_Manager"); });
    KorAssert::check(parts.commands.isComplete(), "every command that is offered does something");
    connect(&parts.undo, &KorDSMUndoStrip::undoWanted, this, [this](int steps) {
        whenFree(this, [this, steps] { m_parts->refresh.step(steps, &KorDSMUndo::undo); });
    });
    connect(&parts.undo, &KorDSMUndoStrip::redoWanted, this, [this](int steps) {
        whenFree(this, [this, steps] { m_parts->refresh.step(steps, &KorDSMUndo::redo); });
    });
    connect(KorControls::find<QPushButton>(this, 1), &QPushButton::clicked, this, &QDialog::accept);
    connect(KorControls::find<QPushButton>(this, 2), &QPushButton::clicked, this, &QDialog::reject);
    connect(&parts.apply, &QPushButton::clicked, this, [this] {
        whenFree(this, [this] {
            m_parts->leaving.apply();
            m_parts->sources.follow();
            m_parts->preview.follow();
        });
    });
    connect(&parts.use, &QPushButton::clicked, this, waiting(this, &KorDSMMainDialog::use));
}

// What the entries of items have to look like.
void KorDSMMainDialog::receiveFromItems() {
    WindowParts& parts = *m_parts;
    receive<DsmDeleteEntry>([&parts](const DsmDeleteEntry& message) {
        parts.sections.noteOpenAbove(message.entry);
        parts.sections.deleteEntry(message.entry);
        parts.refresh.itemsChangedSoon();
    });
    receive<DsmInsertPlaceholder>([&parts](const DsmInsertPlaceholder& message) {
        if (KorDSMSectionTree* shown = parts.sections.treeOf(message.entry))
            shown->showPlaceholder(message.entry);
        parts.refresh.itemsChangedSoon();
    });
    receive<DsmCollapseEntry>([&parts](const DsmCollapseEntry& message) {
        if (KorDSMSectionTree* shown = parts.sections.treeOf(message.entry))
            shown->control()->collapse(message.entry);
    });
    receive<DsmSetEntryText>([&parts](const DsmSetEntryText& message) {
        if (KorDSMSectionTree* shown = parts.sections.treeOf(message.entry))
            shown->setText(message.entry, message.text);
        parts.refresh.itemsChangedSoon();
    });
    receive<DsmAttachItemData>([&parts](const DsmAttachItemData& message) {
        if (KorDSMSectionTree* shown = message.data ? parts.sections.treeOf(message.entry) : nullptr)
            shown->attach(message.entry, std::move(message.data));
    });
}

void KorDSMMainDialog::receiveFromPages() {
    WindowParts& parts = *m_parts;
    receive<DsmGoToChild>([&parts](const DsmGoToChild& message) {
        parts.navigation.goToChild(message.entry, message.childIndex);
    });
    receive<DsmProgress>([&parts](const DsmProgress& progress) { parts.status.showProgress(progress); });
    receive<DsmRowsChanged>([&parts](const DsmRowsChanged& message) {
        parts.refresh.written();
        parts.refresh.follow(message.changes);
    });
    receive<DsmGoToRecord>([&parts](const DsmGoToRecord& message) {
        if (message.column == 0)
            parts.navigation.goToRecord(message.source, message.row);
        else if (!parts.navigation.goToField(message.source, message.row, message.column, message.within))
            parts.navigation.focusTree();
    });
    receive<DsmDataChanged>([&parts](const DsmDataChanged&) {
        parts.applyState.setModified(true);
        parts.refresh.written();
        parts.preview.follow();
    });
    receive<DsmSetModified>([&parts](const DsmSetModified& message) {
        parts.applyState.setModified(message.modified);
        parts.preview.followTyping();
    });
    receive<DsmMarkOtherPages>([&parts](const DsmMarkOtherPages& message) {
        parts.rightSide.requestRefreshOfOthers(message.modified);
    });
    // Views are listed under the first of their categories.
    receive<DsmCategoriesChanged>([this](const DsmCategoriesChanged&) {
        if (KorDSMPage* page = pages().page(kViewDefinitionPage))
            page->requestRefresh(true);
    });
    receive<DsmSelectionChanged>(
        [&parts](const DsmSelectionChanged& message) { parts.selection.allowDragOf(message.entry); });
    receive<DsmSetOptionCheck>([&parts](const DsmSetOptionCheck& message) {
        parts.sectionStrip.setCheck(message.index, message.value);
    });
    receive<DsmReportWaits>([&parts](const DsmReportWaits&) { parts.reports.show(); });
}
