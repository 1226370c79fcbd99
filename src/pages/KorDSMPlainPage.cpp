#include "pages/KorDSMPlainPage.h"

#include "base/LabelFormat.h"
#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

KorDSMPlainPage::KorDSMPlainPage(QWidget* parent, const PlainPageDescription& description)
    : KorDSMPage(parent, description.templateId, {}), m_description(description) {
    setTitle(Prompts::getPrompt("UPS", description.titlePrompt));
    m_pageCode = description.code;
}

bool KorDSMPlainPage::OnInitDialog() {
    new QVBoxLayout(this);
    return KorDSMPage::OnInitDialog();
}

KorDSMPlainPage::Place KorDSMPlainPage::shownRecord() const {
    const KorDSMDatabaseItem* shown = item();
    if (!shown || !shown->record())
        return {};
    if (m_description.viaColumn == 0)
        return {findTable(shown->tableType()), shown->record()};
    const Column* via = findTable(shown->tableType())->column(m_description.viaColumn);
    StyleSource* source = StyleDatabases::current().here();
    if (!via || !source)
        return {};
    return {findTable(m_description.table),
            source->table(m_description.table).find(KorOdbcKey(via->integerIn(shown->record())))};
}

bool KorDSMPlainPage::loadData() {
    delete m_body;
    m_body = new QWidget(this);
    layout()->addWidget(m_body);
    auto* lines = new QVBoxLayout(m_body);
    lines->setContentsMargins(0, 0, 0, 0);
    m_form = new QFormLayout;
    m_form->setHorizontalSpacing(24);
    m_form->setVerticalSpacing(8);
    lines->addLayout(m_form);
    const Place place = shownRecord();
    if (place.record) {
        showColumns(place);
        showParts(place);
    }
    lines->addStretch(1);
    m_body->show();
    return place.record != nullptr;
}

namespace {

// A stored label as one line of text, its variables in brackets.
KorString readableLabel(const KorString& stored) {
    const LabelReading reading = LabelFormat::parse(stored, LabelStyle());
    if (!reading.understood())
        return stored;
    KorString text;
    for (const LabelRun& run : reading.runs) {
        if (run.kind == LabelRun::kVariable)
            text = text + KorString("[") + run.text + KorString("]");
        else
            text = text + (run.kind == LabelRun::kLineBreak ? KorString("\n") : run.text);
    }
    return text;
}

KorString valueText(const TableSchema& table, const Column& column, const StructRecord& record) {
    const KorString text = KorDSMValueText::toText(table, column, record);
    return column.isText() && text.view().starts_with("{L") ? readableLabel(text) : text;
}

} // namespace

void KorDSMPlainPage::addValue(const KorString& caption, const KorString& value) {
    auto* label = new QLabel(toQt(caption), m_body);
    auto* text = new QLabel(value.isEmpty() ? QStringLiteral("–") : toQt(value), m_body);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setAccessibleName(label->text());
    label->setBuddy(text);
    label->setForegroundRole(QPalette::PlaceholderText);
    m_form->addRow(label, text);
}

void KorDSMPlainPage::showColumns(const Place& place) {
    if (m_description.viaColumn != 0)
        addValue(KorDSMValueText::tableCaption(*place.table), place.record->name);
    std::vector<int> numbers = m_description.columns;
    if (numbers.empty())
        for (const Column& column : place.table->columns)
            if (column.number != 1)
                numbers.push_back(column.number);
    for (const int number : numbers)
        if (const Column* column = place.table->column(number))
            addValue(KorDSMValueText::columnCaption(*place.table, *column),
                     valueText(*place.table, *column, *place.record));
}

namespace {

constexpr int kMostRowsShown = 14;

// The columns of a part worth showing: not its own name, nor the reference to its whole.
std::vector<const Column*> partColumns(const TableSchema& table) {
    std::vector<const Column*> columns;
    for (const Column& column : table.columns)
        if (column.number != 1 && !(column.isReference() && column.role == eReferenceRole::kPartOf))
            columns.push_back(&column);
    return columns;
}

} // namespace

void KorDSMPlainPage::showParts(const Place& place) {
    StyleSource* source = StyleDatabases::current().here();
    const TableSchema* shownTable = nullptr;
    QTableWidget* grid = nullptr;
    const auto fitHeight = [&grid] {
        if (!grid)
            return;
        const int rows = std::min(grid->rowCount(), kMostRowsShown) * grid->verticalHeader()->defaultSectionSize();
        grid->setFixedHeight(grid->horizontalHeader()->sizeHint().height() + rows + 2 * grid->frameWidth() + 2);
    };
    for (const Referrer& part : source->referrersOf(place.table->type, KorOdbcKey(place.record->key))) {
        if (part.column->role != eReferenceRole::kPartOf)
            continue;
        const std::vector<const Column*> columns = partColumns(*part.table);
        if (part.table != shownTable) {
            fitHeight();
            shownTable = part.table;
            auto* caption = new QLabel(toQt(KorDSMValueText::tableCaption(*part.table)), m_body);
            caption->setContentsMargins(0, 12, 0, 2);
            m_body->layout()->addWidget(caption);
            grid = new QTableWidget(0, static_cast<int>(columns.size()), m_body);
            QStringList titles;
            for (const Column* column : columns)
                titles << toQt(KorDSMValueText::columnCaption(*part.table, *column));
            grid->setHorizontalHeaderLabels(titles);
            grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
            grid->verticalHeader()->hide();
            grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
            grid->setSelectionBehavior(QAbstractItemView::SelectRows);
            grid->setTabKeyNavigation(false);
            grid->setAccessibleName(toQt(KorDSMValueText::tableCaption(*part.table)));
            m_body->layout()->addWidget(grid);
        }
        const StructRecord* row = source->table(part.table->type).find(KorOdbcKey(part.key));
        grid->insertRow(grid->rowCount());
        for (std::size_t i = 0; i < columns.size(); ++i)
            grid->setItem(grid->rowCount() - 1, static_cast<int>(i),
                          new QTableWidgetItem(toQt(valueText(*part.table, *columns[i], *row))));
    }
    fitHeight();
}
