#include "session/KorDSMConflictWords.h"

#include "base/LabelFormat.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "data/store/ReadReport.h"
#include "operations/KorDSNManager.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

#include <algorithm>

namespace {

constexpr int kNamed = 435;       // "%s "%s"", of a kind and a name
constexpr int kEmpty = 436;       // an empty text
constexpr int kWholeRecord = 437; // property of a new row
constexpr int kDeletion = 438;    // what this program did to a row that another one changed
constexpr int kNewRecord = 439;
constexpr int kGone = 440;      // "The record was deleted."
constexpr int kWholeGone = 441; // the same for what a new row was a part of
constexpr int kPartsChanged = 550;
constexpr int kUseDefault = 14101;
constexpr int kViews = 33704; // the slots that there are

constexpr std::size_t kLongestValue = 300;
constexpr std::size_t kBeforeDifference = 40;

KorString named(const TableSchema& table, std::int32_t key, const KorString& name) {
    const KorString kind = KorDSMValueText::tableCaption(table);
    // A proposed name that was kept tells records apart; parts are called alike in many lists.
    return (table.isMadeToBeUsed() ? !name.isEmpty() : KorDSMValueText::isNameGiven(table, name))
               ? KorString::format(Prompts::dsm(kNamed), {kind, KorDSMValueText::shortName(name)})
               : KorString::format("%s [%s]", {kind, KorString::number(std::int64_t{key})});
}

// What the row is part of or filed under.
KorString placeOf(const OutsideConflict& conflict) {
    for (const Column& column : conflict.table->columns) {
        if (!column.isReference() || column.role == eReferenceRole::kUses || !conflict.record)
            continue;
        const std::int32_t key = column.integerIn(conflict.record.get());
        StyleSource& source = *StyleDatabases::current().here();
        const StructRecord* place = source.table(column.target).find(KorOdbcKey(key));
        return key <= 0 ? KorString()
                        : named(*findTable(column.target), key, place ? place->name : conflict.wholeName);
    }
    return {};
}

KorString recordText(const OutsideConflict& conflict) {
    const KorString place = placeOf(conflict);
    const KorString text =
        named(*conflict.table, conflict.key, conflict.record ? conflict.record->name : conflict.name);
    return place.isEmpty() ? text : KorString::format("%s, %s", {text, place});
}

KorString labelText(const KorString& text) {
    const LabelReading reading = LabelFormat::parse(text, {});
    if (reading.outcome != LabelReading::kLabel)
        return text;
    KorString words;
    for (const LabelRun& run : reading.runs)
        words = words + (run.kind == LabelRun::kLineBreak  ? KorString(" ")
                         : run.kind == LabelRun::kVariable ? KorString::format("{%s}", {run.text})
                                                           : run.text);
    return words;
}

KorString valueText(const TableSchema& table, const Column& column, const CellValue& value) {
    if (const auto* text = std::get_if<KorString>(&value))
        return labelText(*text);
    const auto* real = std::get_if<double>(&value);
    if (real && column.kind == eColumnKind::kLength && *real < 0.0 && column.minimum < 0.0)
        return Prompts::ups(kUseDefault);
    return KorDSMValueText::toText(table, column, value);
}

// For two values that pages show alike.
KorString exactText(const TableSchema& table, const Column& column, const CellValue& value) {
    if (const auto* text = std::get_if<KorString>(&value))
        return *text;
    const KorString exact(displayText(value));
    return column.isReference()
               ? KorString::format("%s [%s]", {KorDSMValueText::toText(table, column, value), exact})
               : exact;
}

bool beginsCharacter(std::string_view text, std::size_t at) {
    return at >= text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80;
}

KorString cut(std::string_view text, std::size_t from) {
    while (!beginsCharacter(text, from))
        --from;
    std::size_t to = std::min(text.size(), from + kLongestValue);
    while (!beginsCharacter(text, to))
        --to;
    return KorString(from > 0 ? "…" : "") + KorString(text.substr(from, to - from)) +
           KorString(to < text.size() ? "…" : "");
}

// On one line, and of long texts the part that holds the first difference.
void shorten(KorString& mine, KorString& stored) {
    for (KorString* text : {&mine, &stored})
        *text = text->replaced("\r\n", " ").replaced("\n", " ").replaced("\r", " ");
    const std::string a(mine.view());
    const std::string b(stored.view());
    const auto difference =
        static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
    const bool isLong = std::max(a.size(), b.size()) > kLongestValue;
    const std::size_t from = isLong && difference > kBeforeDifference ? difference - kBeforeDifference : 0;
    for (auto [text, whole] : {std::pair(&mine, &a), std::pair(&stored, &b)})
        *text = whole->empty() ? Prompts::dsm(kEmpty) : cut(*whole, std::min(from, whole->size()));
}

void shorten(KorDSMConflictWords& words, const OutsideConflict& conflict) {
    KorString stored = words.stored;
    shorten(words.mine, words.stored);
    if (conflict.before && !conflict.isMade)
        shorten(words.before, stored);
    else
        words.before = {};
}

// The slots of a row, or with the cells that this program wants; empty ones are left out.
KorString listText(const OutsideConflict& conflict, const StructRecord* row, bool isMine = false) {
    KorString text;
    for (const Column& column : conflict.table->columns) {
        if (!column.isSlot() || !row)
            continue;
        const auto wanted = std::ranges::find(conflict.cells, &column, &WantedCell::column);
        const bool isWanted = isMine && wanted != conflict.cells.end();
        const CellValue value = isWanted ? wanted->mine : column.read(row);
        if (value == CellValue(std::int64_t{0}))
            continue;
        const bool isKnown = isWanted && !wanted->targetName.isEmpty();
        const KorString name =
            isKnown ? wanted->targetName : KorDSMValueText::toText(*conflict.table, column, value);
        text = text + KorString(text.isEmpty() ? "" : ", ") + name;
    }
    return text;
}

void wordSlots(const OutsideConflict& conflict, KorDSMConflictWords& words) {
    words.property = Prompts::ups(kViews);
    words.mine = listText(conflict, conflict.record.get(), true);
    words.stored = listText(conflict, conflict.record.get());
    words.before = listText(conflict, conflict.before.get());
    shorten(words, conflict);
}

void wordValues(const OutsideConflict& conflict, KorDSMConflictWords& words) {
    const TableSchema& table = *conflict.table;
    const Column& column = *conflict.column;
    const CellValue& mine = conflict.mine ? *conflict.mine : *conflict.stored;
    const CellValue& stored = conflict.stored ? *conflict.stored : mine;
    const CellValue before = conflict.before ? column.read(conflict.before.get()) : stored;
    words.mine = conflict.targetName.isEmpty() ? valueText(table, column, mine) : conflict.targetName;
    words.stored = valueText(table, column, stored);
    words.before = valueText(table, column, before);
    if ((words.mine == words.stored && mine != stored) ||
        (words.before == words.stored && before != stored) ||
        (words.before == words.mine && before != mine)) {
        words.mine = exactText(table, column, mine);
        words.stored = exactText(table, column, stored);
        words.before = exactText(table, column, before);
    }
    shorten(words, conflict);
}

KorString whyNotMine(const OutsideConflict& conflict) {
    if (!conflict.reason.isEmpty())
        return conflict.reason;
    if (conflict.kind != OutsideConflict::eKind::kGone)
        return {};
    if (conflict.column)
        return Prompts::dsm(kGone);
    const std::string full = StyleDatabases::current().here()->whyFull(conflict.table->type);
    return conflict.key <= 0 && !full.empty() ? KorString(full) : Prompts::dsm(kWholeGone);
}

} // namespace

KorDSMConflictWords KorDSMConflictWords::of(SourceId source, const OutsideConflict& conflict) {
    const KorDSNRequest request(source.dsn, source.index);
    KorDSMConflictWords words;
    words.record = recordText(conflict);
    words.property = conflict.column ? KorDSMValueText::columnCaption(*conflict.table, *conflict.column)
                                     : Prompts::dsm(kWholeRecord);
    words.reason = whyNotMine(conflict);
    if (!conflict.by.user.empty())
        words.storedBy = KorString::format("%s, %s", {conflict.by.user, conflict.by.when});
    if (!words.canChoose() && !conflict.isMade)
        words.outcome = translated("Your change is not made.");
    if (conflict.column && conflict.column->isSlot() && !conflict.isMade)
        wordSlots(conflict, words);
    else if (conflict.column)
        wordValues(conflict, words);
    const bool isDeletion = conflict.kind == OutsideConflict::eKind::kDelete;
    if (!conflict.mine)
        words.mine = Prompts::dsm(isDeletion ? kDeletion : kNewRecord);
    if (!conflict.stored)
        words.stored = isDeletion ? Prompts::dsm(kPartsChanged) : KorString();
    return words;
}

KorString KorDSMConflictWords::beside() const {
    KorString text = stored;
    if (!canChoose())
        text = outcome.isEmpty() ? reason : KorString::format("%s %s", {reason, outcome});
    return storedBy.isEmpty() ? text : KorString::format("%s (%s)", {text, storedBy});
}

KorString KorDSMConflictWords::sentence() const {
    if (canChoose() && !storedBy.isEmpty())
        return KorString::format(
            translated("%s, %s: \"%s\" was stored meanwhile (%s); \"%s\" was not written."),
            {record, property, stored, storedBy, mine});
    if (canChoose())
        return KorString::format(
            translated("%s, %s: another program stored \"%s\" meanwhile; \"%s\" was not written."),
            {record, property, stored, mine});
    return KorString::format(translated("%s, %s: \"%s\" was not written. %s"),
                             {record, property, mine, reason});
}
