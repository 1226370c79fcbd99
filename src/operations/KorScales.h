#pragma once

#include "base/KorArray.h"
#include "base/KorString.h"
#include "operations/StyleReads.h"

/// Which scales are offered.
enum ScaleUnitType : int { kScalesMetric = 1, kScalesImperial = 2 };

/// Names of the scales of a unit type, in the order of the table. Returns how many there are.
int kor_odbc_getScaleList(ScaleUnitType unitType, KorArray<KorString>& names);

/// The factor of a scale (paper length over model length) from its name, or from a ratio as
/// `kor_odbc_getScaleDescription` writes it, with points as decimal marks ("1:2.5"); 0 when the text is
/// neither.
double kor_odbc_getSpecificScale(const KorString& name);

/// The name of the scale of this factor, or, where no scale of the unit type has it, its ratio as text.
/// Returns 1 when a named scale was found, else 0. `withFactor` appends the factor in parentheses.
int kor_odbc_getScaleDescription(double factor, KorString& text, ScaleUnitType unitType, bool withFactor);

/// A named numeric default of the current source, such as "C40_ClipLineDistance". Returns 1 when it is
/// there, else 0 and leaves `value` untouched.
int kor_odbc_getDefault(const KorString& name, double& value);

class KorOdbcGrouping {
public:
    /// The headings under which the scales of a unit type are listed, with their scales' names. Returns 1
    /// when there is at least one.
    static int getScaleList(ScaleUnitType unitType, KorArray<KorString>& groups,
                            KorArray<KorArray<KorString>>& scales);
};

class KorODBCDefaultUtilities {
public:
    /// A named default for newly created things of a family (40: titles). Each returns 1 when it is stored,
    /// else 0 and leaves `value` untouched.
    static int getCreationDefault(int family, const KorString& key, KorString& value);
    static int getCreationDefault(int family, const KorString& key, double& value);
    static int getCreationDefault(int family, const KorString& key, int& value);
};

/// Model roles, looked up across all open sources, because roles of one name are one role everywhere.
class StructModelRoleMarshal {
public:
    /// The role's number; returns 1 when a source knows the name.
    static int getKeyByRunNameAllSources(const KorString& runName, int& role);
    static int getRunNameByKeyAllSources(int role, KorString& runName);
    /// Each name once, in the order of the role numbers.
    static int getOrderedRunNameListAllSources(KorArray<KorString>& names);
};
