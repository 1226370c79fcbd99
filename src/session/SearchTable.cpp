#include "session/SearchTable.h"

#include "records/OwnWords.h"
#include "session/KorDSMValueText.h"

#include <algorithm>
#include <bit>
#include <unordered_set>
#include <utility>

namespace {

const std::vector<KorString> kNone;

std::string foldedAll(const KorString& shown, const std::vector<KorString>& others) {
    std::string folded = shown.lowered().toStdString();
    for (const KorString& other : others)
        folded += '\n' + other.lowered().toStdString();
    return folded;
}

std::uint64_t bitsOf(const Column& column, const StructRecord& record) {
    return column.isReal() ? std::bit_cast<std::uint64_t>(column.realIn(&record))
                           : static_cast<std::uint64_t>(column.integerIn(&record));
}

CellValue valueOf(const Column& column, std::uint64_t bits) {
    return column.isReal() ? CellValue(std::bit_cast<double>(bits))
                           : CellValue(static_cast<std::int64_t>(bits));
}

// What the language of the code calls the value, where it has a word for it.
KorString englishName(const Column& column, std::uint64_t bits) {
    if (column.isReal())
        return {};
    const auto found = std::ranges::find_if(column.valueNames, [&](const NamedValue& each) {
        return each.value == static_cast<std::int64_t>(bits);
    });
    return found == column.valueNames.end() ? KorString() : KorString(found->name).replaced("_", " ");
}

std::optional<SearchFit> bestOf(const SearchWords& words, const std::vector<std::string>& texts,
                                const std::string& context) {
    std::optional<SearchFit> best;
    for (const std::string& text : texts)
        if (const auto fit = words.fit(text, context); fit && (!best || *fit < *best))
            best = fit;
    return best;
}

} // namespace

SearchTable::SearchTable(StyleSource& source, const TableSchema& table, bool hasValues,
                         const OtherWordings& wordings)
    : m_source(&source), m_schema(&table), m_rows(&source.table(table.type).rows()),
      m_areValuesDue(hasValues) {
    const KorString kind = KorDSMValueText::tableCaption(table);
    m_kind = foldedAll(kind, wordings.of(kind));
    m_names.reserve(static_cast<std::size_t>(m_rows->size()));
    const bool areOwnWords = OwnWords::areIn(table.type); // of which another language has others
    for (int i = 0; i < m_rows->size(); ++i)
        m_names.add(areOwnWords ? shownName(m_rows->at(i)) : m_rows->at(i).name);
}

bool SearchTable::collectValues(const OtherWordings& wordings) {
    if (!std::exchange(m_areValuesDue, false))
        return false;
    for (const Column& column : m_schema->columns)
        if (column.number > 1 && column.role != eReferenceRole::kIdentifies) // its name would come twice
            addColumn(column, wordings);
    return true;
}

// What is stored in English is found by that, too.
KorString SearchTable::shownName(const StructRecord& row) const {
    const KorString shown = OwnWords::nameOf(m_schema->type, row);
    return shown == row.name ? shown : KorString::format("%s (%s)", {shown, row.name});
}

void SearchTable::addColumn(const Column& column, const OtherWordings& wordings) {
    Values& values = m_values.emplace_back();
    values.column = &column;
    const KorString caption = KorDSMValueText::columnCaption(*m_schema, column);
    values.caption = foldedAll(caption, wordings.of(caption));
    if (column.isText())
        for (int i = 0; i < m_rows->size(); ++i)
            values.texts.add(column.textIn(&m_rows->at(i)));
    else if (!column.isReference())
        addChoices(values, wordings);
}

void SearchTable::addChoices(Values& values, const OtherWordings& wordings) const {
    const Column& column = *values.column;
    std::unordered_set<std::uint64_t> known;
    std::uint64_t before = 0;
    for (int i = 0; i < m_rows->size(); ++i) {
        const std::uint64_t bits = bitsOf(column, m_rows->at(i));
        if ((i > 0 && bits == before) || !known.insert(bits).second)
            continue;
        before = bits;
        Choice& choice = values.choices.emplace_back();
        choice.bits = bits;
        choice.shown = KorDSMValueText::toText(*m_schema, column, valueOf(column, bits));
        choice.others = wordings.of(choice.shown);
        if (const KorString english = englishName(column, bits);
            !english.isEmpty() && english.lowered() != choice.shown.lowered())
            choice.others.push_back(english);
        choice.folded.push_back(choice.shown.lowered().toStdString());
        for (const KorString& other : choice.others)
            choice.folded.push_back(other.lowered().toStdString());
    }
}

bool SearchTable::isOutdated() const {
    const RowArray& rows = m_source->table(m_schema->type).rows();
    return &rows != m_rows || static_cast<std::size_t>(rows.size()) != m_names.size();
}

const StructRecord& SearchTable::rowAt(std::size_t index) const {
    return m_rows->at(static_cast<int>(index));
}

const SearchTable::Values* SearchTable::valuesOf(const Column& column) const {
    const auto found = std::ranges::find(m_values, &column, &Values::column);
    return found == m_values.end() ? nullptr : &*found;
}

const std::vector<KorString>& SearchTable::otherValues(const Column& column, const KorString& shown) const {
    if (const Values* values = valuesOf(column))
        for (const Choice& choice : values->choices)
            if (choice.shown == shown)
                return choice.others;
    return kNone;
}

void SearchTable::names(const SearchWords& words, const Take& take, const std::string* context) const {
    const std::string& around = context ? *context : m_kind;
    std::vector<std::string> wanted = words.missingIn(around);
    const bool needsAll = !wanted.empty();
    if (needsAll) // the longest is the rarest
        wanted = {*std::ranges::max_element(wanted, {}, &std::string::size)};
    else
        wanted = words.words();
    std::unordered_set<std::size_t> taken;
    bool goesOn = true;
    for (auto word = wanted.begin(); goesOn && word != wanted.end(); ++word)
        m_names.having(*word, [&](std::size_t number) {
            if (!needsAll && !taken.insert(number).second)
                return true;
            const std::string_view name = m_names.at(number);
            if (const auto fit = words.fit(name, around))
                goesOn = take({*fit, number, nullptr, name.size()});
            return goesOn;
        });
}

void SearchTable::values(const SearchWords& words, const KeysOf& keysOf, std::size_t atMost,
                         const Take& take) const {
    for (const Values& values : m_values) {
        const Column& column = *values.column;
        Fits fits;
        if (column.isText()) {
            texts(values, words, atMost, take);
        } else if (column.isReference()) {
            for (const auto& [key, fit] : keysOf(column.target, values.caption))
                fits.emplace_back(static_cast<std::uint64_t>(key), fit);
        } else if (column.kind != eColumnKind::kFlag ||
                   words.missingIn(values.caption).size() < words.words().size()) {
            for (const Choice& choice : values.choices)
                if (const auto fit = bestOf(words, choice.folded, values.caption))
                    fits.emplace_back(choice.bits, *fit);
        }
        cells(values, fits, atMost, take);
    }
}

void SearchTable::texts(const Values& values, const SearchWords& words, std::size_t atMost,
                        const Take& take) const {
    std::vector<std::string> wanted = words.missingIn(values.caption);
    if (wanted.empty())
        wanted = words.words();
    const std::string& longest = *std::ranges::max_element(wanted, {}, &std::string::size);
    std::size_t found = 0;
    values.texts.having(longest, [&](std::size_t number) {
        const std::string_view text = values.texts.at(number);
        const auto fit = words.fit(text, values.caption);
        return !fit || (take({*fit, number, values.column, text.size()}) && ++found < atMost);
    });
}

void SearchTable::cells(const Values& values, const Fits& fits, std::size_t atMost, const Take& take) const {
    if (fits.empty())
        return;
    const std::unordered_map<std::uint64_t, SearchFit> wanted(fits.begin(), fits.end());
    std::size_t found = 0;
    for (int i = 0; i < m_rows->size() && found < atMost; ++i) {
        const auto fit = wanted.find(bitsOf(*values.column, m_rows->at(i)));
        if (fit == wanted.end())
            continue;
        if (!take({fit->second, static_cast<std::size_t>(i), values.column, 0}))
            return;
        ++found;
    }
}
