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

// Another value that keeps these columns from acting, and what to say of it.
struct Hindrance {
    eTableType table;
    std::initializer_list<std::string_view> columns;
    bool (*isThere)(const StructRecord& record, const StructDetailStyle& style);
    const char* sentence;
};

template <typename R, auto member>
bool isUnset(const StructRecord& record, const StructDetailStyle&) {
    return static_cast<const R&>(record).*member <= 0;
}

template <typename R, auto member>
bool isEmpty(const StructRecord& record, const StructDetailStyle&) {
    return (static_cast<const R&>(record).*member).isEmpty();
}

using Style = StructDetailStyle;
using View = StructDetViewRequest;
using Look = StructDetObjAppearance;
using Clip = StructDetViewLengthClip;

const Hindrance kHindrances[] = {
    {kTableDetailStyle,
     {"title_position"},
     isEmpty<Style, &Style::titleFormat>,
     translatable("The title of the detail style is empty.")},
    {kTableDetailStyle,
     {"title_format"},
     isUnset<Style, &Style::titlePosition>,
     translatable("The title position of the detail style is \"No title\".")},
    {kTableDetailStyle,
     {"cut_view_title_position"},
     isEmpty<Style, &Style::cutViewTitleFormat>,
     translatable("The title of cut views is empty.")},
    {kTableViewRequest,
     {"callout_title_template"},
     isUnset<View, &View::usedForCutsAndCallouts>,
     translatable("The view is not used for cuts and callouts.")},
    {kTableViewRequest,
     {"compass_in_overviews"},
     isUnset<View, &View::compassKey>,
     translatable("The view has no compass.")},
    {kTableAppearance, {"hatch"}, isUnset<Look, &Look::hatchKey>, translatable("No hatch is chosen.")},
    {kTableAppearance,
     {"centre_lines"},
     isUnset<Look, &Look::centreLines>,
     translatable("Centre lines are switched off.")},
    {kTableLengthClip,
     {"keep_each_side"},
     [](const StructRecord&, const Style& style) { return style.automaticClipping != 0; },
     translatable("The detail style clips automatically, and then decides how much is kept.")},
    {kTableLengthClip,
     {"keep_each_side", "interval", "extension", "clipping_type", "linetype", "clip_oblique_lines", "gap"},
     [](const StructRecord& record, const Style&) {
         const auto& clip = static_cast<const Clip&>(record);
         return clip.alongX == 0 && clip.alongY == 0;
     },
     translatable("Clipping is switched off along both axes.")},
    {kTableLeaderStyle,
     {"arrow_size"},
     isUnset<StructDetLeaderStyle, &StructDetLeaderStyle::arrow>,
     translatable("The leader has no arrow.")},
    {kTableGridRefSettings,
     {"bubble_diameter", "overhang", "linetype"},
     isUnset<StructDetGridRefSettings, &StructDetGridRefSettings::showGrid>,
     translatable("Grid lines are switched off.")},
    {kTableAnnotationStrategy,
     {},
     isEmpty<StructDetObjAnnotationStrategy, &StructDetObjAnnotationStrategy::contents>,
     translatable("The label has no contents.")},
};

KorString whatHinders(const RowRef& row, const Column& column, const StructRecord& record,
                      const Style& style) {
    for (const Hindrance& each : kHindrances)
        if (each.table == row.table &&
            (each.columns.size() == 0 ||
             std::ranges::find(each.columns, column.name) != each.columns.end()) &&
            each.isThere(record, style))
            return translated(each.sentence);
    return {};
}

// Where none of the views that the record acts in is drawn: what the drawing says of the first one.
KorString whyNoView(StyleSource& source, const DrawingSubject& subject, const Drawing& drawing) {
    const bool isDrawn = std::ranges::any_of(subject.views, [&](std::int32_t key) {
        return std::ranges::find(drawing.views, key, &ViewPicture::key) != drawing.views.end();
    });
    const StructRecord* view =
        isDrawn ? nullptr : source.table(kTableViewRequest).find(KorOdbcKey(subject.view));
    if (!view)
        return {};
    const std::string name = "\"" + view->name.toStdString() + "\"";
    const std::string quoted = "„" + view->name.toStdString() + "“";
    const auto note = std::ranges::find_if(drawing.notes, [&](const std::string& each) {
        return each.find(name) != std::string::npos || each.find(quoted) != std::string::npos;
    });
    return note == drawing.notes.end() ? KorString() : KorString(*note);
}

// Where its views draw none of their lines, or no hidden ones.
KorString whatViewsHide(StyleSource& source, const DrawingSubject& subject, const Column& column) {
    bool showsAny = subject.views.empty();
    bool showsHidden = subject.views.empty();
    for (const std::int32_t key : subject.views) {
        const auto* view = static_cast<const View*>(source.table(kTableViewRequest).find(KorOdbcKey(key)));
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
    const auto& style =
        static_cast<const Style&>(*source.table(kTableDetailStyle).find(KorOdbcKey(subject.style)));
    const Drawing drawing = drawStyle(source, part, request);
    for (const KorString& why :
         {whyNoView(source, subject, drawing), whatHinders(row, *column, *record, style),
          whatViewsHide(source, subject, *column)})
        if (!why.isEmpty())
            return why.toStdString();
    const bool actsAtAll = !Governed(drawing).by(source.id(), row).empty();
    return KorString::format(
               actsAtAll
                   ? translated("The %s acts in this drawing, but nothing of the sample "
                                "part \"%s\" hangs on this field.")
                   : translated("No object of the sample part is drawn with the %s; the part is \"%s\"."),
               {table->rowName(), part.name})
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
