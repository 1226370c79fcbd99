#include "pages/PartListActions.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorMFCGridCtrl.h"
#include "controls/KorMnemonics.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "pages/KorDSMPage.h"
#include "pages/ListEffect.h"
#include "pages/PartClipboard.h"
#include "pages/PartListCommands.h"
#include "pages/PartListRows.h"
#include "pages/RecordButtons.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

#include <QKeyEvent>
#include <QMenu>

#include <algorithm>

namespace {

constexpr int kGoTo = 583; // "Go to "%s""
constexpr int kNewFor = 625;
constexpr int kCopyFor = 626;
constexpr int kRenameFor = 1469; // "Rename the chosen one..."
constexpr int kDeleteFor = 1467; // "Delete the chosen one"
constexpr int kPasteOnly = 767;
constexpr int kNewButton = 21; // behind the buttons of commands
constexpr int kNewBitmap = 1044;

} // namespace

PartListActions::PartListActions(KorDSMPage& page, KorMFCGridCtrl& grid, KorButtonGroup& buttons,
                                 const PartListRows& rows)
    : m_page(page), m_grid(grid), m_buttons(buttons), m_rows(rows) {
    PartClipboard::watch();
    addButtons();
    m_grid.setContextMenuPolicy(Qt::CustomContextMenu);
    m_grid.installEventFilter(this);
    connect(&m_grid, &QWidget::customContextMenuRequested, this, &PartListActions::showMenu);
    connect(&m_grid, &QTableWidget::itemSelectionChanged, this, &PartListActions::refresh);
    connect(&m_grid, &QTableWidget::currentCellChanged, this, &PartListActions::refresh);
}

void PartListActions::addButtons() {
    m_buttons.setIconSize({16, 16});
    for (const PartListCommand& command : PartListCommand::all()) {
        if (command.bitmap == 0)
            continue;
        const KorString text = Prompts::dsm(command.prompt);
        m_buttons.addButton(command.button, text, KorPictures::bitmap(command.bitmap));
        m_buttons.setButtonText(command.button, text, command.key);
    }
    m_buttons.addButton(kNewButton, Prompts::dsm(kNewFor), KorPictures::bitmap(kNewBitmap));
    connect(&m_buttons, &KorButtonGroup::buttonPressed, this, [this](int id) {
        m_grid.commitEdit();
        if (const auto use = useAt(m_grid.currentRow(), m_grid.currentColumn()); use && id == kNewButton)
            return RecordButtons::makeFor(m_page, *use);
        for (const PartListCommand& command : PartListCommand::all())
            if (command.button == id)
                run(command);
    });
}

KorDSMEditedList::Keys PartListActions::selected() const {
    return m_rows.keysAt(m_grid.selectedRows());
}

bool PartListActions::canDo(const PartListCommand& command) const {
    return m_rows.list && (command.onlyReads || m_page.isEditable()) &&
           (!command.needsRows || !m_grid.selectedRows().empty()) &&
           (!command.needsOrder || m_rows.list->isOrdered());
}

void PartListActions::refresh() {
    for (const PartListCommand& command : PartListCommand::all())
        if (m_buttons.button(command.button))
            m_buttons.enableButton(command.button, canDo(command));
    m_buttons.enableButton(kNewButton, useAt(m_grid.currentRow(), m_grid.currentColumn()).has_value());
}

// The cell that chooses a record which users make; nothing for others, and where nothing can be changed.
std::optional<KorDSMRecordUse::Use> PartListActions::useAt(int row, int place) const {
    const bool isCell = m_rows.list && row >= 0 && row < std::ssize(m_rows.keys) && place >= 0;
    const Column* chosen = isCell && m_page.isEditable() ? m_rows.columnAt(place) : nullptr;
    if (!chosen || !chosen->isReference() || m_rows.isDetail(*chosen))
        return std::nullopt;
    const auto [user, column] = m_rows.list->cell(m_rows.keyAt(row), *chosen);
    return RecordButtons::areFor(*column) ? std::optional(KorDSMRecordUse::Use{user, column, {}})
                                          : std::nullopt;
}

void PartListActions::run(const PartListCommand& command) {
    m_grid.commitEdit();
    if (canDo(command))
        Q_EMIT done(command.act(*m_rows.list, selected(), *m_grid.window()));
}

bool PartListActions::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &m_grid ||
        (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride))
        return QObject::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    // The window renames by the key that edits a cell here.
    if (key->key() == Qt::Key_F2 && event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    const auto command =
        std::ranges::find(PartListCommand::all(), QKeySequence(key->keyCombination()), &PartListCommand::key);
    if (command == PartListCommand::all().end())
        return QObject::eventFilter(watched, event);
    // The keys are the list's also where the window has them for something else.
    event->accept();
    if (event->type() == QEvent::KeyPress)
        run(*command);
    return true;
}

// What a cell refers to: the way there, and a new one in its place.
void PartListActions::addForCell(QMenu& menu, int row, int place) {
    const Column* pointedAt = m_rows.columnAt(place);
    if (!pointedAt || !pointedAt->isReference())
        return;
    const bool isChosen = m_rows.referenceAt(row, *pointedAt) > 0;
    if (isChosen)
        menu.addAction(
            KorMnemonics::literal(toQt(KorString::format(
                Prompts::dsm(kGoTo), {KorDSMValueText::shortName(m_grid.getCellText(row, place))}))),
            this, [this, row, place] { Q_EMIT cellOpened(row, place); });
    if (const auto use = useAt(row, place)) {
        menu.addAction(toQt(Prompts::dsm(kNewFor)), this,
                       [this, use = *use] { RecordButtons::makeFor(m_page, use); });
        if (isChosen)
            menu.addAction(toQt(Prompts::dsm(kCopyFor)), this,
                           [this, use = *use] { RecordButtons::copyFor(m_page, use); });
        // What no tree has can be renamed and deleted nowhere else.
        if (isChosen && RecordButtons::offerFor(*use->column) == RecordButtons::eOffer::kWithDeleting) {
            menu.addAction(toQt(Prompts::dsm(kRenameFor)), this,
                           [this, use = *use] { RecordButtons::renameFor(m_page, use); });
            menu.addAction(toQt(Prompts::dsm(kDeleteFor)), this,
                           [this, use = *use] { RecordButtons::removeFor(m_page, use); });
        }
    }
    menu.addSeparator();
}

// One aspect of copied rows alone, for the selected ones.
void PartListActions::addPasteOnly(QMenu& menu) {
    KorDSMEditedList& list = *m_rows.list;
    if (!list.hasNames())
        return;
    QMenu* only = menu.addMenu(toQt(Prompts::dsm(kPasteOnly)));
    only->setEnabled(m_page.isEditable() && !m_grid.selectedRows().empty() && PartClipboard::holds(list));
    for (const Column* column : list.cells())
        only->addAction(toQt(KorDSMValueText::columnCaption(list.table(), *column)), this, [this, column] {
            Q_EMIT done(PartListCommand::pasteColumn(*m_rows.list, selected(), *column, *m_grid.window()));
        });
}

void PartListActions::showMenu(const QPoint& position) {
    if (!m_rows.list)
        return;
    QMenu menu;
    const QModelIndex cell = m_grid.indexAt(position);
    if (cell.isValid())
        addForCell(menu, cell.row(), cell.column());
    for (const PartListCommand& command : PartListCommand::all()) {
        QAction* action =
            menu.addAction(toQt(Prompts::dsm(command.prompt)), this, [this, &command] { run(command); });
        action->setShortcut(command.key);
        action->setEnabled(canDo(command));
    }
    addPasteOnly(menu);
    if (m_effect && cell.isValid()) {
        const std::int32_t key = m_rows.keyAt(cell.row());
        const KorDSMEditedList::Keys keys = selected();
        m_effect->addTo(menu, std::ranges::count(keys, key) ? keys : KorDSMEditedList::Keys{key});
    }
    KorMnemonics::give(menu);
    menu.exec(m_grid.viewport()->mapToGlobal(position));
}
