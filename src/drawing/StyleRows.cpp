#include "drawing/StyleRows.h"

#include "base/Translation.h"

double StyleRows::numericDefault(const char* name, double otherwise) {
    const auto* row = static_cast<const StructNumericDefault*>(
        m_source.table(tableOf<StructNumericDefault>).find(KorString(name)));
    return row ? row->value : otherwise;
}

void StyleRows::note(const KorString& sentence) {
    if (m_noted.insert(sentence.toStdString()).second)
        m_notes.push_back(sentence.toStdString());
}

ProvenanceStep StyleRows::step(eTableType table, std::int32_t key,
                               std::initializer_list<std::string_view> columns) const {
    ProvenanceStep step{m_source.id(), {table, key}, {}};
    for (const std::string_view name : columns)
        if (const Column* column = findTable(table)->column(name);
            KorAssert::check(column != nullptr, "provenance names a column that there is"))
            step.columns.push_back(column->number);
    return step;
}

void StyleRows::noteMissing(eTableType table, std::int32_t key) {
    note(KorString::format(translated("There is no %s with the key %d, so what it says is not shown."),
                           {findTable(table)->rowName(), std::to_string(key)}));
}

ProvenancePtr nearer(const ProvenanceStep& step, const ProvenancePtr& rest) {
    Provenance all = {step};
    if (rest)
        all.insert(all.end(), rest->begin(), rest->end());
    return std::make_shared<const Provenance>(std::move(all));
}
