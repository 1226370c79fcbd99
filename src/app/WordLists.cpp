#include "app/WordLists.h"

#include "base/Translation.h"
#include "session/KorDSMValueText.h"

#include <algorithm>

std::string WordLists::of(const KorString& head, const std::vector<std::string>& words) {
    std::string text = head.toStdString();
    std::size_t column = 200;
    for (const std::string& word : words) {
        column += word.size() + 1;
        if (column > 78) {
            text += "\n ";
            column = word.size() + 2;
        }
        text += " " + word;
    }
    return text;
}

std::string WordLists::kinds(const std::function<bool(const TableSchema&)>& isMeant) {
    std::vector<std::string> kinds;
    for (const TableSchema& table : allTables())
        if (!isMeant || isMeant(table))
            kinds.push_back(table.kindName());
    return of(translated("KIND is one of:"), kinds);
}

std::string WordLists::kindsWithCaptions() {
    std::size_t width = 0;
    for (const TableSchema& table : allTables())
        width = std::max(width, table.kindName().size());
    std::string text =
        translated("KIND is one of these, by its name or by what the editor calls it:").toStdString();
    for (const TableSchema& table : allTables()) {
        const std::string kind = table.kindName();
        text += "\n  " + kind + std::string(width + 2 - kind.size(), ' ') +
                KorDSMValueText::tableCaption(table).toStdString();
    }
    return text;
}
