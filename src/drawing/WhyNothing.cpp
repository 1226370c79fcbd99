#include "drawing/WhyNothing.h"

#include "base/Translation.h"
#include "data/StyleSource.h"
#include "drawing/DrawingSubject.h"
#include "drawing/Governed.h"
#include "drawing/NotShown.h"

namespace {

// Why no drawing ever shows the column; empty where drawings do.
KorString whyNever(const TableSchema& table, const Column& column) {
    const auto listed = std::ranges::find_if(notShownColumns(), [&](const NotShownColumn& each) {
        return each.table == table.type && each.column == column.name;
    });
    if (listed != notShownColumns().end())
        return KorString::format(translated("Not shown, because %s."), {translated(listed->reason)});
    const char* ofLists = whyForListsAlone(table, column);
    return ofLists ? translated(ofLists) : KorString();
}

} // namespace

std::string WhyNothing::sentenceFor(StyleSource& source, const RowRef& row, int number,
                                    const SamplePart& part, const DrawingRequest& request) {
    const TableSchema* table = findTable(row.table);
    const Column* column = table ? table->column(number) : nullptr;
    const StructRecord* record = table ? source.table(row.table).find(KorOdbcKey(row.key)) : nullptr;
    if (!column || !record)
        return translated("There is nothing to be drawn.").toStdString();
    if (const KorString never = whyNever(*table, *column); !never.isEmpty())
        return never.toStdString();
    const DrawingSubject subject = DrawingSubject::of(source, row, request.style);
    if (subject.style == 0)
        return subject.why;
    if (subject.style != request.style)
        return KorString::format(translated("This detail style does not use the %s \"%s\"."),
                                 {table->rowName(), record->name})
            .toStdString();
    return KorString::format(translated("Nothing of the sample part \"%s\" hangs on it."), {part.name})
        .toStdString();
}

const SamplePart* WhyNothing::partThatShows(StyleSource& source, const RowRef& row, int column,
                                            const DrawingRequest& request,
                                            std::span<const SamplePart* const> others) {
    const auto shows = [&](const SamplePart* part) {
        const Governed governed(drawStyle(source, *part, request));
        return !governed.by(source.id(), row, column).empty();
    };
    const auto found = std::ranges::find_if(others, shows);
    return found == others.end() ? nullptr : *found;
}
