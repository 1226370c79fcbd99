#include "drawing/WhyNothing.h"

#include "base/Translation.h"
#include "data/StyleSource.h"
#include "drawing/DrawingSubject.h"
#include "drawing/Governed.h"
#include "drawing/Hindrances.h"
#include "drawing/MapExplanation.h"
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

// Of a view that is not drawn: what the drawing says of it.
KorString whyNoView(StyleSource& source, std::int32_t key, const Drawing& drawing) {
    const StructRecord* view = source.table(kTableViewRequest).find(KorOdbcKey(key));
    if (!view || std::ranges::find(drawing.views, key, &ViewPicture::key) != drawing.views.end())
        return {};
    const std::string name = "\"" + view->name.toStdString() + "\"";
    const std::string quoted = "„" + view->name.toStdString() + "“";
    const auto note = std::ranges::find_if(drawing.notes, [&](const std::string& each) {
        return each.find(name) != std::string::npos || each.find(quoted) != std::string::npos;
    });
    return note == drawing.notes.end() ? KorString() : KorString(*note);
}

// Where none of the views that the record acts in is drawn, or not the one that the column chooses.
KorString whyNoView(StyleSource& source, const DrawingSubject& subject, const Column& column,
                    const StructRecord& record, const Drawing& drawing) {
    if (column.isSlot())
        return whyNoView(source, static_cast<std::int32_t>(column.integerIn(&record)), drawing);
    const bool isDrawn = std::ranges::any_of(subject.views, [&](std::int32_t key) {
        return std::ranges::find(drawing.views, key, &ViewPicture::key) != drawing.views.end();
    });
    return isDrawn ? KorString() : whyNoView(source, subject.view, drawing);
}

// Where its views draw none of their lines, or no hidden ones.
KorString whatViewsHide(StyleSource& source, const DrawingSubject& subject, const Column& column) {
    bool showsAny = subject.views.empty();
    bool showsHidden = subject.views.empty();
    for (const std::int32_t key : subject.views) {
        const auto* view =
            static_cast<const StructDetViewRequest*>(source.table(kTableViewRequest).find(KorOdbcKey(key)));
        const auto* status =
            view ? static_cast<const StructDetailVisibilityStatus*>(
                       source.table(kTableVisibilityStatus).find(KorOdbcKey(view->visibilityStatusKey)))
                 : nullptr;
        showsAny = showsAny || !status || status->status != 0;
        showsHidden = showsHidden || !status || status->status == 2;
    }
    if (!showsAny)
        return translated("The visibility status of its views is \"Not drawn\".");
    return !showsHidden && column.name.starts_with("hidden_")
               ? translated("The visibility status of its views shows no hidden lines.")
               : KorString();
}

// Where entries before take all objects that an entry fits: the first of those.
KorString whoTakes(StyleSource& source, const RowRef& row, const DrawingRequest& request,
                   const SamplePart& part) {
    if (row.table != kTableReprMapEntry)
        return {};
    const auto& entry = static_cast<const StructDetObjReprMapKey&>(
        *source.table(kTableReprMapEntry).find(KorOdbcKey(row.key)));
    MapExplanation map(source, entry.reprMapKey, part, MapExplanation::objectsOf(source, request.style, part),
                       request.entriesOff);
    const std::vector<EntryCount> counts = map.counts();
    const auto own = std::ranges::find(counts, row.key, &EntryCount::entry);
    if (own == counts.end() || !own->takes.empty() || own->takenBefore.empty())
        return {};
    const StructRecord* before = source.table(kTableReprMapEntry).find(KorOdbcKey(own->takenBefore[0].by));
    return KorString::format(
        translated("The entry \"%s\" before it decides for what it fits of the sample part \"%s\"."),
        {before->name, translated(part.name)});
}

// Of a record that acts nowhere: whether all that it measures is measured already.
bool isRepeated(StyleSource& source, const RowRef& row, const SamplePart& part, DrawingRequest request) {
    request.repeatsDimensions = true;
    return Hindrances::isOfDimensions(row.table) &&
           !Governed(drawStyle(source, part, request)).by(source.id(), row).empty();
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
    const auto& style = static_cast<const StructDetailStyle&>(
        *source.table(kTableDetailStyle).find(KorOdbcKey(subject.style)));
    const Drawing drawing = drawStyle(source, part, request);
    for (const KorString& why :
         {whyNoView(source, subject, *column, *record, drawing),
          Hindrances::of(row.table, *column, {*record, source, style, drawing}),
          whatViewsHide(source, subject, *column), whoTakes(source, row, request, part)})
        if (!why.isEmpty())
            return why.toStdString();
    const Hindrances::Names names = {table->rowName(), record->name, translated(part.name)};
    if (!Governed(drawing).by(source.id(), row).empty())
        return Hindrances::ofField(row.table, *column, names).toStdString();
    return (isRepeated(source, row, part, request) ? Hindrances::ofRepeated(names)
                                                   : Hindrances::ofRecord(row.table, names))
        .toStdString();
}

const SamplePart* WhyNothing::partThatShows(StyleSource& source, const RowRef& row, int column,
                                            const DrawingRequest& request,
                                            std::span<const SamplePart* const> others) {
    const auto shows = [&](const SamplePart* part) {
        const Governed governed(drawStyle(source, *part, request));
        return !governed.by(source, row, column).empty();
    };
    const auto found = std::ranges::find_if(others, shows);
    return found == others.end() ? nullptr : *found;
}
