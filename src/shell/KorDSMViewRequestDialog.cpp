#include "shell/KorDSMViewRequestDialog.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorControls.h"
#include "controls/KorListCtrl.h"
#include "controls/KorMnemonics.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "controls/KorTabCtrl.h"
#include "controls/KorVerticalSplitter.h"
#include "model/KorDSMBusy.h"
#include "services/AddInManager.h"
#include "services/Prompts.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMRequestItems.h"
#include "session/KorDSMUndo.h"
#include "shell/GlobalIcons.h"
#include "shell/WindowKeys.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

using namespace KorDSMDefines;

namespace {

constexpr int kTemplate = 2400;
constexpr int kButtons = 2401;
constexpr int kFilter = 2402;
constexpr int kTree = 2403;
constexpr int kSplitter = 2404;
constexpr int kPages = 2405;
constexpr int kList = 2406;
constexpr int kChosen = 2407;

constexpr int kTitle = 710;
constexpr int kRoot = 711;        // "View requests"
constexpr int kNewText = 712;     // "New view request..."
constexpr int kNewCopyText = 713; // "New view request, a copy of "%s"..."
constexpr int kRenameText = 714;
constexpr int kDeleteText = 715;
constexpr int kNothingChosen = 716;
constexpr int kChosenText = 717; // ""%s" of %s"
constexpr int kNothingFound = 718;
constexpr int kSearch = 264;
constexpr int kHelpText = 33746; // "UPS"

constexpr int kUserIcon = 6;

struct ActionRow {
    int text;
    int bitmap;
    const char* key;
};
constexpr ActionRow kRows[] = {
    {kNewText, 1044, "Ctrl+N"}, {kRenameText, 1047, "F2"}, {kDeleteText, 1048, "Del"}};

template <typename T>
T& control(QWidget* window, int id) {
    return *KorControls::find<T>(window, id);
}

// A source with a picture of its own brings it into the list.
std::int32_t iconOf(SourceId source, KorImageList& images) {
    if (source == SourceId::standard())
        return kIconHost;
    const int number = source.index - KorDSNDefinitions::kFirstAddIn;
    KorArray<KorAddInId> addIns;
    AddInManagerInterface::getInstance().getInstalledAddIns(addIns);
    if (!addIns.isValid(number))
        return kUserIcon;
    const KorString file = AddInManager::getInstance().getAddIn(addIns[number]).getIcon();
    return file.isEmpty() ? kIconInstallation : images.append(broughtIcon(file));
}

} // namespace

KorDSMViewRequestDialog::KorDSMViewRequestDialog(int requestKey, QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_requestKey(requestKey), m_before(KorDSMItemSource::current()),
      m_stepsBefore(KorDSMUndo::stepCount()), m_images(std::make_shared<KorImageList>()),
      m_tree(&control<KorTreeCtrl>(this, kTree), m_structure, m_root,
             [this](KorTreeHandle entry) { m_rightSide.forget(entry); }),
      m_rightSide(control<KorTabCtrl>(this, kPages), control<KorListCtrl>(this, kList), m_images),
      m_turn(*this, *this,
             {[this] { m_rightSide.letGo(); }, [this] { show(m_tree.control()->selectedItem()); }}),
      m_buttons(control<KorButtonGroup>(this, kButtons)), m_filter(control<QLineEdit>(this, kFilter)),
      m_chosen(control<QLabel>(this, kChosen)) {}

KorDSMViewRequestDialog::~KorDSMViewRequestDialog() {
    m_memory.writeSetting();
    m_rightSide.letGo();
    m_tree.control()->blockSignals(true);
    m_tree.clear();
    m_source.release();
    KorDSMItemSource::makeCurrent(m_before);
    m_turn.end();
}

int KorDSMViewRequestDialog::DoModal() {
    constexpr int kCancelled = 2;
    OnInitDialog();
    return exec() == QDialog::Accepted ? 1 : kCancelled;
}

void KorDSMViewRequestDialog::OnInitDialog() {
    m_turn.begin();
    setTexts();
    setUpActions();
    setUpTree();
    KorControls::find<KorVerticalSplitter>(this, kSplitter)->setRightRoom(RightSide::kRoomOfPages);
    m_memory.registerControl(kSplitter, MemoryDlg::eStretchY);
    m_memory.setWindow(this);
    m_memory.restore();
    select(KorDSMRequestItems::find(m_root, m_requestKey));
    updateStates();
    m_tree.control()->setFocus();
}

void KorDSMViewRequestDialog::setTexts() {
    setWindowTitle(toQt(Prompts::dsm(kTitle)));
    setCaption(1, 33740);
    setCaption(2, 33741);
    m_filter.setPlaceholderText(toQt(Prompts::dsm(kSearch)));
    m_filter.setAccessibleName(m_filter.placeholderText());
    connect(&m_filter, &QLineEdit::textChanged, this, &KorDSMViewRequestDialog::filter);
    auto* find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, &m_filter, [this] { m_filter.setFocus(Qt::ShortcutFocusReason); });
    addAction(find);
    auto* tabs = KorControls::find<KorTabCtrl>(this, kPages);
    WindowKeys::press(*KorControls::find<QPushButton>(this, 1),
                      {QKeySequence(Qt::CTRL | Qt::Key_Return), QKeySequence(Qt::CTRL | Qt::Key_Enter)});
    WindowKeys::turnPages(*this, *tabs);
    WindowKeys::openMenus(*this);
    WindowKeys::walk(*this, [this, tabs] {
        return QWidgetList{m_tree.control(), tabs, KorControls::find(this, kList)};
    });
}

void KorDSMViewRequestDialog::setUpActions() {
    for (int i = 0; i < std::ssize(kRows); ++i) {
        const ActionRow& row = kRows[i];
        m_buttons.addButton(i, Prompts::dsm(row.text), KorPictures::bitmap(row.bitmap));
        auto* action = new QAction(this);
        action->setShortcut(QKeySequence(QString::fromLatin1(row.key)));
        connect(action, &QAction::triggered, m_buttons.button(i), &QToolButton::click);
        m_tree.control()->addAction(action);
        m_actions[static_cast<std::size_t>(i)] = action;
        // The key deletes a letter where names are typed.
        action->setShortcutContext(Qt::WidgetShortcut);
    }
    m_buttons.addButton(kHelp, Prompts::ups(kHelpText), KorPictures::bitmap(1050));
    connect(&m_buttons, &KorButtonGroup::buttonPressed, this, &KorDSMViewRequestDialog::act);
}

void KorDSMViewRequestDialog::setUpTree() {
    appendGlobalIcons(*m_images);
    setWindowIcon(m_images->at(kIconHost));
    m_rightSide.pages().createForLooking(this, kViewRequest);
    m_root.describe(KorDSMFamilies::section(kViewDetailStyles), Prompts::dsm(kRoot));
    for (const SourceId source : KorDSMRequestItems::sources(m_requestMode)) {
        const std::int32_t icon = m_requestMode ? iconOf(source, *m_images) : kIconHost;
        KorDSMRequestItems::fill(m_root.addChild(KorDSMRequestItems::makeSource(source, icon)));
    }
    KorTreeCtrl& control = *m_tree.control();
    control.setImageList(m_images);
    control.setAccessibleName(toQt(Prompts::dsm(kRoot)));
    m_tree.buildFullTree();
    connect(&control, &KorTreeCtrl::entrySelected, this, &KorDSMViewRequestDialog::show);
    connect(&control, &KorTreeCtrl::itemActivated, this, [this] {
        if (chosenRequest())
            accept();
    });
    connect(&control, &KorTreeCtrl::contextMenuRequested, this,
            [this](KorTreeHandle, const QPoint& position) {
                QMenu menu(this);
                menu.addActions({m_actions.begin(), m_actions.end()});
                KorMnemonics::give(menu);
                menu.exec(position);
            });
    connect(&m_rightSide.list(), &ItemList::opened, this, &KorDSMViewRequestDialog::choose);
    connect(&m_rightSide.list(), &ItemList::selectionChanged, this, &KorDSMViewRequestDialog::updateStates);
    if (m_root.children().length() == 1)
        control.expand(m_root.children()[0]->entry());
}

KorDSMDatabaseItem* KorDSMViewRequestDialog::selectedItem() const {
    return KorDSMSectionTree::itemOf(m_tree.control()->selectedItem());
}

// The one that is selected in the tree, or alone in the list of what is in its category.
KorDSMDatabaseItem* KorDSMViewRequestDialog::chosenRequest() const {
    const std::vector<KorDSMDatabaseItem*> listed = m_rightSide.list().selectedItems();
    KorDSMDatabaseItem* item = listed.size() == 1 ? listed.front() : selectedItem();
    return item && item->type() == kViewRequest ? item : nullptr;
}

void KorDSMViewRequestDialog::show(KorTreeHandle entry) {
    KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(entry);
    m_source.select(item ? item : &m_root);
    if (item)
        m_rightSide.show(*item);
    else
        m_rightSide.showList(nullptr);
    updateStates();
}

void KorDSMViewRequestDialog::select(KorDSMDatabaseItem* item) {
    KorTreeCtrl& control = *m_tree.control();
    const KorTreeHandle entry = item ? m_tree.reveal(*item) : nullptr;
    control.selectItem(entry ? entry : m_root.children()[0]->entry());
}

void KorDSMViewRequestDialog::choose(KorDSMDatabaseItem* item) {
    const bool isRequest = item->type() == kViewRequest;
    select(item);
    if (isRequest)
        accept();
}

void KorDSMViewRequestDialog::updateStates() {
    const KorDSMDatabaseItem* selected = selectedItem();
    const KorDSMDatabaseItem* request = chosenRequest();
    const bool isInSource = selected && selected->ancestor(kAddInContent);
    const bool isWritable =
        isInSource && KorDSMItemCommands::whyNotWritable(KorDSMItemSource::sourceOf(selected)).isEmpty();
    const KorString newText = request
                                  ? KorString::format(Prompts::dsm(kNewCopyText), {request->getDisplayName()})
                                  : Prompts::dsm(kNewText);
    const bool states[] = {isWritable, isWritable && request, isWritable && request};
    for (int i = 0; i < std::ssize(kRows); ++i) {
        QAction& action = *m_actions[static_cast<std::size_t>(i)];
        const KorString text = i == kNew ? newText : Prompts::dsm(kRows[i].text);
        m_buttons.enableButton(i, states[i]);
        m_buttons.setButtonText(i, text, action.shortcut());
        action.setText(toQt(text));
        action.setEnabled(states[i]);
    }
    control<QPushButton>(this, 1).setEnabled(request);
    m_chosen.setText(toQt(request ? KorString::format(Prompts::dsm(kChosenText),
                                                      {request->getDisplayName(),
                                                       request->ancestor(kAddInContent)->getDisplayName()})
                                  : Prompts::dsm(kNothingChosen)));
}

void KorDSMViewRequestDialog::filter() {
    if (!m_tree.setFilter(fromQt(m_filter.text())))
        m_chosen.setText(toQt(Prompts::dsm(kNothingFound)));
    else
        updateStates();
}

void KorDSMViewRequestDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        act(kHelp);
        return;
    }
    if (event->key() == Qt::Key_Escape && !m_filter.text().isEmpty())
        return m_filter.clear();
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (m_filter.hasFocus() && (isReturn || event->key() == Qt::Key_Down)) {
        if (const KorTreeHandle match = m_filter.text().isEmpty() ? nullptr : m_tree.firstMatch())
            m_tree.control()->selectItem(match);
        return m_tree.control()->setFocus();
    }
    KorDSMDialog::keyPressEvent(event);
}

void KorDSMViewRequestDialog::accept() {
    const KorDSMDatabaseItem* request = chosenRequest();
    if (!request || KorDSMBusy::isBusy())
        return;
    if (request != selectedItem())
        select(chosenRequest());
    const std::int32_t key = request->recordKey();
    if (!store())
        return;
    m_requestKey = key;
    KorDSMDialog::accept();
}

void KorDSMViewRequestDialog::reject() {
    if (KorDSMBusy::isBusy())
        return;
    m_rightSide.letGo();
    KorDSMUndo::takeBackTo(m_stepsBefore);
    KorDSMDialog::reject();
}
