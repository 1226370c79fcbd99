#include "pages/PartListEditor.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorMFCGridCtrl.h"
#include "controls/KorMnemonics.h"
#include "controls/KorQt.h"
#include "controls/VELComboTree.h"
#include "model/KorDSMMessages.h"
#include "operations/CurrentRows.h"
#include "pages/KorDSMPage.h"
#include "pages/ListEffect.h"
#include "pages/PartListActions.h"
#include "pages/PartListColumns.h"
#include "pages/RestRow.h"
#include "pages/SelectionFills.h"
#include "pages/ValuePictures.h"
#include "services/Prompts.h"
#include "session/KorDSMPreview.h"
#include "session/KorDSMQualifierWords.h"
#include "session/KorDSMValueText.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QSignalBlocker>

#include <algorithm>
#include <map>

namespace {

constexpr int kMostRowsShown = 14;
constexpr int kLeastRowsShown = 4;

} // namespace

PartListEditor::PartListEditor(KorDSMPage& page, eTableType parts)
    : m_page(page), m_parts(parts), m_grid(new KorMFCGridCtrl), m_buttons(new KorButtonGroup),
      m_head(new QLabel) {
    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(0, 12, 0, 0);
    lines->setSpacing(2);
    auto* line = new QHBoxLayout;
    m_head->setWordWrap(true);
    m_head->setBuddy(m_grid);
    line->addWidget(m_head, 1);
    line->addWidget(m_buttons);
    lines->addLayout(line);
    lines->addWidget(m_grid);
    if (RestRow::isFor(parts))
        lines->addWidget(m_rest = new RestRow(page, parts));
    m_actions = std::make_unique<PartListActions>(m_page, *m_grid, *m_buttons, m_rows);
    connect(m_actions.get(), &PartListActions::done, this, &PartListEditor::finish);
    connect(m_actions.get(), &PartListActions::cellOpened, this, &PartListEditor::open);
    m_grid->setSelectsSeveral(true);
    m_grid->setOpensRows(true);
    m_grid->setIconSize(ValuePictures::largestSize());
    connect(m_grid, &QTableWidget::currentCellChanged, this, [this] {
        if (!m_isFilling) // rows that come and go make cells current that mean nothing yet
            Q_EMIT m_page.fieldChanged();
    });
    connect(m_grid, &KorMFCGridCtrl::cellEdited, this, &PartListEditor::onCellEdited);
    connect(m_grid, &KorMFCGridCtrl::rowOpened, this, &PartListEditor::open);
    connect(m_grid, &KorMFCGridCtrl::captionsWrapped, this, &PartListEditor::fitHeight);
    connect(m_grid, &KorMFCGridCtrl::rowsDropped, this, [this](int place) {
        if (m_rows.list)
            finish(m_rows.list->moveTo(selected(), place));
    });
}

PartListEditor::~PartListEditor() = default;

void PartListEditor::setUpColumns() {
    m_rows.columns = m_rows.columnsToShow();
    m_head->setText(toQt(PartListColumns::headOf(m_parts)));
    m_grid->setAccessibleName(toQt(PartListColumns::headOf(m_parts)));
    for (const Column* column : m_rows.columns) {
        const int place = m_grid->insertColumn(m_rows.captionOf(*column),
                                               m_rows.isDetail(*column) ? KorMFCGridCtrl::eReadOnly
                                                                        : PartListColumns::kindOf(*column));
        if (const auto tree = PartListColumns::treeFor(*column))
            m_grid->setColumnTree(
                place, [fill = *tree, canBeEmpty = m_rows.list->canBeEmpty()](VELComboTree& combo) {
                    SelectionFills::fill(fill, combo);
                    if (canBeEmpty)
                        combo.addEntry(KorDSMValueText::nothing());
                });
    }
    if (KorDSMListEffect::isFor(m_parts))
        m_actions->setEffect(m_effect = new ListEffect(*m_grid, m_parts));
    if (!m_effect)
        m_grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_grid->setRowsMovable(m_rows.list->isOrdered());
    if (m_rows.list->isOrdered())
        m_grid->verticalHeader()->show();
}

void PartListEditor::load(RowRef whole) {
    const bool isOther = !m_rows.list || m_rows.list->whole() != whole;
    m_rows.list = KorDSMEditedList::of(CurrentRows::source(), whole, m_parts);
    if (m_rows.columns.empty())
        setUpColumns();
    m_selected = isOther ? KorDSMEditedList::Keys() : selected();
    for (std::size_t i = 0; i < m_rows.columns.size(); ++i)
        if (PartListColumns::kindOf(*m_rows.columns[i]) == KorMFCGridCtrl::eCombo &&
            !m_rows.isDetail(*m_rows.columns[i]) && !PartListColumns::treeFor(*m_rows.columns[i])) {
            const auto choices = PartListColumns::choicesOf(m_rows.list->table(), *m_rows.columns[i]);
            m_grid->setColumnChoices(static_cast<int>(i), choices.names, choices.pictures);
        }
    showRows();
    if (m_rest)
        m_rest->load(whole);
}

void PartListEditor::showRows() {
    m_isFilling = true;
    m_rows.keys = m_rows.list->keys();
    // Rows that are there already take other texts: a new row costs much more.
    while (m_grid->rowCount() > std::ssize(m_rows.keys))
        m_grid->deleteRow(m_grid->rowCount() - 1);
    for (int row = 0; row < m_grid->rowCount(); ++row)
        showRow(row);
    for (auto row = static_cast<std::size_t>(m_grid->rowCount()); row < m_rows.keys.size(); ++row)
        showPictures(m_grid->addRow(m_rows.textsOf(m_rows.keys[row])));
    fitHeight();
    std::vector<int> places;
    for (const std::int32_t key : m_selected)
        if (const auto it = std::ranges::find(m_rows.keys, key); it != m_rows.keys.end())
            places.push_back(static_cast<int>(it - m_rows.keys.begin()));
    m_grid->selectRows(places);
    m_isFilling = false;
    explainCells();
    showEffect();
    m_actions->refresh();
}

void PartListEditor::fitHeight() {
    const int rows = std::clamp(m_grid->rowCount(), kLeastRowsShown, kMostRowsShown);
    const QHeaderView& captions = *m_grid->horizontalHeader();
    m_grid->setFixedHeight(std::max(captions.sizeHint().height(), captions.minimumHeight()) +
                           rows * m_grid->verticalHeader()->defaultSectionSize() + 2 * m_grid->frameWidth() +
                           2);
}

void PartListEditor::showEffect() {
    if (!m_rows.list)
        return;
    if (m_effect) {
        m_effect->show(m_rows.list->whole(), m_rows.keys);
        m_grid->fitColumns();
    }
    explainSet();
}

// Of the qualifier set that is edited, at the head of its list.
void PartListEditor::explainSet() {
    constexpr int kSelects = 638;
    constexpr int kPicks = 930;
    constexpr int kAtMost = 1360; // "%s to %s"
    const RowRef whole = m_rows.list->whole();
    if (whole.table != kTableQualifierSet)
        return;
    KorString text = KorString::format(Prompts::dsm(kSelects), {KorDSMQualifierWords::sentenceOf(whole.key)});
    if (const KorDSMPreview* preview = KorDSMPreview::shown()) {
        const auto [sure, unknown, all] = preview->pickedBy(whole.key);
        KorString picked = KorString::number(sure);
        if (unknown > 0)
            picked = KorString::format(Prompts::dsm(kAtMost), {picked, KorString::number(sure + unknown)});
        text = text + " " + KorString::format(Prompts::dsm(kPicks), {picked, KorString::number(all)});
    }
    m_head->setText(KorMnemonics::literal(toQt(text)));
}

// Qualifier sets that rows name are told in words as tooltips.
void PartListEditor::explainCells() {
    const QSignalBlocker quiet(m_grid); // a tooltip is no edit
    std::map<std::int32_t, QString> sentences;
    const auto sentenceOf = [&sentences](std::int32_t set) {
        const auto [sentence, isNew] = sentences.try_emplace(set);
        if (isNew)
            sentence->second = toQt(KorDSMQualifierWords::sentenceOf(set));
        return sentence->second;
    };
    for (std::size_t column = 0; column < m_rows.columns.size(); ++column)
        if (m_rows.columns[column]->isReference() && m_rows.columns[column]->target == kTableQualifierSet)
            for (int row = 0; row < m_grid->rowCount(); ++row)
                m_grid->item(row, static_cast<int>(column))
                    ->setToolTip(sentenceOf(m_rows.referenceAt(row, *m_rows.columns[column])));
}

KorDSMEditedList::Keys PartListEditor::selected() const {
    return m_rows.keysAt(m_grid->selectedRows());
}

std::optional<FieldPlace> PartListEditor::placeOf(const QWidget& control) const {
    const int row = m_grid->currentRow();
    const int column = m_grid->currentColumn();
    if (&control != m_grid || row < 0 || column < 0 || row >= std::ssize(m_rows.keys))
        return std::nullopt;
    const std::int32_t key = m_rows.keyAt(row);
    if (!m_rows.columnAt(column))
        return FieldPlace{m_rows.list->record(key),
                          0,
                          {},
                          m_effect ? m_effect->objectsAt(row, column) : std::vector<int>()};
    const auto cell = m_rows.list->cell(key, *m_rows.columnAt(column));
    return FieldPlace{cell.row, cell.column->number};
}

QWidget* PartListEditor::bringUp(RowRef row, int column) {
    for (std::size_t i = 0; i < m_rows.keys.size(); ++i) {
        if (m_rows.list->record(m_rows.keys[i]) != row)
            continue;
        const auto shown = std::ranges::find(m_rows.columns, column, &Column::number);
        const auto place = shown == m_rows.columns.end() ? 0 : shown - m_rows.columns.begin();
        m_grid->setCurrentCell(static_cast<int>(i), static_cast<int>(place));
        return m_grid;
    }
    return nullptr;
}

void PartListEditor::enable() {
    m_grid->enableWindow(m_page.isEditable());
    m_actions->refresh();
}

// The window follows with the trees, which loads the page anew.
void PartListEditor::finish(const KorDSMEditedList::Outcome& outcome) {
    if (outcome.isFailed() && !outcome.isTold)
        refuse(outcome.error);
    m_selected = outcome.isStored() ? outcome.selected : selected();
    showRows();
    if (outcome.changes.empty())
        return;
    DsmRowsChanged message;
    message.changes = outcome.changes;
    KorDSMMainWindow::sendMessage(message);
    m_grid->setFocus();
}

void PartListEditor::refuse(const KorString& sentence) {
    if (!sentence.isEmpty())
        QMessageBox::information(window(), window()->windowTitle(), toQt(sentence));
}

void PartListEditor::showRow(int row) {
    const std::vector<KorString> texts = m_rows.textsOf(m_rows.keyAt(row));
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (m_rows.columns[i]->kind == eColumnKind::kFlag)
            m_grid->setCellCheck(row, static_cast<int>(i), texts[i] == "1");
        else
            m_grid->setCellText(row, static_cast<int>(i), texts[i]);
    showPictures(row);
}

void PartListEditor::showPictures(int row) {
    const std::int32_t key = m_rows.keyAt(row);
    const TableSchema& table = m_rows.list->table();
    for (std::size_t i = 0; i < m_rows.columns.size(); ++i)
        if (!m_rows.isDetail(*m_rows.columns[i]) &&
            !ValuePictures::sizeFor(table, *m_rows.columns[i]).isEmpty())
            m_grid->setCellPicture(
                row, static_cast<int>(i),
                ValuePictures::of(table, *m_rows.columns[i], m_rows.list->value(key, *m_rows.columns[i])));
}

// The cell's editor is still open: the rows stay, and the window follows when it is closed.
void PartListEditor::onCellEdited(int row, int column) {
    const Column& edited = *m_rows.columns[static_cast<std::size_t>(column)];
    const std::int32_t key = m_rows.keyAt(row);
    KorDSMValueText::Parsed parsed = CellValue();
    if (edited.kind == eColumnKind::kFlag)
        parsed.value = std::int64_t{m_grid->isCellChecked(row, column)};
    else
        parsed = KorDSMValueText::parse(m_rows.list->table(), edited, m_grid->getCellText(row, column));
    if (!parsed) {
        showRow(row);
        return refuse(parsed.error);
    }
    // A cell of several selected rows is set in all of them; a name is the row's own.
    m_selected = selected();
    const bool isSelected = std::ranges::find(m_selected, key) != m_selected.end();
    const auto written = isSelected && edited.number != 1 ? m_selected : KorDSMEditedList::Keys{key};
    const bool isChange = std::ranges::any_of(
        written, [&](std::int32_t each) { return m_rows.list->value(each, edited) != parsed.value; });
    const KorDSMEditedList::Outcome outcome =
        isChange ? m_rows.list->set(written, edited, parsed.value) : KorDSMEditedList::Outcome();
    if (outcome.isFailed() && !outcome.isTold)
        refuse(outcome.error);
    for (int each = 0; each < m_grid->rowCount(); ++each)
        showRow(each);
    explainCells();
    explainSet();
    if (outcome.changes.empty())
        return;
    DsmRowsChanged message;
    message.changes = outcome.changes;
    KorDSMMainWindow::postMessage(std::move(message));
}

void PartListEditor::open(int row, int column) {
    const Column* opened = m_rows.columnAt(column);
    const std::int32_t key = m_rows.keyAt(row);
    DsmGoToRecord record;
    record.row = m_rows.list->record(key);
    record.source = CurrentRows::source();
    DsmGoToRecord target = record;
    if (opened && opened->isReference())
        target.row = {opened->target, m_rows.referenceAt(row, *opened)};
    // Others use it, too: it is shown below the record of this row.
    if (opened && m_rows.isDetail(*opened))
        KorDSMMainWindow::sendMessage(record);
    KorDSMMainWindow::sendMessage(target);
}
