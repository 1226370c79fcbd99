#include "session/LabelDoubts.h"

#include "base/LabelFormat.h"
#include "base/LabelVariables.h"
#include "base/Translation.h"
#include "session/KorDSMValueText.h"

#include <algorithm>

namespace {

struct LabelColumn {
    eTableType table;
    const char* name;
    bool needsMark; ///< variables are filled in only in texts with a version mark
};

constexpr LabelColumn kLabels[] = {
    {kTableDetailStyle, "title_format", true},
    {kTableDetailStyle, "cut_view_title_format", true},
    {kTableViewRequest, "callout_title_template", false},
    {kTableAnnotationStrategy, "contents", true},
    {kTableDimRequest, "title_format", false},
};

void list(KorString& names, const KorString& name) {
    names = names + (names.isEmpty() ? "{" : ", {") + name + "}";
}

KorString variablesIn(const LabelRuns& runs) {
    KorString names;
    for (const LabelRun& run : runs)
        if (run.kind == LabelRun::kVariable)
            list(names, run.text);
    return names;
}

KorString whyUnknown(const LabelRuns& runs) {
    KorString known;
    for (const LabelVariable& variable : kLabelVariables)
        list(known, KorString(variable.name));
    KorString unknown;
    for (const LabelRun& run : runs)
        if (run.kind == LabelRun::kVariable &&
            std::ranges::find(kLabelVariables, run.text.view(), &LabelVariable::name) ==
                kLabelVariables.end())
            list(unknown, run.text);
    return unknown.isEmpty()
               ? KorString()
               : KorString::format(translated("No variable is known by the name %s, so it is drawn as it "
                                              "stands unless the host knows it; the known ones are %s."),
                                   {unknown, known});
}

KorString doubtOf(const LabelColumn& label, const KorString& caption, const KorString& text) {
    LabelReading reading = LabelFormat::parse(text, {});
    KorString unmarked;
    if (reading.outcome == LabelReading::kPlain) {
        reading = LabelFormat::parse(KorString("{L1}") + text, {});
        if (reading.outcome != LabelReading::kLabel)
            return {};
        if (const KorString variables = variablesIn(reading.runs); label.needsMark && !variables.isEmpty())
            unmarked =
                KorString::format(translated("\"%s\" is drawn with its braces as they stand: %s would be "
                                             "filled in only where the text begins with {L1}."),
                                  {caption, variables}) +
                " ";
    } else if (reading.outcome != LabelReading::kLabel) {
        return KorString::format(
            translated(
                "\"%s\" is drawn as it is stored, because it is not understood from \"%s\" on; a brace "
                "that is meant to be seen is written twice."),
            {caption, KorDSMValueText::shortName(KorString(text.view().substr(reading.position)))});
    }
    return (unmarked + whyUnknown(reading.runs)).trimmed();
}

} // namespace

KorString LabelDoubts::of(const TableSchema& table, const Column& column, const KorString& text) {
    for (const LabelColumn& label : kLabels)
        if (label.table == table.type && column.name == label.name)
            return doubtOf(label, KorString(table.columnName(column)), text);
    return {};
}

std::vector<Finding> LabelDoubts::in(StyleSource& source) {
    std::vector<Finding> findings;
    for (const LabelColumn& label : kLabels) {
        const TableSchema& table = *findTable(label.table);
        const Column& column = *table.column(label.name);
        const RowArray& rows = source.table(label.table).rows();
        for (int i = 0; i < rows.size(); ++i) {
            const StructRecord& row = rows.at(i);
            if (const KorString doubt = of(table, column, column.textIn(&row)); !doubt.isEmpty())
                findings.push_back({eSeverity::kNote, &table, row.key, row.name, &column,
                                    KorString::format(translated("The %s \"%s\" (key %s) of \"%s\": %s"),
                                                      {table.rowName(), row.name, KorString::number(row.key),
                                                       source.store().name(), doubt})
                                        .toStdString()});
        }
    }
    return findings;
}
