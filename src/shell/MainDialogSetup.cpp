#include "controls/KorButtonGroup.h"
#include "controls/KorButtonGroupMenu.h"
#include "controls/KorControls.h"
#include "controls/KorListCtrl.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "controls/KorTabCtrl.h"
#include "controls/KorTemplates.h"
#include "controls/VELComboTree.h"
#include "services/KorOutputDebugString.h"
#include "services/KordoBitmaps.h"
#include "services/Prompts.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/KorDSMUndoStrip.h"
#include "shell/LockNotice.h"

#include <QAction>
#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QToolButton>

// Set-up of the main dialog: controls, strips, status bar, texts.

using namespace KorDSMDefines;

namespace {

constexpr int kTemplate = 1000;

// Ids of each section's tree and combo; section 0's are the template's.
constexpr int kTreeIds[] = {1000, 1007, 1008, 1009};
constexpr int kComboIds[] = {1200, 1011, 1012, 1013};

struct StripButton {
    int id;
    int bitmap;
    int prompt;
    const char* key = ""; // the usual one of the command
};

constexpr StripButton kItemCommands[] = {
    {1029, 1044, 33558, "Ctrl+N"}, {1030, 1045, 33559},           {1032, 1046, 33555},
    {1033, 1043, 33560, "Ctrl+D"}, {1034, 1047, 33561, "F2"},     {1035, 1048, 33562},
    {1037, 1051, 33563, "Ctrl+E"}, {1039, 1052, 33564, "Ctrl+I"}, {1038, 1049, 33565},
    {1036, 1050, 33746},
};

constexpr StripButton kNavigation[] = {
    {1042, 1042, 33743, "Alt+Left"}, {1041, 1041, 33744, "Alt+Right"}, {1040, 1040, 33745, "Alt+Up"}};

struct SectionButton {
    int id;
    int prompt;
    int bitmap;
    int checkedBitmap;
};

// In the order of the sections.
constexpr SectionButton kSectionButtons[] = {{1064, 33511, 1062, 1064},
                                             {1061, 33518, 1060, 1061},
                                             {1057, 33514, 1063, 1057},
                                             {1059, 33516, 1058, 1059}};

constexpr int kOptionPrompts[] = {33527, 33528, 33529};
constexpr int kFilter = 264;
constexpr int kOptionsButton = 1089;
constexpr int kOptionsBitmap = 1090;

// A button of a strip, and the action that presses it by its key and from menus.
QAction* addCommand(KorButtonGroup& strip, const StripButton& button) {
    const KorString text = Prompts::ups(button.prompt);
    const QIcon icon = KorPictures::bitmap(button.bitmap);
    const QKeySequence key(QString::fromLatin1(button.key));
    strip.addButton(button.id, text, icon);
    strip.setButtonText(button.id, text, key);
    auto* action = new QAction(icon, toQt(text), &strip);
    action->setShortcut(key);
    QObject::connect(action, &QAction::triggered, strip.button(button.id), &QToolButton::click);
    strip.window()->addAction(action);
    return action;
}

QIcon iconOf(const Icon& icon) {
    if (icon.file.isEmpty())
        return KorPictures::icon(icon.resource);
    return KorPictures::fromFile(QString::fromStdString(KordoBitmaps::pictureFile(icon.file).string()));
}

} // namespace

void KorDSMMainDialog::setUpImages() {
    KorTemplates::setUp(kTemplate, this);
    loadGlobalIcons();
    for (const Icon& icon : m_GlobalIcons)
        m_images->append(iconOf(icon));
    setWindowIcon(m_images->at(kIconHost));
    m_tabs = KorControls::find<KorTabCtrl>(this, 1002);
    m_list = KorControls::find<KorListCtrl>(this, 1003);
    m_tabs->hide();
    setUpList();
    m_filter = KorControls::find<QLineEdit>(this, 1210);
    m_filter->setPlaceholderText(toQt(Prompts::dsm(kFilter)));
    m_filter->setAccessibleName(m_filter->placeholderText());
    connect(m_filter, &QLineEdit::textChanged, this, waiting(&KorDSMMainDialog::applyFilter));
}

void KorDSMMainDialog::setUpSections() {
    auto* firstTree = KorControls::find<KorTreeCtrl>(this, kTreeIds[0]);
    auto* firstCombo = KorControls::find<VELComboTree>(this, kComboIds[0]);
    auto* column = static_cast<QBoxLayout*>(firstTree->parentWidget()->layout());
    for (int i = 0; i < kNumberOfSections; ++i) {
        const auto section = static_cast<eViewSections>(i);
        auto* control = i == 0 ? firstTree : new KorTreeCtrl(firstTree->parentWidget());
        auto* combo = i == 0 ? firstCombo : new VELComboTree(firstCombo->parentWidget());
        if (i != 0) {
            // The run-time combos share numbers with the strips of the template; nobody looks them up.
            KorControls::setId(control, kTreeIds[i]);
            column->insertWidget(column->indexOf(m_filter), combo);
            column->addWidget(control, 1);
        }
        control->setImageList(m_images);
        control->setAccessibleName(toQt(m_structure.getSection(section)->getDisplayName()));
        combo->setImageList(m_images);
        combo->setDisplayFullPath(true);
        KorControls::setName(combo, control->accessibleName());
        slot(section).combo = combo;
        slot(section).tree =
            std::make_unique<KorDSMSectionTree>(control, m_structure, *m_structure.getSection(section),
                                                [this](KorTreeHandle entry) { onEntryGone(entry); });
        connect(combo, &VELComboTree::entrySelected, this, [this, section, combo](KorTreeHandle entry) {
            onSourceChosen(section, combo->getEntryData(entry));
        });
        connect(control, &KorTreeCtrl::contextMenuRequested, this, &KorDSMMainDialog::showContextMenu);
        connect(control, &KorTreeCtrl::dropRequested, this, &KorDSMMainDialog::dropEntry);
        // Where a record cannot go is said when it is dropped there.
        connect(control, &KorTreeCtrl::dropQuery, this,
                [](KorTreeHandle from, KorTreeHandle to, bool* accept) {
                    const KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(from);
                    *accept = item && item->record() && KorDSMSectionTree::itemOf(to);
                });
        // A tree that is not shown selects on its own when what it had selected goes.
        connect(control, &KorTreeCtrl::selectionChanged, this, [this, control] {
            if (m_handleSelection && control == currentTree().control())
                whenFree([this] { followSelection(); });
        });
    }
}

void KorDSMMainDialog::setUpStrips() {
    m_itemCommands = KorControls::find<KorButtonGroup>(this, 1011);
    for (const StripButton& button : kItemCommands)
        m_commandActions.push_back(addCommand(*m_itemCommands, button));
    connect(m_itemCommands, &KorButtonGroup::buttonPressed, this, waiting(&KorDSMMainDialog::onItemCommand));

    m_navigation = KorControls::find<KorButtonGroup>(this, 1012);
    for (const StripButton& button : kNavigation) {
        addCommand(*m_navigation, button);
        m_navigation->enableButton(button.id, false);
    }
    connect(m_navigation, &KorButtonGroup::buttonPressed, this, waiting(&KorDSMMainDialog::onNavigation));

    m_undoStrip = new KorDSMUndoStrip(KorControls::find<KorButtonGroup>(this, 1211));
    connect(m_undoStrip, &KorDSMUndoStrip::undoWanted, this, waiting(&KorDSMMainDialog::undo));
    connect(m_undoStrip, &KorDSMUndoStrip::redoWanted, this, waiting(&KorDSMMainDialog::redo));

    m_sections = KorControls::find<KorButtonGroupMenu>(this, 1233);
    KorButtonGroup* strip = m_sections->buttonGroup();
    KorControls::setId(strip, 1234);
    strip->setCheckable(true);
    for (const SectionButton& button : kSectionButtons)
        strip->addButton(button.id, Prompts::ups(button.prompt),
                         KorPictures::buttonBitmap(button.bitmap, button.checkedBitmap));
    connect(strip, &KorButtonGroup::buttonPressed, this, [this, strip](int id) {
        for (int i = 0; i < kNumberOfSections; ++i)
            if (strip->buttonId(i) == id)
                whenFree([this, i] { switchSection(static_cast<eViewSections>(i)); });
    });
    m_sections->setMenuButton(kOptionsButton, Prompts::gui(45100), KorPictures::bitmap(kOptionsBitmap));
    for (const int prompt : kOptionPrompts)
        m_sections->addMenuItem(Prompts::ups(prompt));
    connect(m_sections, &KorButtonGroupMenu::toggled, this, waiting(&KorDSMMainDialog::onOption));
}

void KorDSMMainDialog::setUpKeys() {
    auto* find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, m_filter, [this] { m_filter->setFocus(Qt::ShortcutFocusReason); });
    addAction(find);
    // Delete belongs to the tree: in a field or a grid it deletes what is there. The menu names it all the
    // same.
    const QKeySequence deleteKey(QKeySequence::Delete);
    QAction* command = m_commandActions[static_cast<std::size_t>(eItemCommand::kDelete)];
    command->setText(command->text() + u'\t' + deleteKey.toString(QKeySequence::NativeText));
    for (SectionSlot& section : m_slots) {
        auto* remove = new QAction(section.tree->control());
        remove->setShortcut(deleteKey);
        remove->setShortcutContext(Qt::WidgetShortcut);
        connect(remove, &QAction::triggered, command, &QAction::trigger);
        section.tree->control()->addAction(remove);
    }
}

void KorDSMMainDialog::setUpStatus() {
    auto* place = KorControls::find<QWidget>(this, 1005);
    auto* line = static_cast<QBoxLayout*>(place->layout());
    m_status = new QLabel(place);
    KorControls::setId(m_status, 1007);
    m_status->setTextFormat(Qt::PlainText);
    m_progressText = KorControls::find<QLabel>(this, 1006);
    m_progressText->hide();
    m_progress = new QProgressBar(place);
    KorControls::setId(m_progress, 1008);
    m_progress->setMaximumWidth(220);
    m_progress->hide();
    m_readOnly = new QLabel(place);
    m_readOnly->setForegroundRole(QPalette::PlaceholderText);
    line->insertWidget(0, m_status);
    new LockNotice(line); // the status line owns it
    line->addWidget(m_progress);
    line->addStretch(1);
    line->addWidget(m_readOnly);
}

void KorDSMMainDialog::setUpButtons() {
    m_apply = KorControls::find<QPushButton>(this, 3);
    m_use = KorControls::find<QPushButton>(this, 1098);
    connect(KorControls::find<QPushButton>(this, 1), &QPushButton::clicked, this, &QDialog::accept);
    connect(KorControls::find<QPushButton>(this, 2), &QPushButton::clicked, this, &QDialog::reject);
    connect(m_apply, &QPushButton::clicked, this, waiting(&KorDSMMainDialog::apply));
    connect(m_use, &QPushButton::clicked, this, waiting(&KorDSMMainDialog::use));
}

void KorDSMMainDialog::setUpTexts() {
    setWindowTitle(toQt(Prompts::ups(33510)));
    KorControls::find<QPushButton>(this, 1)->setText(toQt(Prompts::ups(33740)));
    KorControls::find<QPushButton>(this, 2)->setText(toQt(Prompts::ups(33741)));
    m_apply->setText(toQt(Prompts::ups(33742)));
    m_use->setText(toQt(Prompts::ups(33559)));
}

void KorDSMMainDialog::setUpTabOrder() {
    m_tabOrder << m_sections->buttonGroup() << m_sections->menuButton() << m_itemCommands;
    for (const SectionSlot& section : m_slots)
        m_tabOrder << section.combo;
    m_tabOrder << m_filter;
    for (const SectionSlot& section : m_slots)
        m_tabOrder << section.tree->control();
    m_tabOrder << KorControls::find<QSplitter>(this, 1096)->handle(1) << m_navigation
               << KorControls::find<QWidget>(this, 1211) << m_tabs << m_list;
    for (const int button : {1098, 1, 2, 3})
        m_tabOrder << KorControls::find<QWidget>(this, button);
}

void KorDSMMainDialog::writeTiming(const char* label, qint64 milliseconds) const {
    char line[128];
    const std::string text = KorString::format("%s lasted: ", {label}).toStdString();
    std::snprintf(line, sizeof line, "\n%-50s%d ms", text.c_str(), static_cast<int>(milliseconds));
    KorOutputDebugString(line);
}
