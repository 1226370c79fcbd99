#include "drawing/Hindrances.h"

#include "base/Translation.h"
#include "data/StyleSource.h"

#include <algorithm>
#include <span>

namespace {

using Hindrances::Circumstances;
using Columns = std::initializer_list<std::string_view>; ///< none: all of the table

bool isOneOf(const Column& column, const Columns& columns) {
    return columns.size() == 0 || std::ranges::find(columns, column.name) != columns.end();
}

struct Hindrance {
    eTableType table;
    Columns columns;
    bool (*isThere)(const Circumstances& met);
    const char* sentence;
};

template <typename R>
const R& recordOf(const Circumstances& met) {
    return static_cast<const R&>(met.record);
}

template <typename R, auto member>
bool isUnset(const Circumstances& met) {
    return recordOf<R>(met).*member <= 0;
}

template <typename R, auto member>
bool isEmpty(const Circumstances& met) {
    return (recordOf<R>(met).*member).isEmpty();
}

// Whether a column of the record refers to a row of a word list that has this number.
template <typename R, auto member, typename Word, auto number, std::int32_t wanted>
bool isWord(const Circumstances& met) {
    const StructRecord* word = met.source.table(tableOf<Word>).find(KorOdbcKey(recordOf<R>(met).*member));
    return word && static_cast<const Word*>(word)->*number == wanted;
}

bool isNoOrdinate(const Circumstances& met) {
    constexpr std::int32_t kOrdinate = 1;
    return !isWord<StructDetViewDimRequestLinear, &StructDetViewDimRequestLinear::requestTypeKey,
                   StructDetRequestType, &StructDetRequestType::requestType, kOrdinate>(met);
}

bool hasNoCuts(const Circumstances& met) {
    return std::ranges::none_of(met.drawing.views, &ViewPicture::isCut);
}

bool isUnclipped(const Circumstances& met) {
    const auto& clip = recordOf<StructDetViewLengthClip>(met);
    return clip.alongX == 0 && clip.alongY == 0;
}

using Style = StructDetailStyle;
using View = StructDetViewRequest;
using Look = StructDetObjAppearance;
using Status = StructDetailVisibilityStatus;
constexpr std::int32_t kNotDrawn = 0;
constexpr std::int32_t kAsHidden = 2;

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
    {kTableDetailStyle,
     {"cut_view_title_position", "cut_view_title_format"},
     hasNoCuts,
     translatable("No view of this drawing is used for cuts and callouts.")},
    {kTableViewRequest,
     {"callout_title_template", "used_for_cuts_and_callouts"},
     isUnset<View, &View::usedForCutsAndCallouts>,
     translatable("The view is not used for cuts and callouts.")},
    {kTableViewRequest,
     {"compass", "compass_in_overviews"},
     isUnset<View, &View::compassKey>,
     translatable("The view has no compass.")},
    {kTableAppearance, {"hatch"}, isUnset<Look, &Look::hatchKey>, translatable("No hatch is chosen.")},
    {kTableAppearance,
     {"centre_lines"},
     isUnset<Look, &Look::centreLines>,
     translatable("Centre lines are switched off.")},
    {kTableAppearance,
     {"visible_status", "visible_linetype", "visible_color"},
     isWord<Look, &Look::visibleStatusKey, Status, &Status::status, kNotDrawn>,
     translatable("With this appearance visible edges are not drawn.")},
    {kTableAppearance,
     {"visible_linetype", "visible_color"},
     isWord<Look, &Look::visibleStatusKey, Status, &Status::status, kAsHidden>,
     translatable("With this appearance visible edges are drawn like hidden ones.")},
    {kTableAppearance,
     {"hidden_status", "hidden_linetype", "hidden_color"},
     isWord<Look, &Look::hiddenStatusKey, Status, &Status::status, kNotDrawn>,
     translatable("With this appearance hidden edges are not drawn.")},
    {kTableLengthClip,
     {"keep_each_side"},
     [](const Circumstances& met) { return met.style.automaticClipping != 0; },
     translatable("The detail style clips automatically, and then decides how much is kept.")},
    {kTableLengthClip, {}, isUnclipped, translatable("Clipping is switched off along both axes.")},
    {kTableLeaderStyle,
     {"arrow_size"},
     isUnset<StructDetLeaderStyle, &StructDetLeaderStyle::arrow>,
     translatable("The leader has no arrow.")},
    {kTableGridRefSettings,
     {},
     isUnset<StructDetGridRefSettings, &StructDetGridRefSettings::showGrid>,
     translatable("Grid lines are switched off.")},
    {kTableAnnotationStrategy,
     {},
     isEmpty<StructDetObjAnnotationStrategy, &StructDetObjAnnotationStrategy::contents>,
     translatable("The label has no contents.")},
    {kTableDimRequest,
     {"ordinate_type", "ordinate_position", "ordinate_reference"},
     isNoOrdinate,
     translatable("Only ordinates have this, and the request is of another type.")},
};

// What a part lacks for a column to show.
struct Lack {
    std::initializer_list<eTableType> tables;
    Columns columns;
    const char* sentence; ///< with the kind of the record, its name and that of the part
};

const Lack kOfFields[] = {
    {{kTableViewRequest},
     {"dim_strategy"},
     translatable("The dimensions of the %s \"%s\" find nothing to measure in the sample part \"%s\".")},
    {{kTableReprMapEntry},
     {"annotation_strategy"},
     translatable("The label of the %s \"%s\" finds nothing to stand at in the sample part \"%s\".")},
    {{kTableAppearance},
     {"hidden_status", "hidden_linetype", "hidden_color"},
     translatable("Nothing that is drawn with the %s \"%s\" is hidden in the sample part \"%s\".")},
    {{kTableAppearance},
     {"hatch"},
     translatable("Nothing that is drawn with the %s \"%s\" is cut through in the sample part \"%s\".")},
    {{kTableAppearance},
     {"centre_lines"},
     translatable("Nothing that is drawn with the %s \"%s\" is round in the sample part \"%s\".")},
    {{kTableAppearance},
     {"visible_status", "visible_linetype", "visible_color"},
     translatable("No visible edge is drawn with the %s \"%s\" in the sample part \"%s\".")},
};

constexpr auto kOfDimensions = {
    kTableDimRequest,          kTableDimStrategyItem,       kTableViewDimStrategy, kTablePointSelection,
    kTablePointType,           kTableRequestType,           kTableLinearDirection, kTableParentRelaPos,
    kTableDimGeomRestrictions, kTableGeometricRestrictions, kTableOrdinateDimType, kTableOrdinatePosition,
    kTableOrdinateReference};

const Lack kOfRecords[] = {
    {kOfDimensions,
     {},
     translatable("No dimension comes from the %s \"%s\": it finds nothing to measure in the sample part "
                  "\"%s\".")},
    {{kTableAnnotationStrategy, kTableAnnotationType, kTableArrangerControl, kTableArrangerStrategy,
      kTableLeaderStyle},
     {},
     translatable("Nothing is labelled with the %s \"%s\" in the sample part \"%s\".")},
    {{kTableReprMapEntry, kTableQualifierSet, kTableQualifierWithRole, kTableQualifier, kTableQualifierFilter,
      kTableModelType, kTableModelRole},
     {},
     translatable("The %s \"%s\" picks nothing that is drawn of the sample part \"%s\".")},
    {{kTableLengthClip},
     {},
     translatable("By the %s \"%s\" nothing is long enough to be clipped in the sample part \"%s\".")},
    {{kTableHatchSettings},
     {},
     translatable("Nothing that has the %s \"%s\" is cut through in the sample part \"%s\".")},
    {{kTableGridRefSettings},
     {},
     translatable("For the %s \"%s\" the views show no grid line of the sample part \"%s\".")},
};

KorString lacking(std::span<const Lack> all, eTableType table, const Column* column,
                  const Hindrances::Names& names, const char* otherwise) {
    const auto found = std::ranges::find_if(all, [&](const Lack& lack) {
        return std::ranges::find(lack.tables, table) != lack.tables.end() &&
               (!column || isOneOf(*column, lack.columns));
    });
    return KorString::format(translated(found == all.end() ? otherwise : found->sentence),
                             {names.kind, names.record, names.part});
}

} // namespace

KorString Hindrances::of(eTableType table, const Column& column, const Circumstances& met) {
    for (const Hindrance& each : kHindrances)
        if (each.table == table && isOneOf(column, each.columns) && each.isThere(met))
            return translated(each.sentence);
    if (column.isReference() && column.role == eReferenceRole::kUses && column.integerIn(&met.record) <= 0)
        return translated("Nothing is chosen here.");
    return {};
}

KorString Hindrances::ofField(eTableType table, const Column& column, const Names& names) {
    return lacking(kOfFields, table, &column, names,
                   translatable("The %s \"%s\" acts in this drawing, but nothing of the sample part \"%s\" "
                                "hangs on this field."));
}

bool Hindrances::isOfDimensions(eTableType table) {
    return std::ranges::find(kOfDimensions, table) != kOfDimensions.end();
}

KorString Hindrances::ofRepeated(const Names& names) {
    return KorString::format(
        translated(
            "No dimension comes from the %s \"%s\": what it measures of the sample part \"%s\", another "
            "one measures already."),
        {names.kind, names.record, names.part});
}

KorString Hindrances::ofRecord(eTableType table, const Names& names) {
    return lacking(kOfRecords, table, nullptr, names,
                   translatable("Nothing is drawn with the %s \"%s\" in the sample part \"%s\"."));
}
