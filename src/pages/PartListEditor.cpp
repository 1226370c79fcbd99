#include "pages/PartListEditor.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorMFCGridCtrl.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "controls/VELComboTree.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "operations/CurrentRows.h"
#include "pages/KorDSMPage.h"
#include "pages/ListEffect.h"
#include "pages/PartClipboard.h"
#include "pages/PartListColumns.h"
#include "pages/PartListCommands.h"
#include "pages/RecordButtons.h"
#include "pages/RestRow.h"
#include "pages/SelectionFills.h"
#include "pages/ValuePictures.h"
#include "services/Prompts.h"
#include "session/KorDSMPreview.h"
#include "session/KorDSMQualifierWords.h"
#include "session/KorDSMValueText.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QSignalBlocker>
#include <QToolButton>

#include <algorithm>
#include <map>

namespace {

constexpr int kMostRowsShown = 14;
constexpr int kLeastRowsShown = 4;
constexpr int kGoTo = 583; // "Go to "%s""
constexpr int kNewFor = 625;
constexpr int kCopyFor = 626;
constexpr int kPasteOnly = 767;
constexpr int kView = 774;

} // namespace

PartListEditor::PartListEditor(KorDSMPage& page, eTableType parts)
    : m_page(page), m_parts(parts), m_grid(new KorMFCGridCtrl), m_buttons(new KorButtonGroup),
      m_head(new QLabel) {
    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(0, 12, 0, 0);
    lines->setSpacing(2);
    auto* line = new QHBoxLayout;
    m_head->setWordWrap(true);
    line->addWidget(m_head, 1);
    line->addWidget(m_buttons);
    lines->addLayout(line);
    lines->addWidget(m_grid);
    if (RestRow::isFor(parts))
        lines->addWidget(m_rest = new RestRow(page, parts));
    setUpCommands();
    m_grid->setSelectsSeveral(true);
    m_grid->setOpensRows(true);
    m_grid->setIconSize(ValuePictures::largestSize());
    m_grid->setContextMenuPolicy(Qt::CustomContextMenu);
    m_grid->installEventFilter(this);
    connect(m_grid, &QWidget::customContextMenuRequested, this, &PartListEditor::showMenu);
    connect(m_grid, &QTableWidget::itemSelectionChanged, this, &PartListEditor::updateCommands);
    connect(m_grid, &QTableWidget::currentCellChanged, this, [this] {
        if (!m_isFilling) // rows that come and go make cells current that mean nothing yet
            Q_EMIT m_page.fieldChanged();
    });
    connect(m_grid, &KorMFCGridCtrl::cellEdited, this, &PartListEditor::onCellEdited);
    connect(m_grid, &KorMFCGridCtrl::rowOpened, this, &PartListEditor::open);
    connect(m_grid, &KorMFCGridCtrl::rowsDropped, this, [this](int place) {
        if (m_list)
            finish(m_list->moveTo(selected(), place));
    });
}

void PartListEditor::setUpCommands() {
    m_buttons->setIconSize({16, 16});
    for (const PartListCommand& command : PartListCommand::all()) {
        if (command.bitmap == 0)
            continue;
        const KorString text = Prompts::dsm(command.prompt);
        m_buttons->addButton(command.button, text, KorPictures::bitmap(command.bitmap));
        m_buttons->setButtonText(command.button, text, command.key);
    }
    connect(m_buttons, &KorButtonGroup::buttonPressed, this, [this](int id) {
        for (const PartListCommand& command : PartListCommand::all())
            if (command.button == id)
                run(command);
    });
}

std::vector<const Column*> PartListEditor::shownColumns() const {
    std::vector<const Column*> columns = m_list->cells();
    if (m_list->hasNames() && KorDSMFamilies::of(m_parts))
        columns.insert(columns.begin(), m_list->table().column(1));
    const std::vector<const Column*> details = m_list->details();
    columns.insert(columns.end(), details.begin(), details.end());
    return columns;
}

bool PartListEditor::isDetail(const Column& column) const {
    const std::vector<const Column*> details = m_list->details();
    return std::ranges::find(details, &column) != details.end();
}

KorString PartListEditor::captionOf(const Column& column) const {
    if (isDetail(column))
        return KorDSMValueText::captionWithUnit(*findTable(m_list->recordTable()), column);
    return m_list->hasNames() ? KorDSMValueText::captionWithUnit(m_list->table(), column)
                              : Prompts::dsm(kView);
}

void PartListEditor::setUpColumns() {
    m_columns = shownColumns();
    m_head->setText(toQt(PartListColumns::headOf(m_parts)));
    m_grid->setAccessibleName(toQt(PartListColumns::headOf(m_parts)));
    for (const Column* column : m_columns) {
        const int place =
            m_grid->insertColumn(captionOf(*column), isDetail(*column) ? KorMFCGridCtrl::eReadOnly
                                                                       : PartListColumns::kindOf(*column));
        if (const auto tree = PartListColumns::treeFor(*column))
            m_grid->setColumnTree(place,
                                  [fill = *tree, canBeEmpty = m_list->canBeEmpty()](VELComboTree& combo) {
                                      SelectionFills::fill(fill, combo);
                                      if (canBeEmpty)
                                          combo.addEntry(KorDSMValueText::nothing());
                                  });
    }
    if (KorDSMListEffect::isFor(m_parts))
        m_effect = new ListEffect(*m_grid, m_parts);
    m_grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_grid->setRowsMovable(m_list->isOrdered());
    if (m_list->isOrdered())
        m_grid->verticalHeader()->show();
}

void PartListEditor::load(RowRef whole) {
    const bool isOther = !m_list || m_list->whole() != whole;
    m_list = KorDSMEditedList::of(CurrentRows::source(), whole, m_parts);
    if (m_columns.empty())
        setUpColumns();
    m_selected = isOther ? KorDSMEditedList::Keys() : selected();
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (PartListColumns::kindOf(*m_columns[i]) == KorMFCGridCtrl::eCombo && !isDetail(*m_columns[i]) &&
            !PartListColumns::treeFor(*m_columns[i])) {
            const auto choices = PartListColumns::choicesOf(m_list->table(), *m_columns[i]);
            m_grid->setColumnChoices(static_cast<int>(i), choices.names, choices.pictures);
        }
    fill();
    if (m_rest)
        m_rest->load(whole);
}

std::int32_t PartListEditor::referenceAt(int row, const Column& column) const {
    return static_cast<std::int32_t>(
        std::get<std::int64_t>(m_list->value(m_keys[static_cast<std::size_t>(row)], column)));
}

std::vector<KorString> PartListEditor::textsOf(std::int32_t key) const {
    std::vector<KorString> texts;
    for (const Column* column : m_columns)
        texts.push_back(column->kind == eColumnKind::kFlag
                            ? KorString(m_list->value(key, *column) != CellValue(std::int64_t{0}) ? "1" : "0")
                            : m_list->text(key, *column));
    return texts;
}

void PartListEditor::fill() {
    m_isFilling = true;
    m_keys = m_list->keys();
    // Rows that are there already take other texts: a new row costs much more.
    while (m_grid->rowCount() > std::ssize(m_keys))
        m_grid->deleteRow(m_grid->rowCount() - 1);
    for (int row = 0; row < m_grid->rowCount(); ++row)
        showRow(row);
    for (auto row = static_cast<std::size_t>(m_grid->rowCount()); row < m_keys.size(); ++row)
        showPictures(m_grid->addRow(textsOf(m_keys[row])));
    const int rows = std::clamp(m_grid->rowCount(), kLeastRowsShown, kMostRowsShown);
    m_grid->setFixedHeight(m_grid->horizontalHeader()->sizeHint().height() +
                           rows * m_grid->verticalHeader()->defaultSectionSize() + 2 * m_grid->frameWidth() +
                           2);
    std::vector<int> places;
    for (const std::int32_t key : m_selected)
        if (const auto it = std::ranges::find(m_keys, key); it != m_keys.end())
            places.push_back(static_cast<int>(it - m_keys.begin()));
    m_grid->selectRows(places);
    m_isFilling = false;
    explain();
    showEffect();
    updateCommands();
}

const Column* PartListEditor::columnAt(int place) const {
    return place >= 0 && place < std::ssize(m_columns) ? m_columns[static_cast<std::size_t>(place)] : nullptr;
}

void PartListEditor::showEffect() {
    constexpr int kPicks = 930;
    const KorDSMPreview* preview = KorDSMPreview::shown();
    if (m_effect && m_list)
        m_effect->show(m_list->whole(), m_keys);
    if (!m_list || m_list->whole().table != kTableQualifierSet)
        return;
    explain();
    if (!preview)
        return;
    const auto [picked, all] = preview->pickedBy(m_list->whole().key);
    m_head->setText(
        m_head->text() + u' ' +
        toQt(KorString::format(Prompts::dsm(kPicks), {KorString::number(picked), KorString::number(all)})));
}

// Qualifier sets in words: the one that is edited at the head of its list, others as tooltips.
void PartListEditor::explain() {
    constexpr int kSelects = 638;
    const QSignalBlocker quiet(m_grid); // a tooltip is no edit
    if (m_list->whole().table == kTableQualifierSet)
        m_head->setText(toQt(KorString::format(Prompts::dsm(kSelects),
                                               {KorDSMQualifierWords::sentenceOf(m_list->whole().key)})));
    std::map<std::int32_t, QString> sentences;
    const auto sentenceOf = [&sentences](std::int32_t set) {
        const auto [sentence, isNew] = sentences.try_emplace(set);
        if (isNew)
            sentence->second = toQt(KorDSMQualifierWords::sentenceOf(set));
        return sentence->second;
    };
    for (std::size_t column = 0; column < m_columns.size(); ++column)
        if (m_columns[column]->isReference() && m_columns[column]->target == kTableQualifierSet)
            for (int row = 0; row < m_grid->rowCount(); ++row)
                m_grid->item(row, static_cast<int>(column))
                    ->setToolTip(sentenceOf(referenceAt(row, *m_columns[column])));
}

KorDSMEditedList::Keys PartListEditor::selected() const {
    KorDSMEditedList::Keys keys;
    for (const int row : m_grid->selectedRows())
        if (row < std::ssize(m_keys)) // while rows are taken away there are more of them
            keys.push_back(m_keys[static_cast<std::size_t>(row)]);
    return keys;
}

std::optional<FieldPlace> PartListEditor::placeOf(const QWidget& control) const {
    const int row = m_grid->currentRow();
    const int column = m_grid->currentColumn();
    if (&control != m_grid || row < 0 || column < 0 || row >= std::ssize(m_keys))
        return std::nullopt;
    const std::int32_t key = m_keys[static_cast<std::size_t>(row)];
    if (!columnAt(column))
        return FieldPlace{
            m_list->record(key), 0, {}, m_effect ? m_effect->objectsAt(row, column) : std::vector<int>()};
    const auto cell = m_list->cell(key, *columnAt(column));
    return FieldPlace{cell.row, cell.column->number};
}

QWidget* PartListEditor::bringUp(RowRef row, int column) {
    for (std::size_t i = 0; i < m_keys.size(); ++i) {
        if (m_list->record(m_keys[i]) != row)
            continue;
        const auto shown = std::ranges::find(m_columns, column, &Column::number);
        const auto place = shown == m_columns.end() ? 0 : shown - m_columns.begin();
        m_grid->setCurrentCell(static_cast<int>(i), static_cast<int>(place));
        return m_grid;
    }
    return nullptr;
}

void PartListEditor::enable() {
    m_grid->enableWindow(m_page.isEditable());
    updateCommands();
}

bool PartListEditor::canDo(const PartListCommand& command) const {
    return m_list && (command.onlyReads || m_page.isEditable()) &&
           (!command.needsRows || !m_grid->selectedRows().empty()) &&
           (!command.needsOrder || m_list->isOrdered());
}

void PartListEditor::updateCommands() {
    for (const PartListCommand& command : PartListCommand::all())
        if (m_buttons->button(command.button))
            m_buttons->enableButton(command.button, canDo(command));
}

void PartListEditor::run(const PartListCommand& command) {
    m_grid->commitEdit();
    if (canDo(command))
        finish(command.act(*m_list, selected(), *window()));
}

// The window follows with the trees, which loads the page anew.
void PartListEditor::finish(KorDSMEditedList::Outcome outcome) {
    if (outcome.isFailed() && !outcome.isTold)
        refuse(outcome.error);
    m_selected = outcome.isStored() ? outcome.selected : selected();
    fill();
    if (outcome.changes.empty())
        return;
    DsmRowsChanged message;
    message.changes = std::move(outcome.changes);
    KorDSMMainWindow::sendMessage(message);
    m_grid->setFocus();
}

void PartListEditor::refuse(const KorString& sentence) {
    if (!sentence.isEmpty())
        QMessageBox::information(window(), window()->windowTitle(), toQt(sentence));
}

void PartListEditor::showRow(int row) {
    const std::vector<KorString> texts = textsOf(m_keys[static_cast<std::size_t>(row)]);
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (m_columns[i]->kind == eColumnKind::kFlag)
            m_grid->setCellCheck(row, static_cast<int>(i), texts[i] == "1");
        else
            m_grid->setCellText(row, static_cast<int>(i), texts[i]);
    showPictures(row);
}

void PartListEditor::showPictures(int row) {
    const std::int32_t key = m_keys[static_cast<std::size_t>(row)];
    const TableSchema& table = m_list->table();
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (!isDetail(*m_columns[i]) && !ValuePictures::sizeFor(table, *m_columns[i]).isEmpty())
            m_grid->setCellPicture(
                row, static_cast<int>(i),
                ValuePictures::of(table, *m_columns[i], m_list->value(key, *m_columns[i])));
}

// The cell's editor is still open: the rows stay, and the window follows when it is closed.
void PartListEditor::onCellEdited(int row, int column) {
    const Column& edited = *m_columns[static_cast<std::size_t>(column)];
    const std::int32_t key = m_keys[static_cast<std::size_t>(row)];
    KorDSMValueText::Parsed parsed = CellValue();
    if (edited.kind == eColumnKind::kFlag)
        parsed.value = std::int64_t{m_grid->isCellChecked(row, column)};
    else
        parsed = KorDSMValueText::parse(m_list->table(), edited, m_grid->getCellText(row, column));
    if (!parsed) {
        showRow(row);
        return refuse(parsed.error);
    }
    // A cell of several selected rows is set in all of them; a name is the row's own.
    m_selected = selected();
    const bool isSelected = std::ranges::find(m_selected, key) != m_selected.end();
    const auto written = isSelected && edited.number != 1 ? m_selected : KorDSMEditedList::Keys{key};
    const bool isChange = std::ranges::any_of(
        written, [&](std::int32_t each) { return m_list->value(each, edited) != parsed.value; });
    const KorDSMEditedList::Outcome outcome =
        isChange ? m_list->set(written, edited, parsed.value) : KorDSMEditedList::Outcome();
    if (outcome.isFailed() && !outcome.isTold)
        refuse(outcome.error);
    for (int each = 0; each < m_grid->rowCount(); ++each)
        showRow(each);
    explain();
    if (outcome.changes.empty())
        return;
    DsmRowsChanged message;
    message.changes = outcome.changes;
    KorDSMMainWindow::postMessage(std::move(message));
}

void PartListEditor::open(int row, int column) {
    const Column* opened = columnAt(column);
    const std::int32_t key = m_keys[static_cast<std::size_t>(row)];
    DsmGoToRecord record;
    record.row = m_list->record(key);
    record.source = CurrentRows::source();
    DsmGoToRecord target = record;
    if (opened && opened->isReference())
        target.row = {opened->target, referenceAt(row, *opened)};
    // Others use it, too: it is shown below the record of this row.
    if (opened && isDetail(*opened))
        KorDSMMainWindow::sendMessage(record);
    KorDSMMainWindow::sendMessage(target);
}

bool PartListEditor::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_grid || (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride))
        return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    // The window renames by the key that edits a cell here.
    if (key->key() == Qt::Key_F2 && event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    const auto command =
        std::ranges::find(PartListCommand::all(), QKeySequence(key->keyCombination()), &PartListCommand::key);
    if (command == PartListCommand::all().end())
        return QWidget::eventFilter(watched, event);
    // The keys are the list's also where the window has them for something else.
    event->accept();
    if (event->type() == QEvent::KeyPress)
        run(*command);
    return true;
}

// One aspect of copied rows alone, for the selected ones.
void PartListEditor::addPasteOnly(QMenu& menu) {
    if (!m_list->hasNames())
        return;
    QMenu* only = menu.addMenu(toQt(Prompts::dsm(kPasteOnly)));
    only->setEnabled(m_page.isEditable() && !m_grid->selectedRows().empty() && PartClipboard::holds(*m_list));
    for (const Column* column : m_list->cells())
        only->addAction(toQt(KorDSMValueText::columnCaption(m_list->table(), *column)), this, [this, column] {
            finish(PartListCommand::pasteColumn(*m_list, selected(), *column, *window()));
        });
}

void PartListEditor::showMenu(const QPoint& position) {
    QMenu menu;
    const QModelIndex cell = m_grid->indexAt(position);
    const Column* pointedAt = cell.isValid() ? columnAt(cell.column()) : nullptr;
    if (pointedAt && pointedAt->isReference()) {
        const KorString name = m_grid->getCellText(cell.row(), cell.column());
        const bool isChosen =
            referenceAt(cell.row(), *m_columns[static_cast<std::size_t>(cell.column())]) > 0;
        if (isChosen)
            menu.addAction(toQt(KorString::format(Prompts::dsm(kGoTo), {KorDSMValueText::shortName(name)})),
                           this, [this, cell] { open(cell.row(), cell.column()); });
        const auto [user, column] = m_list->cell(m_keys[static_cast<std::size_t>(cell.row())],
                                                 *m_columns[static_cast<std::size_t>(cell.column())]);
        const KorDSMRecordUse::Use use{user, column, {}};
        if (RecordButtons::areFor(*use.column) && m_page.isEditable() && !isDetail(*use.column)) {
            menu.addAction(toQt(Prompts::dsm(kNewFor)), this,
                           [this, use] { RecordButtons::makeFor(m_page, use); });
            if (isChosen)
                menu.addAction(toQt(Prompts::dsm(kCopyFor)), this,
                               [this, use] { RecordButtons::copyFor(m_page, use); });
        }
        menu.addSeparator();
    }
    for (const PartListCommand& command : PartListCommand::all()) {
        QAction* action =
            menu.addAction(toQt(Prompts::dsm(command.prompt)), this, [this, &command] { run(command); });
        action->setShortcut(command.key);
        action->setEnabled(canDo(command));
    }
    addPasteOnly(menu);
    if (m_effect && cell.isValid())
        m_effect->addTo(menu, m_keys[static_cast<std::size_t>(cell.row())]);
    menu.exec(m_grid->viewport()->mapToGlobal(position));
}
