#include "data/FreeName.h"

#include <cctype>

namespace {

KorString wordForRows(const TableSchema& table) {
    std::string word = table.rowName();
    word.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(word.front())));
    return KorString(word);
}

} // namespace

KorString nameWithoutNumber(const KorString& name) {
    const std::string_view text = name.view();
    const auto blank = text.find_last_not_of("0123456789");
    if (blank == std::string_view::npos || blank + 1 == text.size() || text[blank] != ' ')
        return {};
    return KorString(text.substr(0, blank)).trimmed();
}

KorString freeName(StyleSource& source, eTableType type, const KorString& wanted) {
    const StyleTable& table = source.table(type);
    KorString base = wanted.trimmed();
    if (!base.isEmpty() && !table.find(base))
        return base;
    // "HEA 200" is no numbered "HEA" unless there is one
    if (const KorString stem = nameWithoutNumber(base); !stem.isEmpty() && table.find(stem))
        base = stem;
    if (base.isEmpty())
        base = wordForRows(table.schema());
    return table.numberedFreeName(base);
}
