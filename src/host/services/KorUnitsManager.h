#pragma once

#include "base/KorString.h"

#include <optional>

/// Turns numbers into the text of a unit and back. Values are kept in millimetres, degrees or plain numbers,
/// whatever unit they are shown in.
class KorUnitTransform {
public:
    /// `factor`: the kept value of one shown unit.
    constexpr KorUnitTransform(double factor, bool feetAndInches)
        : m_factor(factor), m_feetAndInches(feetAndInches) {}

    /// The value as text, with the locale's decimal mark and as many decimals as it has, up to twelve
    /// significant digits; feet, inches and fractions where the unit has them and the value is a whole number
    /// of 64ths. Empty when the value is not finite.
    KorString format(double value) const;
    /// The value of a text, or nothing when it is no finite number of this unit. Reads the decimal mark
    /// in use, and the other one where no one can take it for a mark between thousands (1,000); a unit after
    /// the number overrides the transform's own; feet, inches and fractions as in 1'-2 1/2".
    std::optional<double> parse(const KorString& text) const;
    /// The second form: a plain number, whatever unit is shown; a degree sign may follow it.
    std::optional<double> parsePlain(const KorString& text) const;

private:
    double m_factor;
    bool m_feetAndInches;
};

/// One unit of a units manager.
class KorUnit {
public:
    constexpr KorUnit(const char* symbol, KorUnitTransform transform)
        : m_symbol(symbol), m_transform(transform) {}

    const char* symbol() const { return m_symbol; }
    const KorUnitTransform& getKorUnitTransform() const { return m_transform; }

private:
    const char* m_symbol;
    KorUnitTransform m_transform;
};

/// The units of a database.
class KorUnitsManager {
public:
    /// Kinds of values.
    enum eUnitKind : int {
        kPlain = 1,  ///< numbers and angles
        kPaper = 2,  ///< lengths on paper: millimetres or inches
        kLength = 3, ///< lengths in the model: millimetres or inches
    };

    static const KorUnitsManager& metric();
    static const KorUnitsManager& imperial();

    /// The unit of a kind; that of plain numbers for an unknown one.
    const KorUnit& getUnit(int kind) const;
    bool getBasisUnitForDistanceIsImperial() const { return m_imperial; }
    /// What controls are given to read and write lengths with.
    const KorUnitsManager& getInterface() const { return *this; }

    /// Reads or prints a value of this kind, kind 1 by the transform's second form.
    std::optional<double> parse(const KorString& text, int kind) const;
    KorString format(double value, int kind) const;

    /// The decimal mark in use, '.' or ','. Set once from the user's locale.
    static char decimalMark();
    static void setDecimalMark(char mark);

private:
    explicit constexpr KorUnitsManager(bool imperial) : m_imperial(imperial) {}

    bool m_imperial;
};
