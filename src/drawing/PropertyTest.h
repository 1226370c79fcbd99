#pragma once

#include "drawing/SamplePart.h"

/// The answers to a question about an object. What an expression means that is not understood, nobody
/// guesses.
enum class eAnswer { kNo, kYes, kUnknown };

eAnswer operator!(eAnswer answer);
/// Both, or either: what does not hang on the unknown is answered.
eAnswer operator&&(eAnswer a, eAnswer b);
eAnswer operator||(eAnswer a, eAnswer b);

/// What a property is compared with:
///
///     expression = "" / "between" / [ name ] comparison
///     comparison = "=" value / "in" "(" value *( "," value ) ")"
///     value      = any characters but "," "(" ")" and blanks at the ends; a "*" at its end stands for any
///     rest
///
/// Without a name the property of the qualifier is meant. "between" holds for numbers from the minimum to the
/// maximum, both included; an empty expression for every value, or, where minimum or maximum is not 0, as
/// "between". Words are compared letter by letter; a number is also equal to another way to write it.
struct PropertyTest {
    enum eKind : std::uint8_t { kNotUnderstood, kPresent, kRange, kOneOf };

    eKind kind = kNotUnderstood;
    std::string property; ///< that is asked for
    double minimum = 0;   ///< of a range
    double maximum = 0;
    std::vector<std::string> values; ///< of which it must be one

    /// `property` names what the qualifier asks for, where the expression has no name.
    static PropertyTest read(std::string_view expression, double minimum, double maximum,
                             const std::string& property);
    /// A property that the object has not gives no; an expression that is not understood, or a range of what
    /// is no number, unknown.
    eAnswer holds(const std::map<std::string, PropertyValue>& properties) const;
};
