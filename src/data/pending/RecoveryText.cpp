#include "data/pending/RecoveryText.h"

#include "data/text/TextFields.h"

#include <algorithm>
#include <optional>

namespace RecoveryText {

namespace {

constexpr std::string_view kHead = "detailstyles-recovery";
constexpr std::string_view kVersion = "1";
constexpr std::string_view kSource = "source";
constexpr std::string_view kCell = "cell";
constexpr std::string_view kAppend = "append";
constexpr std::string_view kDelete = "delete";
constexpr std::string_view kForget = "forget";
constexpr std::string_view kStoring = "storing";
constexpr std::string_view kBegin = "begin";
constexpr std::string_view kNext = "next";
constexpr std::string_view kEnd = "end";
constexpr std::string_view kTaken = "taken";
constexpr std::string_view kUndo = "undo";

std::string line(std::initializer_list<std::string_view> fields) {
    std::string text;
    for (const std::string_view field : fields)
        text.append(text.empty() ? "" : "\t").append(field);
    return text + "\n";
}

std::string valueText(const CellValue& value) {
    if (const auto* text = std::get_if<KorString>(&value))
        return TextFields::escaped(text->view());
    if (const auto* real = std::get_if<double>(&value))
        return TextFields::number(*real);
    return std::to_string(std::get<std::int64_t>(value));
}

template <typename Number>
std::optional<CellValue> cellOf(const std::optional<Number>& value) {
    return value ? std::optional<CellValue>(*value) : std::nullopt;
}

std::optional<CellValue> valueOf(const Column& column, std::string_view field) {
    std::optional<CellValue> value;
    if (column.isReal())
        value = cellOf(TextFields::toReal(field));
    else if (column.isInteger())
        value = cellOf(TextFields::toInteger(field));
    else if (const auto text = TextFields::unescaped(field))
        value = KorString(*text);
    return value && column.canHold(*value) ? value : std::nullopt;
}

bool isInRange(const Column& column, const CellValue& value) {
    const auto* whole = std::get_if<std::int64_t>(&value);
    const auto* real = std::get_if<double>(&value);
    return whole ? column.isInRange(static_cast<double>(*whole)) : !real || column.isInRange(*real);
}

using Fields = std::vector<std::string_view>;

Fields fieldsOf(std::string_view text, char separator) {
    Fields fields;
    for (auto at = text.find(separator); at != std::string_view::npos; at = text.find(separator)) {
        fields.push_back(text.substr(0, at));
        text.remove_prefix(at + 1);
    }
    fields.push_back(text);
    return fields;
}

// FNV-1a.
Seal sealOf(std::string_view line, Seal before) {
    for (const char letter : line)
        before = (before ^ static_cast<unsigned char>(letter)) * 0x01000193U;
    return before;
}

// The line that was sealed after those before it; empty when it is another one. Takes it into the seal.
std::string_view withoutSeal(std::string_view line, Seal& seal) {
    const auto tab = line.rfind('\t');
    if (tab == std::string_view::npos)
        return {};
    seal = sealOf(line.substr(0, tab), seal);
    return line.substr(tab + 1) == std::to_string(seal) ? line.substr(0, tab) : std::string_view();
}

/// Makes what the lines say in a log of its own.
class Parser {
public:
    explicit Parser(const SourceNames& idOf) : m_idOf(idOf) {}

    /// False when the line says nothing that can be understood.
    bool take(std::string_view text) {
        const Fields fields = fieldsOf(text, '\t');
        if (!m_inGroup)
            m_storing = {};
        if (fields[0] == kBegin && fields.size() == 2 && !m_inGroup)
            return begin(fields[1]);
        if (fields[0] == kNext && fields.size() == 2 && m_inGroup)
            return takeNext(fields[1]);
        if (fields[0] == kTaken && fields.size() == 4)
            return takeTaken(fields);
        if (fields[0] == kEnd && fields.size() == 1 && m_inGroup)
            return end();
        if (fields[0] == kUndo && fields.size() == 1 && !m_inGroup)
            return !m_log->takeUndo().empty();
        if (fields[0] == kSource && fields.size() == 4)
            return takeSource(fields);
        return fields.size() >= 4 && takeTableLine(fields);
    }

    bool inGroup() const { return m_inGroup; }
    std::unique_ptr<PendingLog> takeLog() { return std::move(m_log); }
    Storing takeStoring() { return std::move(m_storing); }
    std::vector<TakenOver> takeTakenOver() { return std::move(m_takenOver); }

private:
    bool begin(std::string_view label) {
        const auto text = TextFields::unescaped(label);
        m_label = KorString(text.value_or(""));
        m_inGroup = true;
        return text.has_value();
    }

    bool end() {
        m_inGroup = false;
        m_log->beginGroup(m_label);
        for (const auto& each : m_group)
            each();
        m_log->endGroup();
        m_group.clear();
        return true;
    }

    bool takeNext(std::string_view label) {
        const auto text = TextFields::unescaped(label);
        act([this, named = KorString(text.value_or(""))] {
            m_log->endGroup();
            m_log->beginGroup(named);
        });
        return text.has_value();
    }

    bool takeTaken(const Fields& fields) {
        const auto file = TextFields::unescaped(fields[1]);
        const auto seal = TextFields::toInteger(fields[2]);
        const auto database = TextFields::unescaped(fields[3]);
        if (!file || !seal || !database)
            return false;
        act([this, other = TakenOver{*file, static_cast<Seal>(*seal), *database}] {
            m_takenOver.push_back(other);
        });
        return true;
    }

    bool takeSource(const Fields& fields) {
        const auto number = TextFields::toInteger(fields[1]);
        const auto path = TextFields::unescaped(fields[3]);
        return number && path &&
               m_sources.emplace(*number, m_idOf({static_cast<int>(*number), std::string(fields[2]), *path}))
                   .second;
    }

    // Kind of line, source, table, key or nothing, what was done.
    bool takeTableLine(const Fields& fields) {
        const auto number = TextFields::toInteger(fields[1]);
        const auto source = m_sources.find(number.value_or(0));
        const TableSchema* table = findTable(fields[2]);
        if (!number || source == m_sources.end() || !table)
            return false;
        if (fields[0] == kForget) {
            act([this, id = source->second, type = table->type] { m_log->forget(id, type); });
            return fields[3].empty() && fields.size() == 4;
        }
        if (fields[0] == kStoring) {
            const auto mark = fields[3].empty() ? 0 : TextFields::toInteger(fields[3]);
            act([this, id = source->second, type = table->type, number = mark.value_or(0)] {
                m_storing.places.emplace_back(id, type);
                m_storing.mark = static_cast<std::uint32_t>(number);
            });
            return mark && fields.size() == 4;
        }
        PendingStep step;
        step.source = source->second;
        step.table = table->type;
        const std::optional<CellValue> key = cellOf(TextFields::toInteger(fields[3]));
        step.key = key ? static_cast<std::int32_t>(std::get<std::int64_t>(*key)) : 0;
        const bool isRow = fields[0] == kAppend || fields[0] == kDelete;
        if (step.key <= 0 || std::to_string(step.key) != fields[3] ||
            !(isRow ? takeRow(*table, fields, step) : takeCell(*table, fields, step)))
            return false;
        act([this, step] {
            if (isNameAlone(step))
                m_log->noteName(step.source, {step.table, step.key}, std::get<KorString>(step.after));
            else
                m_log->record(step);
        });
        return true;
    }

    // A name that stays as it is is told for those who refer to the row.
    static bool isNameAlone(const PendingStep& step) {
        return step.column && step.column->number == 1 && step.before == step.after &&
               std::holds_alternative<KorString>(step.after);
    }

    static bool takeCell(const TableSchema& table, const Fields& fields, PendingStep& step) {
        step.column = fields[0] == kCell && fields.size() == 7 ? table.column(fields[4]) : nullptr;
        const auto before = step.column ? valueOf(*step.column, fields[5]) : std::nullopt;
        const auto after = step.column ? valueOf(*step.column, fields[6]) : std::nullopt;
        if (!before || !after || !isInRange(*step.column, *after))
            return false;
        step.before = *before;
        step.after = *after;
        return true;
    }

    static bool takeRow(const TableSchema& table, const Fields& fields, PendingStep& step) {
        step.action = fields[0] == kAppend ? PendingStep::eAction::kAppend : PendingStep::eAction::kDelete;
        step.record = table.makeRows()->copyOf(nullptr);
        step.record->key = step.key;
        return std::all_of(fields.begin() + 4, fields.end(), [&](std::string_view field) {
            const auto equals = field.find('=');
            const Column* column = equals == field.npos ? nullptr : table.column(field.substr(0, equals));
            const auto value = column ? valueOf(*column, field.substr(equals + 1)) : std::nullopt;
            return value && column->write(step.record.get(), *value);
        });
    }

    void act(std::function<void()> action) {
        if (m_inGroup)
            m_group.push_back(std::move(action));
        else
            action();
    }

    const SourceNames& m_idOf;
    std::unique_ptr<PendingLog> m_log = std::make_unique<PendingLog>();
    std::map<std::int64_t, SourceId> m_sources;
    Storing m_storing;
    std::vector<TakenOver> m_takenOver;
    bool m_inGroup = false;
    KorString m_label;
    std::vector<std::function<void()>> m_group; // what the open group says, done when it ends
};

} // namespace

std::string sealed(std::string_view lines, Seal& seal) {
    std::string text;
    for (auto at = lines.find('\n'); at != std::string_view::npos; at = lines.find('\n')) {
        seal = sealOf(lines.substr(0, at), seal);
        text.append(lines.substr(0, at)).append("\t").append(std::to_string(seal)).append("\n");
        lines.remove_prefix(at + 1);
    }
    return text;
}

std::string head() {
    return line({kHead, kVersion});
}

std::string source(const RecoverySource& source) {
    return line({kSource, std::to_string(source.number), source.stamp, TextFields::escaped(source.path)});
}

std::string step(int sourceNumber, const PendingStep& step) {
    const TableSchema& table = *findTable(step.table);
    const std::string number = std::to_string(sourceNumber);
    const std::string key = std::to_string(step.key);
    if (step.action == PendingStep::eAction::kCell)
        return line({kCell, number, table.name, key, step.column->name, valueText(step.before),
                     valueText(step.after)});
    const std::string_view kind = step.action == PendingStep::eAction::kAppend ? kAppend : kDelete;
    std::string text = line({kind, number, table.name, key});
    text.pop_back();
    for (const Column& column : table.columns)
        text.append("\t").append(column.name).append("=").append(valueText(column.read(step.record.get())));
    return text + "\n";
}

std::string forgotten(int sourceNumber, eTableType table) {
    return line({kForget, std::to_string(sourceNumber), findTable(table)->name, ""});
}

std::string storing(int sourceNumber, eTableType table, std::uint32_t mark) {
    return line({kStoring, std::to_string(sourceNumber), findTable(table)->name,
                 mark ? std::to_string(mark) : std::string()});
}

std::string takenOver(const TakenOver& other) {
    return line({kTaken, TextFields::escaped(other.file), std::to_string(other.seal),
                 TextFields::escaped(other.database)});
}

std::string begin(const KorString& label) {
    return line({kBegin, TextFields::escaped(label.view())});
}

std::string next(const KorString& label) {
    return line({kNext, TextFields::escaped(label.view())});
}

std::string end() {
    return line({kEnd});
}

std::string undo() {
    return line({kUndo});
}

namespace {

// What breaks off is no loss where it only says what became of the file. Groups of such lines have no label.
bool beginsAChange(std::string_view rest) {
    const auto tab = rest.find('\t');
    const std::string_view kind = rest.substr(0, tab);
    if (kind == kBegin && tab != rest.npos)
        return tab + 1 < rest.size() && rest[tab + 1] != '\t';
    constexpr std::string_view kChanges[] = {kCell, kAppend, kDelete, kUndo};
    return !kind.empty() &&
           std::ranges::any_of(kChanges, [kind](std::string_view each) { return each.starts_with(kind); });
}

} // namespace

Parsed parse(std::string_view text, const SourceNames& idOf) {
    Parser parser(idOf);
    Parsed parsed;
    Seal seal = kNoSeal;
    const std::string expected = sealed(head(), seal);
    if (!text.starts_with(std::string_view(expected).substr(0, text.size())))
        return {};
    for (std::size_t at = expected.size(), end = 0; at <= text.size(); at = end + 1) {
        if (!parser.inGroup()) {
            parsed.size = at;
            parsed.seal = seal;
        }
        end = text.find('\n', at);
        if (end == std::string_view::npos)
            break;
        const std::string_view line = withoutSeal(text.substr(at, end - at), seal);
        if (line.empty() || !parser.take(line))
            return {};
    }
    parsed.isCutOff = beginsAChange(text.substr(parsed.size));
    parsed.changes = parser.takeLog();
    parsed.storing = parser.takeStoring();
    parsed.takenOver = parser.takeTakenOver();
    return parsed;
}

} // namespace RecoveryText
