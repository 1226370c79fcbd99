#include "pages/PageFields.h"

#include "controls/KorComboBox.h"
#include "controls/KorControls.h"
#include "controls/KorFieldNote.h"
#include "controls/KorLineEdit.h"
#include "controls/KorQt.h"
#include "model/CurrentUnits.h"
#include "operations/CurrentRows.h"
#include "pages/KorDSMPage.h"
#include "pages/QualifierHints.h"
#include "pages/RecordNames.h"
#include "pages/ValuePictures.h"
#include "records/OwnWords.h"
#include "services/Prompts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMValueText.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QListView>
#include <QRadioButton>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

const StructRecord* recordOf(const PageFields::Row& row) {
    return CurrentRows::find(row.table, row.key);
}

KorString numberText(const Column& column, const CellValue& value) {
    const auto* real = std::get_if<double>(&value);
    const double number = real ? *real : static_cast<double>(std::get<std::int64_t>(value));
    return getUnitsOfCurrentDatabase().format(number, KorDSMValueText::unitKind(column));
}

KorString fieldText(const TableSchema& table, const Column& column, const CellValue& value) {
    if (const auto* text = std::get_if<KorString>(&value))
        return *text;
    const KorString special = KorDSMValueText::specialName(table, column, value);
    return special.isEmpty() ? numberText(column, value) : special;
}

// The list of a combo of references; null before it was filled.
RecordNames* namesIn(const QComboBox& combo) {
    return qobject_cast<RecordNames*>(combo.model());
}

// What comes of a typed value, at the end of its field.
void showSample(KorLineEdit& edit, const QIcon& sample) {
    constexpr const char* kSample = "valueSample";
    constexpr int kSampleName = 680;
    auto* shown = edit.findChild<QAction*>(QLatin1String(kSample), Qt::FindDirectChildrenOnly);
    if (!shown && sample.isNull())
        return;
    if (!shown) {
        shown = edit.addAction(sample, QLineEdit::TrailingPosition);
        shown->setObjectName(QLatin1String(kSample));
        shown->setText(toQt(Prompts::dsm(kSampleName)));
    }
    shown->setIcon(sample);
    shown->setVisible(!sample.isNull());
}

} // namespace

PageFields::PageFields(KorDSMPage& page, std::vector<PageField> fields, std::function<Row()> rowToEdit)
    : PagePart(&page), m_page(page), m_fields(std::move(fields)), m_rowToEdit(std::move(rowToEdit)) {}

PageFields::Row PageFields::row() const {
    if (m_rowToEdit)
        return m_rowToEdit();
    const auto* item = m_page.getData().as<KorDSMDatabaseItem>();
    return item && item->record() ? Row{item->tableType(), KorOdbcKey(item->recordKey())} : Row();
}

ShownColumns PageFields::shownColumns() const {
    const Row shown = row();
    ShownColumns columns{shown.table, shown.key, {}};
    for (const PageField& field : m_fields)
        columns.columns.push_back(field.column);
    return columns;
}

std::optional<FieldPlace> PageFields::placeOf(const QWidget& control) const {
    const int id = KorControls::id(&control);
    const auto field = std::ranges::find_if(m_fields, [id](const PageField& each) {
        return id != 0 && (each.control == id || std::ranges::any_of(each.radios, [id](const auto& radio) {
                               return radio.first == id;
                           }));
    });
    const Row shown = row();
    if (field == m_fields.end() || !recordOf(shown))
        return std::nullopt;
    FieldPlace place{{shown.table, shown.key.getKey()}, field->column};
    if (const auto* edit = qobject_cast<const KorLineEdit*>(&control); edit && edit->isEdited())
        place.typed = typedIn(*edit, *field);
    return place;
}

// What would be written; nothing where it would be refused.
std::optional<CellValue> PageFields::typedIn(const KorLineEdit& edit, const PageField& field) const {
    const Column& column = *columnOf(field);
    const KorString text = fromQt(edit.text());
    if (column.isText())
        return text;
    Column limited = column;
    limited.minimum = std::max(column.minimum, field.lowest);
    const auto parsed = KorDSMValueText::parse(*findTable(row().table), limited, text);
    return parsed ? std::optional(parsed.value) : std::nullopt;
}

QWidget* PageFields::bringUp(RowRef shown, int column) {
    const Row here = row();
    const auto field = std::ranges::find(m_fields, column, &PageField::column);
    if (field == m_fields.end() || here.table != shown.table || here.key.getKey() != shown.key)
        return nullptr;
    QWidget* control = KorControls::find(&m_page, field->control);
    for (const auto& [number, value] : field->radios)
        if (auto* radio = KorControls::find<QRadioButton>(&m_page, number);
            radio && (!control || radio->isChecked()))
            control = radio;
    return control;
}

const Column* PageFields::columnOf(const PageField& field) const {
    const TableSchema* table = findTable(row().table);
    return table ? table->column(field.column) : nullptr;
}

void PageFields::connectControls() {
    for (const PageField& field : m_fields)
        connectField(field);
}

void PageFields::connectField(const PageField& field) {
    for (const auto& [number, value] : field.radios)
        if (auto* radio = KorControls::find<QRadioButton>(&m_page, number)) {
            KorFieldNote::prepare(radio);
            connect(radio, &QRadioButton::clicked, this,
                    [this, &field, radio, value = value] { write(field, *radio, std::int64_t{value}); });
        }
    if (!field.radios.empty()) {
        std::vector<int> numbers;
        for (const auto& [number, value] : field.radios)
            numbers.push_back(number);
        KorControls::group(&m_page, numbers);
    }
    QWidget* control = KorControls::find(&m_page, field.control);
    if (control)
        KorFieldNote::prepare(control);
    if (auto* box = qobject_cast<QCheckBox*>(control)) {
        connect(box, &QCheckBox::clicked, this,
                [this, &field, box](bool checked) { write(field, *box, std::int64_t{checked}); });
    } else if (auto* combo = qobject_cast<QComboBox*>(control)) {
        connect(combo, &QComboBox::activated, this, [this, &field, combo] { onEntryChosen(field, *combo); });
    } else if (auto* edit = qobject_cast<KorLineEdit*>(control)) {
        connect(edit, &KorLineEdit::committed, this, [this, &field, edit] {
            onTextCommitted(field, *edit);
            m_page.notifyTyping(); // there may be nothing to apply any more
        });
        connect(edit, &KorLineEdit::textEdited, &m_page, &KorDSMPage::notifyTyping);
        connect(edit, &KorLineEdit::restored, this, [this, &field] {
            // What was declined before is shown no longer, so that nobody takes it for stored.
            if (const StructRecord* record = recordOf(row()))
                loadField(field, *record);
            m_page.notifyTyping();
        });
    }
}

void PageFields::fillLists() {
    const QScopedValueRollback loading(m_loading, true);
    for (const PageField& field : m_fields) {
        auto* combo = KorControls::find<QComboBox>(&m_page, field.control);
        const Column* column = columnOf(field);
        if (combo && column)
            fillCombo(field, *column, *combo);
        if (combo && column && column->target == kTableQualifierSet)
            QualifierHints::addTo(*combo);
    }
}

void PageFields::fillCombo(const PageField& field, const Column& column, QComboBox& combo,
                           std::int32_t chosen) {
    const TableSchema& table = *findTable(row().table);
    const QSize size = ValuePictures::sizeFor(table, column);
    if (!size.isEmpty())
        combo.setIconSize(size);
    if (!column.isReference()) {
        const std::vector<KorString> names = KorDSMValueText::valueNames(table, column);
        const std::vector<std::int32_t> values = KorDSMValueText::valuesOf(column);
        combo.clear();
        for (std::size_t i = 0; i < values.size(); ++i)
            combo.addItem(ValuePictures::of(table, column, std::int64_t{values[i]}), toQt(names[i]),
                          values[i]);
        return;
    }
    RecordNames* names = namesIn(combo);
    if (!names) {
        names = new RecordNames(&combo);
        combo.setModel(names);
        if (auto* list = qobject_cast<QListView*>(combo.view()))
            list->setUniformItemSizes(true);
        if (auto* box = qobject_cast<KorComboBox*>(&combo))
            connect(box, &KorComboBox::choosing, names, &RecordNames::putInOrder);
    }
    names->fill(*findTable(column.target), field.sorted, field.optional, !size.isEmpty(),
                [&](const StructRecord& each) {
                    return each.key == chosen || ValuePictures::isOffered(column.target, each);
                });
}

void PageFields::load() {
    const QScopedValueRollback loading(m_loading, true);
    if (const StructRecord* record = recordOf(row()))
        for (const PageField& field : m_fields)
            loadField(field, *record);
}

void PageFields::loadColumn(int column) {
    const QScopedValueRollback loading(m_loading, true);
    if (const StructRecord* record = recordOf(row()))
        for (const PageField& field : m_fields)
            if (field.column == column)
                loadField(field, *record);
}

void PageFields::loadField(const PageField& field, const StructRecord& record) {
    const Column* column = columnOf(field);
    if (!column)
        return;
    for (const auto& [number, value] : field.radios)
        if (auto* radio = KorControls::find<QRadioButton>(&m_page, number)) {
            KorControls::setChecked(radio, column->isInteger() && column->integerIn(&record) == value);
            KorFieldNote::show(radio, {});
        }
    QWidget* control = KorControls::find(&m_page, field.control);
    if (control)
        KorFieldNote::show(control, {});
    if (auto* box = qobject_cast<QCheckBox*>(control)) {
        box->setChecked(column->integerIn(&record) != 0);
    } else if (auto* combo = qobject_cast<QComboBox*>(control)) {
        loadCombo(field, *column, column->integerIn(&record), *combo);
    } else if (auto* edit = qobject_cast<KorLineEdit*>(control)) {
        const TableSchema& table = *findTable(row().table);
        edit->setText(toQt(fieldText(table, *column, column->read(&record))));
        showSample(*edit, ValuePictures::inField(table, *column, record));
    }
}

void PageFields::showPictures() {
    for (const PageField& field : m_fields)
        if (auto* combo = KorControls::find<QComboBox>(&m_page, field.control))
            if (RecordNames* names = namesIn(*combo))
                names->forgetPictures();
}

// Others than the one that was written can show what came of it.
void PageFields::showSamples() {
    const TableSchema& table = *findTable(row().table);
    const StructRecord* record = recordOf(row());
    for (const PageField& field : m_fields)
        if (auto* edit = KorControls::find<KorLineEdit>(&m_page, field.control); edit && record)
            showSample(*edit, ValuePictures::inField(table, *columnOf(field), *record));
}

void PageFields::loadCombo(const PageField& field, const Column& column, std::int32_t value,
                           QComboBox& combo) {
    if (!column.isReference()) {
        combo.setCurrentIndex(combo.findData(value));
        // A value without a name is shown all the same.
        combo.setPlaceholderText(toQt(value == 0 ? KorDSMValueText::nothing() : KorString::number(value)));
        return;
    }
    RecordNames* names = namesIn(combo);
    if (!names)
        return;
    const StructRecord* target = CurrentRows::find(column.target, KorOdbcKey(value));
    if (target && names->entryOf(value) < 0) // it is newer than the list, or not offered
        fillCombo(field, column, combo, value);
    int index = field.optional && value <= 0 ? 0 : target ? names->entryOf(value) : -1;
    const QString name = target ? toQt(OwnWords::nameOf(column.target, *target)) : QString();
    if (target && (index < 0 || combo.itemText(index) != name))
        index = combo.findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
    combo.setCurrentIndex(index);
}

void PageFields::onEntryChosen(const PageField& field, QComboBox& combo) {
    const Column* column = columnOf(field);
    if (!column)
        return;
    if (!column->isReference())
        return write(field, combo, std::int64_t{combo.currentData().toInt()});
    if (field.optional && combo.currentIndex() == 0)
        return write(field, combo, std::int64_t{0});
    // Of rows of one name the entry's own is meant; entries that were added by name have none.
    const KorString name = fromQt(combo.currentText());
    const StructRecord* target = CurrentRows::find(column->target, KorOdbcKey(combo.currentData().toInt()));
    if (!target || OwnWords::nameOf(column->target, *target) != name)
        target = CurrentRows::find(column->target, name);
    if (target)
        write(field, combo, std::int64_t{target->key});
}

void PageFields::onTextCommitted(const PageField& field, KorLineEdit& edit) {
    const Column* column = columnOf(field);
    const StructRecord* record = recordOf(row());
    if (m_loading || !column || !record)
        return;
    const KorString text = fromQt(edit.text());
    if (column->isText())
        return write(field, edit, text);
    const TableSchema& table = *findTable(row().table);
    const auto isShown = [&](const CellValue& value) {
        return fieldText(table, *column, value) == fieldText(table, *column, column->read(record));
    };
    if (text == fieldText(table, *column, column->read(record)))
        return m_page.markStored(&edit, true);
    Column limited = *column;
    limited.minimum = std::max(column->minimum, field.lowest);
    const auto parsed = KorDSMValueText::parse(table, limited, text);
    if (!parsed) {
        // It stays to be corrected.
        edit.refuse();
        KorFieldNote::show(&edit, toQt(parsed.note));
        return;
    }
    if (!isShown(parsed.value))
        write(field, edit, parsed.value);
    record = recordOf(row());
    if (record && isShown(parsed.value))
        loadField(field, *record);
}

void PageFields::write(const PageField& field, QWidget& control, const CellValue& value) {
    const Column* column = columnOf(field);
    const StructRecord* record = recordOf(row());
    if (m_loading || !column || !record)
        return;
    // A click on what is stored already is no change, and nobody is asked about it.
    if (column->read(record) == value)
        return m_page.markStored(&control, true);
    WriteResult result;
    if (m_rowToEdit) {
        const Row edited = row();
        result = KorDSMGuardedWrite::setAttributeValue(edited.table, edited.key, field.column, value);
    } else {
        result = m_page.writeField(field.column, value);
    }
    const bool stored = result.isStored();
    m_page.markStored(&control, stored);
    if (stored) {
        showSamples();
        // What is edited here can be what another field of the page chooses.
        for (PageFields* fields : m_page.findChildren<PageFields*>(Qt::FindDirectChildrenOnly))
            fields->showPictures();
    }
    if (stored)
        Q_EMIT written(field.column);
    else
        Q_EMIT refused(field.column);
}
