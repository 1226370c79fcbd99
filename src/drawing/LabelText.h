#pragma once

#include "drawing/StyleRows.h"
#include "picture/Primitive.h"

#include <functional>
#include <optional>
#include <string>

/// Labels as texts on the sheet.
namespace LabelText {

/// The value of a variable; nothing where nobody but the host knows it.
using Values = std::function<std::optional<std::string>(const std::string& name)>;

/// The texts of a label, its upper left corner at 0, 0. Variables without a value stand as "{name}".
Primitives lay(const KorString& label, const LabelStyle& defaults, const Values& values, const Pen& pen,
               Primitive::ePurpose purpose, const ProvenancePtr& provenance);
/// The same as one plain text. Variables are filled in even where the label has no version mark.
std::string plain(const KorString& label, const Values& values);

/// A number with a point as decimal mark and at most `places` decimals.
std::string number(double value, int places);
/// A length of the model as shops measure: in whole millimetres, or in sixteenths of an inch where inches are
/// the unit of the database.
double rounded(double millimetres, StyleRows& rows);
/// The same as text without its sign, inches with feet.
std::string length(double millimetres, StyleRows& rows);
/// A height as drawings state it, with its sign: in metres, or in feet and inches.
std::string height(double millimetres, StyleRows& rows);
/// A scale as lists of the database name it for its unit, else as a ratio such as 1:10.
std::string scale(double factor, StyleRows& rows);
/// A text of a part, in which a number in braces is a length in millimetres, with a sign a height, with these
/// in the unit of the database.
std::string withLengths(const std::string& text, StyleRows& rows);

} // namespace LabelText
