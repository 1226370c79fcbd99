#include "pages/FormBody.h"

#include "controls/KorComboBox.h"
#include "controls/KorControls.h"
#include "controls/KorFoldingColumns.h"
#include "controls/KorLineEdit.h"
#include "controls/KorMnemonics.h"
#include "controls/KorQt.h"
#include "controls/label/VELLabelDesignerCtrlWrap.h"
#include "model/KorDSMDependencies.h"
#include "model/KorDSMFamilies.h"
#include "operations/CurrentRows.h"
#include "pages/KorDSMPage.h"
#include "pages/PictureChoice.h"
#include "pages/RecordButtons.h"
#include "pages/WordOffer.h"
#include "services/Prompts.h"
#include "session/KorDSMQualifierWords.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMValueText.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>

#include <algorithm>

namespace {

constexpr int kOthers = 100; // the first control of other records stands so far behind the first one
constexpr int kLeastWidth = 120;
constexpr int kNumberWidth = 120;
constexpr int kMostLetters = 26; // of a caption on one line
constexpr int kLabelHeight = 110;
constexpr int kAllVariables = 0; // an object type that offers every variable

QVBoxLayout* makeColumn() {
    auto* column = new QVBoxLayout;
    column->setSpacing(8);
    return column;
}

} // namespace

FormBody::FormBody(KorDSMPage& page, const std::vector<FormGroup>& groups, eTableType table, int firstControl,
                   FindPart part)
    : m_page(page), m_table(table), m_part(std::move(part)), m_nextOwn(firstControl),
      m_nextOther(firstControl + kOthers), m_columns(new KorFoldingColumns), m_left(makeColumn()),
      m_right(makeColumn()), m_below(makeColumn()) {
    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(8);
    m_columns->setSpacing(12);
    m_columns->addLayout(m_left, 1);
    lines->addLayout(m_columns);
    lines->addLayout(m_below);
    bool isWide = false;
    bool isTall = false;
    for (const FormGroup& group : groups) {
        if (group.of != kNoTable && group.of != table)
            continue;
        isWide = isWide || group.side == eFormSide::kRight;
        isTall = isTall || group.fields.front().isLabel;
        addFrame(group, group.side == eFormSide::kLeft    ? *m_left
                        : group.side == eFormSide::kRight ? *m_right
                                                          : *m_below);
    }
    m_left->addStretch(1);
    m_right->addStretch(1);
    lines->setStretchFactor(m_below, isTall);
    if (!isTall)
        lines->addStretch(1);
    // Fields keep to their half where nothing stands in the other one.
    if (isWide)
        m_columns->addLayout(m_right, 1);
    else
        m_columns->addStretch(1);
}

FormBody::~FormBody() {
    // They are the page's, which may be going and have deleted them.
    for (const QPointer<LabelField>& label : m_labels)
        delete label.data();
    for (const Section& section : m_sections)
        delete section.fields.data();
}

RowRef FormBody::rowOf(const Origin& origin) const {
    const auto* item = m_page.getData().as<KorDSMDatabaseItem>();
    if (!item || !item->record())
        return {startOf(origin.part), 0};
    const RowRef start =
        origin.part == kNoTable ? RowRef{item->tableType(), item->recordKey()} : m_part(origin.part);
    return RowPaths::rowAt(start, origin.path);
}

std::size_t FormBody::sectionFor(const Origin& origin) {
    const auto known = std::ranges::find(m_sections, origin, &Section::origin);
    if (known != m_sections.end())
        return static_cast<std::size_t>(known - m_sections.begin());
    Section& section = m_sections.emplace_back();
    section.origin = origin;
    section.table = findTable(RowPaths::tableAt(startOf(origin.part), origin.path));
    return m_sections.size() - 1;
}

QString FormBody::captionOf(const FormGroup& group) const {
    const TableSchema& table =
        *findTable(group.named != kNoTable ? group.named : RowPaths::tableAt(startOf(group.part), group.via));
    const FormField& first = group.fields.front();
    return toQt(group.caption != 0 ? Prompts::dsm(group.caption)
                : first.isLabel    ? KorDSMValueText::columnCaption(table, *table.column(first.column))
                                   : KorDSMValueText::tableCaption(table));
}

void FormBody::addPictures(const FormGroup& group, QVBoxLayout& column) {
    Section& section = m_sections[sectionFor({group.part, group.via})];
    const int number = group.fields.front().column;
    auto* choice = new PictureChoice(*section.table, *section.table->column(number), m_nextOther);
    m_nextOther += static_cast<int>(choice->radios().size());
    section.declared.push_back({.column = number, .radios = choice->radios()});
    column.addWidget(choice);
    m_frames.push_back({choice, &group});
}

void FormBody::addFrame(const FormGroup& group, QVBoxLayout& column) {
    if (group.fields.front().isPictured)
        return addPictures(group, column);
    auto* box = new QGroupBox(captionOf(group));
    auto* lines = new QVBoxLayout(box);
    lines->setContentsMargins(9, 9, 9, 9);
    lines->setSpacing(6);
    column.addWidget(box);
    m_frames.push_back({box, &group});
    for (const FormField& field : group.fields)
        addLine(group, field, *box);
}

// The toolkit's forms lose fields where captions stand above them and some rows are not shown.
QWidget* FormBody::makeRow(const Line& line, QWidget& shown) {
    auto* row = new QWidget;
    auto* columns = new KorFoldingColumns(row);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(12);
    columns->setFoldedSpacing(2);
    if (line.caption)
        columns->addWidget(line.caption);
    const bool isShort = shown.maximumWidth() < QWIDGETSIZE_MAX;
    columns->addWidget(&shown, 1, isShort ? Qt::AlignLeft : Qt::Alignment());
    return row;
}

void FormBody::addLine(const FormGroup& group, const FormField& field, QGroupBox& box) {
    Origin origin{group.part, group.via};
    origin.path.insert(origin.path.end(), field.via.begin(), field.via.end());
    Line line;
    line.field = &field;
    line.section = sectionFor(origin);
    line.box = &box;
    const TableSchema& table = *m_sections[line.section].table;
    line.column = table.column(field.column);
    line.control = makeControl(line);
    const int number = origin.isOwn() ? m_nextOwn + field.column : m_nextOther++;
    KorControls::setId(line.control, number);
    const QString caption = toQt(KorDSMValueText::columnCaption(table, *line.column));
    if (auto* tick = qobject_cast<QCheckBox*>(line.control)) {
        tick->setText(caption);
    } else {
        line.control->setAccessibleName(caption);
        if (!field.isLabel) { // which fills its frame, under the caption of that
            line.caption = new QLabel;
            line.caption->setBuddy(line.control);
        }
    }
    QWidget* shown = RecordButtons::areFor(*line.column) ? withButtons(line) : line.control;
    line.row = makeRow(line, *shown);
    static_cast<QVBoxLayout*>(box.layout())->addWidget(line.row, field.isLabel);
    if (auto* designer = qobject_cast<VELLabelDesignerCtrlWrap*>(line.control))
        m_labels.push_back(new LabelField(m_page, *designer, field.column, kAllVariables));
    else
        m_sections[line.section].declared.push_back({number, field.column, {}, true, true});
    m_lines.push_back(line);
}

QWidget* FormBody::makeControl(const Line& line) {
    const Column& column = *line.column;
    if (line.field->isLabel) {
        auto* designer = new VELLabelDesignerCtrlWrap;
        designer->setMinimumHeight(kLabelHeight);
        return designer;
    }
    if (column.kind == eColumnKind::kFlag)
        return new QCheckBox;
    if (column.isChosen()) {
        auto* combo = new KorComboBox;
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setMinimumWidth(kLeastWidth);
        combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        return combo;
    }
    auto* edit = new KorLineEdit;
    edit->setMinimumWidth(kLeastWidth);
    if (!column.isText())
        edit->setMaximumWidth(kNumberWidth);
    if (m_sections[line.section].table->type == kTableQualifier && column.name == "property")
        new WordOffer(*edit, &KorDSMQualifierWords::properties); // the field owns it
    return edit;
}

QWidget* FormBody::withButtons(const Line& line) {
    auto* both = new QWidget;
    auto* row = new QHBoxLayout(both);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(line.control, 1);
    m_records.push_back(new RecordButtons(
        m_page,
        [this, origin = m_sections[line.section].origin, column = line.column] {
            return KorDSMRecordUse::Use{rowOf(origin), column, {}};
        },
        RecordButtons::offerFor(*line.column)));
    row->addWidget(m_records.back());
    row->addStretch(0);
    return both;
}

void FormBody::connectControls() {
    for (std::size_t i = 0; i < m_sections.size(); ++i) {
        Section& section = m_sections[i];
        std::function<PageFields::Row()> row;
        if (!section.origin.isOwn())
            row = [this, origin = section.origin] {
                const RowRef found = rowOf(origin);
                return PageFields::Row{found.table, KorOdbcKey(found.key)};
            };
        section.fields = new PageFields(m_page, section.declared, row);
        section.fields->connectControls();
        connect(section.fields, &PageFields::refused, section.fields, &PageFields::loadColumn);
        connect(section.fields, &PageFields::written, this, [this, i](int column) { onWritten(i, column); });
    }
}

void FormBody::fillLists() {
    for (const Section& section : m_sections)
        section.fields->fillLists();
}

void FormBody::load() {
    for (const Line& line : m_lines)
        if (line.caption)
            KorMnemonics::setText(*line.caption, toQt(KorDSMValueText::captionWithUnit(
                                                     *m_sections[line.section].table, *line.column)));
    for (const Section& section : m_sections)
        section.fields->load();
    for (const QPointer<LabelField>& label : m_labels)
        label->load();
    const bool isShownAnew = updateShown();
    alignCaptions();
    if (isShownAnew) {
        KorControls::nameByLabels(this);
        KorMnemonics::give(m_page);
    }
    updateLive();
}

void FormBody::enable() {
    for (const QPointer<LabelField>& label : m_labels)
        label->enable();
    updateLive();
}

void FormBody::store(bool discard) {
    for (const QPointer<LabelField>& label : m_labels)
        label->store(discard);
}

void FormBody::forgetEdits() {
    for (const QPointer<LabelField>& label : m_labels)
        label->forgetEdits();
}

bool FormBody::updateShown() {
    bool isChanged = false;
    for (const Frame& frame : m_frames) {
        const Origin origin{frame.group->part, frame.group->via};
        bool isShown = frame.group->fields.front().isPictured && rowOf(origin).key != 0;
        for (const Line& line : m_lines) {
            if (line.box != frame.box)
                continue;
            const bool exists = rowOf(m_sections[line.section].origin).key != 0;
            isChanged = isChanged || line.row->isHidden() == exists;
            line.row->setVisible(exists);
            isShown = isShown || exists;
        }
        isChanged = isChanged || frame.box->isHidden() == isShown;
        frame.box->setVisible(isShown);
    }
    return isChanged;
}

namespace {

// What a caption needs on one line, and what its longest word needs.
std::pair<int, int> widthsOf(const QLabel& caption) {
    const auto widthOf = [&caption](const QString& text) {
        return caption.fontMetrics().size(Qt::TextShowMnemonic, text).width() + 2 * caption.margin();
    };
    int word = 0;
    for (const QString& each : caption.text().split(u' '))
        word = std::max(word, widthOf(each));
    return {widthOf(caption.text()), word};
}

} // namespace

// The fields of frames that stand below each other do so too. Long captions leave room to the fields.
void FormBody::alignCaptions() {
    QStringList captions;
    for (const Line& line : m_lines)
        captions << (line.caption ? line.caption->text() : QString());
    if (captions == m_aligned && font() == m_alignedFont)
        return;
    m_aligned = captions;
    m_alignedFont = font();
    const int most = kMostLetters * fontMetrics().averageCharWidth();
    for (const eFormSide side : {eFormSide::kLeft, eFormSide::kRight}) {
        const auto isHere = [&](const Line& line) {
            return line.caption && std::ranges::any_of(m_frames, [&](const Frame& frame) {
                       return frame.group->side == side && frame.box == line.box;
                   });
        };
        int width = 0;
        for (const Line& line : m_lines)
            if (isHere(line)) {
                const auto [whole, word] = widthsOf(*line.caption);
                width = std::max({width, std::min(whole, most), word});
            }
        for (const Line& line : m_lines)
            if (isHere(line)) {
                const bool wraps = widthsOf(*line.caption).first > width;
                line.caption->setWordWrap(wraps);
                line.caption->setMinimumWidth(width);
                // The layout gives a caption above its field no more height than one line.
                line.caption->setMaximumWidth(wraps ? width : QWIDGETSIZE_MAX);
                line.caption->setMinimumHeight(wraps ? line.caption->heightForWidth(width) : 0);
            }
    }
}

bool FormBody::isLive(const Line& line) const {
    const FormCondition& live = line.field->live;
    const RowRef row = RowPaths::rowAt(rowOf(m_sections[line.section].origin), live.via);
    const StructRecord* record = CurrentRows::find(row.table, KorOdbcKey(row.key));
    if (live.column == 0)
        return true;
    if (!record) { // what is chosen nowhere is none of the values, where there is something to choose it for
        const RowRef own = rowOf(m_sections[line.section].origin);
        return live.isNoneOf && CurrentRows::find(own.table, KorOdbcKey(own.key));
    }
    const std::int32_t value = findTable(row.table)->column(live.column)->integerIn(record);
    return (std::ranges::find(live.values, value) != live.values.end()) != live.isNoneOf;
}

void FormBody::updateLive() {
    for (RecordButtons* buttons : m_records)
        buttons->enable();
    for (const Line& line : m_lines) {
        if (line.field->live.column == 0)
            continue;
        const bool live = isLive(line);
        if (live)
            KorControls::setEditable(line.control, m_page.isEditable());
        else
            line.control->setEnabled(false);
        if (line.caption)
            line.caption->setEnabled(live);
    }
}

void FormBody::onWritten(std::size_t index, int number) {
    const Section& section = m_sections[index];
    const Column& column = *section.table->column(number);
    const auto sameTable = std::ranges::count(m_sections, section.table, &Section::table);
    if (column.isReference() || sameTable > 1)
        load();
    updateLive();
    for (const QPointer<LabelField>& label : m_labels)
        label->showDefaults();
    // What a record refers to hangs below its entries, and is made anew there.
    auto* item = m_page.getData().as<KorDSMDatabaseItem>();
    if (section.origin.isOwn() && column.isReference() && KorDSMDependencies::canHaveDependents(item->type()))
        for (KorDSMDatabaseItem* owner : item->itemsOfRecord())
            owner->dropDependents();
    const KorDSMFamily* family = KorDSMFamilies::of(section.table->type);
    const bool decidesPages = std::ranges::any_of(m_lines, [&](const Line& line) {
        return line.section == index && line.column == &column && line.field->decidesPages;
    });
    const bool isFiling = column.role == eReferenceRole::kFiledUnder;
    if (section.origin.isOwn())
        Q_EMIT written(number);
    if (isFiling || decidesPages || (!section.origin.isOwn() && family && family->make)) {
        DsmRowsChanged message;
        message.changes = KorDSMUndo::changesSince(KorDSMUndo::stepCount() - 1);
        KorDSMMainWindow::sendMessage(message);
    }
}
