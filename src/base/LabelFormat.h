#pragma once

#include "base/KorString.h"

#include <string_view>
#include <vector>

/// How a piece of a label is drawn.
struct LabelStyle {
    KorString font;  ///< family name; empty stands for the default font
    double size = 0; ///< millimetres on paper, above 0
    int color = 7;   ///< drawing colour number: 0 by block, 1 to 255, 256 by layer
    bool bold = false;
    bool italic = false;
    bool underline = false;

    bool operator==(const LabelStyle&) const = default;
};

/// One piece of a label, drawn in one style.
struct LabelRun {
    enum eKind { kText, kVariable, kLineBreak };

    eKind kind = kText;
    KorString text; ///< the text, or the variable's name; empty for a line break
    LabelStyle style;

    bool operator==(const LabelRun&) const = default;
};

using LabelRuns = std::vector<LabelRun>;

/// What reading a stored label came to.
struct LabelReading {
    enum eOutcome {
        kLabel,        ///< a label in this format, or an empty text
        kPlain,        ///< a text without version mark, as older databases hold them
        kOtherVersion, ///< the mark of another version of the format
        kNotUnderstood ///< something that this format does not have
    };

    eOutcome outcome = kLabel;
    LabelRuns runs;           ///< neighbours in one style are one run; empty when the text is not understood
    std::size_t position = 0; ///< kNotUnderstood: the byte where the first thing not understood begins
};

/// The text form of labels: titles and contents of annotations, with variables and character formatting,
/// in one text column.
///
///     label     = "" / "{L1}" *( text / escape / break / variable / format )
///     text      = any characters but "{" and "}"
///     escape    = "{{" for "{" / "}}" for "}"
///     break     = "{br}"; a line break inside of a text means the same, but is never written
///     variable  = "{" name "}"           a letter, then letters, digits, "_", "-" or "."; not "br", and not
///                                        "L" with digits, which is kept for version marks
///     format    = "{" attribute *( ";" attribute ) "}"
///     attribute = "font=" family         with %25 %3B %7B %7D for "%" ";" "{" "}"
///               / "size=" number         millimetres on paper, above 0, a point as decimal mark
///               / "color=" integer       0 to 256
///               / ( "b=" / "i=" / "u=" ) ( "0" / "1" )
///
/// "{L1}" is the version mark. A format holds for all that follows until another one changes the attribute;
/// before the first one the defaults of the place hold. Names of variables are case-sensitive; a name that
/// no list knows is still a variable.
///
/// Example: {L1}{size=7;b=1}{name} {number}{size=3.5;b=0}{br}Scale {scale}  Qty {quantity}
namespace LabelFormat {

/// Reads a stored text. Never fails: a text that is not understood says so, and whoever shows it keeps it
/// byte for byte.
LabelReading parse(const KorString& text, const LabelStyle& defaults);

/// The one text form of `runs`: attributes only where they change, in the order of the grammar. What it
/// writes, `parse` reads back as the same runs, and writing those gives the same bytes. No runs give an
/// empty text. A variable with an impossible name is written as text.
KorString write(const LabelRuns& runs, const LabelStyle& defaults);

/// Appends a run; empty texts vanish, and a text joins a text before it that has the same style.
void append(LabelRuns& runs, LabelRun run);

/// Appends `text` in one style, with its line breaks (CR LF, LF, CR) as breaks.
void appendText(LabelRuns& runs, std::string_view text, const LabelStyle& style);

/// True when `name` can be the name of a variable.
bool isVariableName(std::string_view name);

} // namespace LabelFormat
