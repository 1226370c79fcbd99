#include "pages/KorDSMPlainPage.h"

#include "controls/KorComboBox.h"
#include "controls/KorControls.h"
#include "controls/KorLineEdit.h"
#include "controls/KorQt.h"
#include "controls/label/VELLabelDesignerCtrlWrap.h"
#include "model/KorDSMDependencies.h"
#include "operations/CurrentRows.h"
#include "pages/LabelField.h"
#include "pages/PartListEditor.h"
#include "pages/RecordButtons.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace {

// A field's control is known by the number of its column, counted from here.
constexpr int kFirstField = 6000;
constexpr int kFirstOwnField = 5900; // of the item's own record

constexpr int kFieldWidth = 360;
constexpr int kNumberWidth = 140;
constexpr int kLabelHeight = 180;

constexpr int kAllVariables = 0; // an object type that offers every variable

QWidget* makeControl(const Column& column) {
    if (column.isChosen()) {
        auto* combo = new KorComboBox;
        combo->setFixedWidth(kFieldWidth);
        return combo;
    }
    auto* edit = new KorLineEdit;
    edit->setFixedWidth(column.isText() ? kFieldWidth : kNumberWidth);
    return edit;
}

} // namespace

KorDSMPlainPage::KorDSMPlainPage(QWidget* parent, const PlainPageDescription& description)
    : KorDSMPage(parent, description.templateId, {}), m_description(description) {
    setTitle(Prompts::ups(description.titlePrompt));
    m_pageCode = description.code;
}

bool KorDSMPlainPage::OnInitDialog() {
    new QVBoxLayout(this);
    return KorDSMPage::OnInitDialog();
}

const TableSchema& KorDSMPlainPage::shownTable() const {
    const Column* via = itemTable().column(m_description.viaColumn);
    return via ? *findTable(via->target) : itemTable();
}

PageFields::Row KorDSMPlainPage::shownRow() const {
    const StructRecord* record = item()->record();
    const Column* via = itemTable().column(m_description.viaColumn);
    return {shownTable().type, KorOdbcKey(!record ? 0 : via ? via->integerIn(record) : record->key)};
}

const StructRecord* KorDSMPlainPage::shownRecord() const {
    const PageFields::Row row = shownRow();
    return CurrentRows::find(row.table, row.key);
}

// Only when first shown: most pages are never looked at. Items of one type can hold records of two tables.
void KorDSMPlainPage::build() {
    qDeleteAll(m_labels);
    delete m_own;
    delete m_fields;
    delete m_body;
    m_own = nullptr;
    m_labels.clear();
    m_parts.clear();
    m_records.clear();
    m_captions.clear();
    m_values.clear();
    m_table = &shownTable();
    m_body = new QWidget;
    layout()->addWidget(m_body);
    auto* lines = new QVBoxLayout(m_body);
    lines->setContentsMargins(0, 0, 0, 0);
    if (m_description.viaColumn == 0) {
        m_record = new QWidget;
        m_form = makeForm();
        m_form->setContentsMargins(0, 0, 0, 0);
    } else {
        m_form = makeForm();
        lines->addLayout(m_form);
        addOwnColumns();
        m_record = new QGroupBox(toQt(KorDSMValueText::tableCaption(*m_table)));
        m_form = makeForm();
    }
    m_record->setLayout(m_form);
    lines->addWidget(m_record);
    addColumns();
    for (const eTableType parts : KorDSMPartList::listedParts(m_table->type))
        lines->addWidget(m_parts.emplace_back(new PartListEditor(*this, parts)));
    lines->addStretch(1);
    m_body->show();
    requestInit();
}

PageFields* KorDSMPlainPage::makeFields(std::vector<PageField> fields, bool ofItem) {
    auto* made = ofItem ? new PageFields(*this, std::move(fields))
                        : new PageFields(*this, std::move(fields), [this] { return shownRow(); });
    made->connectControls();
    connect(made, &PageFields::refused, made, &PageFields::loadColumn);
    return made;
}

QFormLayout* KorDSMPlainPage::makeForm() const {
    auto* form = new QFormLayout;
    form->setHorizontalSpacing(24);
    form->setVerticalSpacing(8);
    return form;
}

std::vector<int> KorDSMPlainPage::columnsOfItem() const {
    std::vector<int> numbers = m_description.ownColumns;
    numbers.push_back(m_description.viaColumn);
    return numbers;
}

std::vector<const Column*> KorDSMPlainPage::columnsOfRecord() const {
    std::vector<const Column*> columns;
    const std::vector<int>& numbers = m_description.columns;
    for (const Column& column : shownTable().columns)
        if (numbers.empty() ? column.number != 1 : std::ranges::find(numbers, column.number) != numbers.end())
            columns.push_back(&column);
    return columns;
}

void KorDSMPlainPage::addOwnColumns() {
    std::vector<PageField> fields;
    for (const int number : columnsOfItem()) {
        addField(itemTable(), *itemTable().column(number), kFirstOwnField + number);
        fields.push_back({kFirstOwnField + number, number, {}, true, true});
    }
    m_own = makeFields(std::move(fields), true);
    connect(m_own, &PageFields::written, this, [this](int column) {
        for (RecordButtons* buttons : m_records)
            buttons->enable();
        if (column == m_description.viaColumn)
            loadData();
    });
}

void KorDSMPlainPage::addColumns() {
    const TableSchema& table = shownTable();
    std::vector<PageField> fields;
    const std::vector<int>& labels = m_description.labels;
    for (const Column* column : columnsOfRecord()) {
        const int control = kFirstField + column->number;
        if (std::ranges::find(labels, column->number) != labels.end()) {
            addLabel(table, *column, control);
        } else if (column->role != eReferenceRole::kUses) {
            addValue(table, *column);
        } else {
            addField(table, *column, control);
            fields.push_back({control, column->number, {}, true, true});
        }
    }
    m_fields = makeFields(std::move(fields), m_description.viaColumn == 0);
    connect(m_fields, &PageFields::written, this, &KorDSMPlainPage::onWritten);
}

void KorDSMPlainPage::addValue(const TableSchema& table, const Column& column) {
    auto* value = new QLabel;
    value->setTextFormat(Qt::PlainText);
    value->setWordWrap(true);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    value->setAccessibleName(toQt(KorDSMValueText::columnCaption(table, column)));
    m_form->addRow(value->accessibleName(), value);
    m_values.push_back({value, &table, &column});
}

void KorDSMPlainPage::addLabel(const TableSchema& table, const Column& column, int control) {
    auto* designer = new VELLabelDesignerCtrlWrap;
    KorControls::setId(designer, control);
    designer->setMinimumHeight(kLabelHeight);
    m_form->addRow(toQt(KorDSMValueText::columnCaption(table, column)), designer);
    m_labels.push_back(new LabelField(*this, *designer, column.number, kAllVariables));
}

void KorDSMPlainPage::addField(const TableSchema& table, const Column& column, int control) {
    const QString caption = toQt(KorDSMValueText::columnCaption(table, column));
    if (column.kind == eColumnKind::kFlag) {
        auto* box = new QCheckBox(caption);
        KorControls::setId(box, control);
        m_form->addRow(box);
        return;
    }
    QWidget* field = makeControl(column);
    KorControls::setId(field, control);
    field->setAccessibleName(caption);
    auto* label = new QLabel;
    label->setBuddy(field);
    m_form->addRow(label, RecordButtons::areFor(column) ? withButtons(field, table, column) : field);
    m_captions.push_back({label, &table, &column});
}

QWidget* KorDSMPlainPage::withButtons(QWidget* field, const TableSchema& table, const Column& column) {
    auto* both = new QWidget;
    auto* line = new QHBoxLayout(both);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(field);
    const bool isOwn = &table == &itemTable();
    m_records.push_back(new RecordButtons(*this, [this, isOwn, &column] {
        KorDSMRecordUse::Use use{{}, &column, {}};
        if (isOwn && item()->record())
            use.row = {item()->tableType(), item()->recordKey()};
        else if (!isOwn)
            use.row = {shownRow().table, static_cast<std::int32_t>(shownRow().key.getKey())};
        return use;
    }));
    line->addWidget(m_records.back());
    line->addStretch(1);
    return both;
}

void KorDSMPlainPage::OnShow(int show) {
    if (show != 0 && item() && m_table != &shownTable())
        build();
    KorDSMPage::OnShow(show);
    for (LabelField* label : m_labels)
        label->forgetEdits();
}

void KorDSMPlainPage::enableControls() {
    KorDSMPage::enableControls();
    for (LabelField* label : m_labels)
        label->enable();
    for (PartListEditor* list : m_parts)
        list->enable();
    for (RecordButtons* buttons : m_records)
        buttons->enable();
}

void KorDSMPlainPage::storePendingChanges(bool discard) {
    for (LabelField* label : m_labels)
        label->store(discard);
}

std::vector<ShownColumns> KorDSMPlainPage::shownColumns() const {
    const PageFields::Row row = shownRow();
    std::vector<ShownColumns> shown{{row.table, row.key, {}, partTablesOf(row.table)}};
    for (const Column* column : columnsOfRecord())
        shown.front().columns.push_back(column->number);
    if (m_description.viaColumn != 0)
        shown.push_back({item()->tableType(), KorOdbcKey(item()->recordKey()), columnsOfItem()});
    return shown;
}

bool KorDSMPlainPage::fillLists() {
    if (m_own)
        m_own->fillLists();
    m_fields->fillLists();
    return true;
}

bool KorDSMPlainPage::loadData() {
    for (const Caption& caption : m_captions)
        caption.label->setText(toQt(KorDSMValueText::captionWithUnit(*caption.table, *caption.column)));
    if (m_own)
        m_own->load();
    for (RecordButtons* buttons : m_records)
        buttons->enable();
    const StructRecord* record = shownRecord();
    m_record->setVisible(record);
    for (PartListEditor* list : m_parts)
        list->setVisible(record);
    if (!record)
        return false;
    for (const Caption& value : m_values) {
        const KorString text = KorDSMValueText::toText(*value.table, *value.column, *record);
        value.label->setText(text.isEmpty() ? QStringLiteral("–") : toQt(text));
    }
    m_fields->load();
    for (LabelField* label : m_labels)
        label->load();
    for (PartListEditor* list : m_parts)
        list->load({shownTable().type, record->key});
    return true;
}

// What a record refers to hangs below its entries, and is made anew there.
void KorDSMPlainPage::onWritten(int column) {
    for (RecordButtons* buttons : m_records)
        buttons->enable();
    if (m_description.viaColumn != 0 || !shownTable().column(column)->isReference() ||
        !KorDSMDependencies::canHaveDependents(item()->type()))
        return;
    for (KorDSMDatabaseItem* owner : item()->itemsOfRecord())
        owner->dropDependents();
}
