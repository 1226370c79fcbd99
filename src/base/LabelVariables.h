#pragma once

#include <array>
#include <string_view>

/// Where a label stands decides which variables have a value there.
enum eLabelObjectType { kLabelDetailTitle = 17, kLabelCutViewTitle = 22 };

/// A variable that labels can show.
struct LabelVariable {
    std::string_view name; ///< as the text form has it
    bool inDetailTitle;    ///< has a value in the title of a detail
    bool inCutViewTitle;   ///< has a value in the title of a cut view

    /// Object types other than the two titles offer every variable.
    constexpr bool offeredIn(int objectType) const {
        return objectType == kLabelDetailTitle    ? inDetailTitle
               : objectType == kLabelCutViewTitle ? inCutViewTitle
                                                  : true;
    }
};

/// The known variables, in the order in which they are offered. A detail has no view letter of its own; a
/// cut view belongs to a part whose list data the detail's title gives already.
inline constexpr std::array<LabelVariable, 17> kLabelVariables = {{
    {"name", true, true},
    {"number", true, true},
    {"mark", true, true},
    {"description", true, true},
    {"view", false, true},
    {"scale", true, true},
    {"profile", true, true},
    {"material", true, true},
    {"quantity", true, false},
    {"length", true, false},
    {"weight", true, false},
    {"finish", true, false},
    {"drawing", true, true},
    {"revision", true, true},
    {"date", true, true},
    {"project", true, true},
    {"phase", true, true},
}};
