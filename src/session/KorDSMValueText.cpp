#include "session/KorDSMValueText.h"

#include "data/StyleDatabases.h"
#include "model/CurrentUnits.h"
#include "records/OwnWords.h"
#include "services/Prompts.h"
#include "session/KorDSMColorNames.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <numeric>

namespace KorDSMValueText {

namespace {

constexpr int kYes = 301;
constexpr int kNo = 302;
constexpr int kNothing = 303;
constexpr int kNoSuchRow = 304;  // "%s": there is no %s named "%s"
constexpr int kNotInRange = 305; // "%s": must lie between %s and %s
constexpr int kNotANumber = 306; // "%s": "%s" is no number
constexpr int kNotYesOrNo = 307; // "%s": "%s" is neither yes nor no
constexpr int kNotBelow = 308;   // "%s": must not be below %s
constexpr int kNotAWord = 484;   // "%s": "%s" is none of its values, which are %s
constexpr int kNoRatio = 485;    // "%s": write 1:%s or %s:1
constexpr int kNotAbove = 455;   // "%s": must not be above %s
constexpr int kNoteNotANumber = 451;
constexpr int kNoteNotBelow = 452; // %s
constexpr int kNoteNotAbove = 453; // %s
constexpr int kNoteNotWhole = 456;

// The English name from the schema, unless the language has a text of its own for it.
KorString named(const char* category, int number, std::string english) {
    if (Prompts::has(category, number))
        return Prompts::getPrompt(category, number);
    std::ranges::replace(english, '_', ' ');
    if (!english.empty())
        english.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(english.front())));
    return KorString(english);
}

// Those below 0 are counted from the end of the column's hundred.
KorString nameOf(const TableSchema& table, const Column& column, const NamedValue& value) {
    const int place = value.value < 0 ? 100 + value.value : value.value;
    return named("VAL", table.type * 10000 + column.number * 100 + place, value.name);
}

KorString nameIn(const std::vector<NamedValue>& names, const TableSchema& table, const Column& column,
                 double value) {
    const auto found =
        std::ranges::find_if(names, [&](const NamedValue& each) { return each.value == value; });
    return found == names.end() ? KorString() : nameOf(table, column, *found);
}

KorString valueName(const TableSchema& table, const Column& column, std::int64_t value) {
    if (column.isColor)
        return KorDSMColorNames::text(value);
    const KorString name = nameIn(column.valueNames, table, column, static_cast<double>(value));
    return name.isEmpty() ? KorString::number(value) : name;
}

double numberIn(const CellValue& value) {
    const auto* real = std::get_if<double>(&value);
    return real ? *real : static_cast<double>(std::get<std::int64_t>(value));
}

KorString referenceText(const Column& column, std::int64_t key) {
    if (key <= 0)
        return Prompts::dsm(kNothing);
    StyleSource* source = StyleDatabases::current().here();
    const StructRecord* row =
        source ? source->table(column.target).find(KorOdbcKey(static_cast<std::int32_t>(key))) : nullptr;
    return row && !row->name.isEmpty() ? OwnWords::nameOf(column.target, *row)
                                       : KorString::format("[%s]", {KorString::number(key)});
}

// The symbol of the unit in which numbers of the kind are shown; none where they are printed with theirs.
KorString unitSymbol(int kind) {
    const KorUnitsManager& units = getUnitsOfCurrentDatabase();
    return kind == KorUnitsManager::kLength && !units.getBasisUnitForDistanceIsImperial()
               ? KorString(units.getUnit(kind).symbol())
               : KorString();
}

KorString withUnit(double value, int kind) {
    const KorString text = getUnitsOfCurrentDatabase().format(value, kind);
    const KorString symbol = unitSymbol(kind);
    return symbol.isEmpty() ? text : KorString::format("%s %s", {text, symbol});
}

bool same(const KorString& a, const KorString& b) {
    return a.lowered() == b.lowered();
}

Parsed failure(int promptNumber, std::initializer_list<KorString> arguments, const KorString& note = {}) {
    Parsed failed(Result<>::failure(KorString::format(Prompts::dsm(promptNumber), arguments)));
    failed.note = note;
    return failed;
}

Parsed outOfRange(const TableSchema& table, const Column& column, double number) {
    const KorString caption = columnCaption(table, column);
    const KorString lowest = withUnit(column.minimum, unitKind(column));
    const KorString highest = withUnit(column.maximum, unitKind(column));
    const bool isBelow = number < column.minimum;
    const KorString note = KorString::format(Prompts::dsm(isBelow ? kNoteNotBelow : kNoteNotAbove),
                                             {isBelow ? lowest : highest});
    // The largest length is no part of what people think of as the range.
    if (column.maximum == std::numeric_limits<double>::infinity() || column.kind == eColumnKind::kLength)
        return failure(isBelow ? kNotBelow : kNotAbove, {caption, isBelow ? lowest : highest}, note);
    return failure(kNotInRange, {caption, lowest, highest}, note);
}

KorOdbcKey keyInBrackets(std::string_view text) {
    if (text.size() < 3 || text.front() != '[' || text.back() != ']')
        return {};
    std::int32_t key = 0;
    const char* last = text.data() + text.size() - 1;
    const auto [end, error] = std::from_chars(text.data() + 1, last, key);
    return error == std::errc() && end == last ? KorOdbcKey(key) : KorOdbcKey();
}

// The value that a text names in the program's language or in English.
std::optional<CellValue> meantBy(const TableSchema& table, const Column& column, const KorString& text) {
    for (const auto* names : {&column.valueNames, &column.specialValues})
        for (const NamedValue& each : *names)
            if (same(text, nameOf(table, column, each)) || same(text, each.name))
                return column.isReal() ? CellValue(static_cast<double>(each.value))
                                       : CellValue(std::int64_t{each.value});
    const auto color = column.isColor ? KorDSMColorNames::parse(text) : std::nullopt;
    return color ? std::optional<CellValue>(std::int64_t{*color}) : std::nullopt;
}

Parsed parseReference(const TableSchema& table, const Column& column, const KorString& text) {
    StyleSource* source = StyleDatabases::current().here();
    if (const StructRecord* row = source ? findRow(source->table(column.target), text) : nullptr)
        return CellValue(std::int64_t{row->key});
    const KorString trimmed = text.trimmed();
    if (const auto meant = meantBy(table, column, trimmed))
        return *meant;
    if (trimmed.isEmpty() || trimmed == "0" || same(trimmed, Prompts::dsm(kNothing)))
        return CellValue(std::int64_t{0});
    return failure(kNoSuchRow, {columnCaption(table, column), tableCaption(*findTable(column.target)), text});
}

Parsed parseFlag(const TableSchema& table, const Column& column, const KorString& text) {
    for (const KorString& yes : {Prompts::dsm(kYes), KorString("yes"), KorString("true"), KorString("1")})
        if (same(text, yes))
            return CellValue(std::int64_t{1});
    for (const KorString& no : {Prompts::dsm(kNo), KorString("no"), KorString("false"), KorString("0")})
        if (same(text, no))
            return CellValue(std::int64_t{0});
    return failure(kNotYesOrNo, {columnCaption(table, column), text});
}

KorString listed(const std::vector<KorString>& words) {
    KorString text;
    for (const KorString& word : words)
        text = text + KorString(text.isEmpty() ? "" : ", ") + word;
    return text;
}

Parsed parseNumber(const TableSchema& table, const Column& column, const KorString& text) {
    if (const auto meant = meantBy(table, column, text); meant && column.isInRange(numberIn(*meant)))
        return *meant;
    const int kind = unitKind(column);
    const auto number = getUnitsOfCurrentDatabase().parse(text, kind);
    constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
    const bool fits =
        number && (!column.isInteger() || (std::abs(*number) <= kHighest && *number == std::trunc(*number)));
    if (!column.valueNames.empty() && !(fits && column.isInRange(*number)))
        return failure(kNotAWord, {columnCaption(table, column), text, listed(valueNames(table, column))});
    if (!fits)
        return failure(kNotANumber, {columnCaption(table, column), text},
                       Prompts::dsm(number ? kNoteNotWhole : kNoteNotANumber));
    if (!column.isInRange(*number))
        return outOfRange(table, column, *number);
    if (column.isInteger())
        return CellValue(static_cast<std::int64_t>(*number));
    return CellValue(*number);
}

// The factor of "1:25" or "1/2.5", each side a number as people type it.
std::optional<double> ratio(const KorString& text) {
    const std::string_view view = text.view();
    const auto mark = view.find_first_of(":/");
    if (mark == std::string_view::npos)
        return std::nullopt;
    const KorUnitsManager& units = getUnitsOfCurrentDatabase();
    const auto paper = units.parse(KorString(view.substr(0, mark)), KorUnitsManager::kPlain);
    const auto model = units.parse(KorString(view.substr(mark + 1)), KorUnitsManager::kPlain);
    const double factor = paper && model && *paper > 0.0 && *model > 0.0 ? *paper / *model : 0.0;
    return std::isfinite(factor) && factor > 0.0 ? std::optional(factor) : std::nullopt;
}

// By name or ratio as the list shows them, or as the plain factor. Above 1 that could be meant either way.
Parsed parseScale(const TableSchema& table, const Column& column, const KorString& text) {
    if (StructScale scale; StyleReads::read(text, scale) == 1 && scale.factor > 0.0)
        return CellValue(scale.factor);
    if (const auto factor = ratio(text))
        return CellValue(*factor);
    const auto factor = getUnitsOfCurrentDatabase().parse(text, KorUnitsManager::kPlain);
    if (factor && *factor > 1.0)
        return failure(kNoRatio, {columnCaption(table, column), text, text});
    if (factor && *factor > 0.0)
        return CellValue(*factor);
    return failure(kNotANumber, {columnCaption(table, column), text});
}

} // namespace

// Names come first: a row may be named "0", "[7]" or with a blank at its end.
const StructRecord* findRow(const StyleTable& rows, const KorString& text) {
    const KorString trimmed = text.trimmed();
    for (const KorString& name : {text, trimmed})
        if (const StructRecord* row = name.isEmpty() ? nullptr : rows.find(name))
            return row;
    if (const StructRecord* word = OwnWords::find(rows.schema().type, rows.rows(), trimmed))
        return word;
    return rows.find(keyInBrackets(trimmed.view()));
}

std::vector<std::int32_t> keysNamed(const StyleTable& rows, const KorString& text) {
    std::vector<std::int32_t> keys;
    const StructRecord* found = findRow(rows, text);
    const bool byName = found && (found->name == text || found->name == text.trimmed());
    for (int i = 0; byName && i < rows.rows().size(); ++i)
        if (rows.rows().at(i).name == found->name)
            keys.push_back(rows.rows().at(i).key);
    if (found && !byName)
        keys.push_back(found->key);
    return keys;
}

KorString shortName(const KorString& name) {
    constexpr std::size_t kLongest = 60;
    const std::string_view text = name.view();
    std::size_t characters = 0;
    std::string shown;
    for (const char letter : text) {
        if ((letter & 0xC0) != 0x80 && ++characters > kLongest)
            return KorString(shown) + KorString("…");
        // A tab would stand for the key of a menu entry.
        shown += static_cast<unsigned char>(letter) < ' ' ? ' ' : letter;
    }
    return KorString(shown);
}

// Names of scales stand as they are; a ratio has the decimal mark in use.
KorString scaleText(double factor) {
    KorString text;
    const bool isNamed =
        kor_odbc_getScaleDescription(factor, text, getScaleUnitsOfCurrentDatabase(), false) == 1;
    return isNamed ? text : text.replaced(".", KorString(std::string(1, KorUnitsManager::decimalMark())));
}

bool isOfferedScale(double factor) {
    const ScaleUnitType units = getScaleUnitsOfCurrentDatabase();
    KorArray<KorString> offered;
    KorString name;
    return kor_odbc_getScaleList(units, offered) == 0 ||
           kor_odbc_getScaleDescription(factor, name, units, false) == 1;
}

KorString tableCaption(const TableSchema& table) {
    return named("TAB", table.type, table.name);
}

bool isNameGiven(const TableSchema& table, const KorString& name) {
    const std::string kind = tableCaption(table).toStdString();
    const std::string_view text = name.view();
    const bool isNumbered =
        text.starts_with(kind + " ") && text.find_first_not_of("0123456789", kind.size() + 1) == text.npos;
    return !text.empty() && text != kind && !isNumbered;
}

KorString columnCaption(const TableSchema& table, const Column& column) {
    return named("COL", table.type * 100 + column.number, column.name);
}

KorString captionWithUnit(const TableSchema& table, const Column& column) {
    const KorString caption = columnCaption(table, column);
    return column.kind == eColumnKind::kLength ? withLengthUnit(caption) : caption;
}

KorString withLengthUnit(const KorString& caption) {
    const KorString symbol = unitSymbol(KorUnitsManager::kLength);
    if (symbol.isEmpty())
        return caption;
    const std::string_view text = caption.view();
    const bool colon = text.ends_with(':');
    return KorString::format(colon ? "%s (%s):" : "%s (%s)",
                             {KorString(text.substr(0, text.size() - colon)), symbol});
}

std::vector<KorString> valueNames(const TableSchema& table, const Column& column) {
    std::vector<KorString> names;
    for (const std::int32_t value : valuesOf(column))
        names.push_back(valueName(table, column, value));
    return names;
}

std::vector<std::int32_t> valuesOf(const Column& column) {
    std::vector<std::int32_t> values;
    for (const NamedValue& each : column.valueNames)
        values.push_back(each.value);
    if (column.isColor) { // those that come from elsewhere after the colours
        values.resize(KorDSMColorNames::kByLayer + 1);
        std::iota(values.begin(), values.end(), 1);
        values.back() = 0;
    }
    return values;
}

KorString specialName(const TableSchema& table, const Column& column, const CellValue& value) {
    return column.specialValues.empty() ? KorString()
                                        : nameIn(column.specialValues, table, column, numberIn(value));
}

KorString nothing() {
    return Prompts::dsm(kNothing);
}

int unitKind(const Column& column) {
    return column.kind == eColumnKind::kLength ? KorUnitsManager::kLength : KorUnitsManager::kPlain;
}

KorString toText(const TableSchema& table, const Column& column, const StructRecord& record) {
    return toText(table, column, column.read(&record));
}

KorString toText(const TableSchema& table, const Column& column, const CellValue& value) {
    if (const auto* text = std::get_if<KorString>(&value))
        return *text;
    if (KorString special = specialName(table, column, value); !special.isEmpty())
        return special;
    if (const auto* real = std::get_if<double>(&value))
        return column.kind == eColumnKind::kScale ? scaleText(*real) : withUnit(*real, unitKind(column));
    const std::int64_t whole = std::get<std::int64_t>(value);
    if (column.isReference())
        return referenceText(column, whole);
    if (column.kind == eColumnKind::kFlag && (whole == 0 || whole == 1))
        return Prompts::dsm(whole == 1 ? kYes : kNo);
    return valueName(table, column, whole);
}

Parsed parse(const TableSchema& table, const Column& column, const KorString& text) {
    if (column.isText())
        return CellValue(text);
    if (column.isReference())
        return parseReference(table, column, text);
    const KorString trimmed = text.trimmed();
    if (column.kind == eColumnKind::kScale)
        return parseScale(table, column, trimmed);
    if (column.kind == eColumnKind::kFlag)
        return parseFlag(table, column, trimmed);
    return parseNumber(table, column, trimmed);
}

} // namespace KorDSMValueText
