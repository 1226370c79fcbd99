#include "operations/KorScales.h"

#include "data/StyleDatabases.h"
#include <array>
#include <charconv>
#include <cmath>

namespace {

// Factors come from typed ratios and from databases; they are the same when they agree to 9 digits.
bool sameFactor(double a, double b) {
    return std::abs(a - b) <= 1e-9 * std::max(std::abs(a), std::abs(b));
}

double toNumber(std::string_view text, bool& ok) {
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    ok = error == std::errc() && end == text.data() + text.size() && std::isfinite(value);
    return value;
}

KorString shortNumber(double value) {
    std::array<char, 400> buffer{};
    const auto print = [&buffer](double number, auto... how) {
        return std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, how...).ptr;
    };
    bool ok = false;
    const double rounded = toNumber({buffer.data(), print(value, std::chars_format::general, 10)}, ok);
    return KorString(std::string_view(buffer.data(), print(rounded, std::chars_format::fixed)));
}

KorArray<StructScale> scalesOf(ScaleUnitType unitType) {
    KorArray<StructScale> scales;
    StyleReads::select(scales, [unitType](const StructScale& scale) { return scale.unitType == unitType; });
    return scales;
}

} // namespace

int kor_odbc_getScaleList(ScaleUnitType unitType, KorArray<KorString>& names) {
    names.clear();
    for (const StructScale& scale : scalesOf(unitType))
        names.append(scale.name);
    return names.length();
}

double kor_odbc_getSpecificScale(const KorString& name) {
    StructScale scale;
    if (StyleReads::read(name, scale) == 1)
        return scale.factor;
    const std::string_view text = name.view();
    const auto mark = text.find(':');
    if (mark == std::string_view::npos)
        return 0.0;
    bool paperOk = false;
    bool modelOk = false;
    const double paper = toNumber(text.substr(0, mark), paperOk);
    const double model = toNumber(text.substr(mark + 1), modelOk);
    const double factor = paperOk && modelOk && paper > 0.0 && model > 0.0 ? paper / model : 0.0;
    return std::isfinite(factor) ? factor : 0.0;
}

int kor_odbc_getScaleDescription(double factor, KorString& text, ScaleUnitType unitType, bool withFactor) {
    const KorString suffix =
        withFactor ? KorString(" (") + shortNumber(factor) + KorString(")") : KorString();
    for (const StructScale& scale : scalesOf(unitType)) {
        if (sameFactor(scale.factor, factor)) {
            text = scale.name + suffix;
            return 1;
        }
    }
    const KorString ratio = factor > 0.0 && factor < 1.0 ? KorString("1:") + shortNumber(1.0 / factor)
                                                         : shortNumber(factor) + KorString(":1");
    text = ratio + suffix;
    return 0;
}

int kor_odbc_getDefault(const KorString& name, double& value) {
    StructNumericDefault record;
    const int result = StyleReads::read(name, record);
    if (result == 1)
        value = record.value;
    return result;
}

int KorOdbcGrouping::getScaleList(ScaleUnitType unitType, KorArray<KorString>& groups,
                                  KorArray<KorArray<KorString>>& scales) {
    groups.clear();
    scales.clear();
    KorArray<StructScaleGroup> rows;
    StyleReads::select(rows,
                       [unitType](const StructScaleGroup& group) { return group.unitType == unitType; });
    const KorArray<StructScale> all = scalesOf(unitType);
    for (const StructScaleGroup& group : rows) {
        groups.append(group.name);
        KorArray<KorString> members;
        for (const StructScale& scale : all)
            if (scale.groupKey == group.key)
                members.append(scale.name);
        scales.append(members);
    }
    return groups.isEmpty() ? 0 : 1;
}

int KorODBCDefaultUtilities::getCreationDefault(int family, const KorString& key, KorString& value) {
    KorArray<StructCreationDefault> found;
    StyleReads::select(
        found, [&](const StructCreationDefault& row) { return row.family == family && row.name == key; });
    if (found.isEmpty())
        return 0;
    value = found[0].value;
    return 1;
}

int KorODBCDefaultUtilities::getCreationDefault(int family, const KorString& key, double& value) {
    KorString text;
    if (getCreationDefault(family, key, text) != 1)
        return 0;
    bool ok = false;
    const double number = toNumber(text.trimmed().view(), ok);
    if (ok)
        value = number;
    return ok ? 1 : 0;
}

int KorODBCDefaultUtilities::getCreationDefault(int family, const KorString& key, int& value) {
    double number = 0.0;
    const int result = getCreationDefault(family, key, number);
    if (result == 1)
        value = static_cast<int>(number);
    return result;
}

namespace {

// Visits the model roles of every open source.
template <typename Visit>
void forAllRoles(Visit visit) {
    StyleDatabases& databases = StyleDatabases::current();
    for (const SourceId id : databases.sources()) {
        const RowArray& rows = databases.source(id)->table(kTableModelRole).rows();
        for (int i = 0; i < rows.size(); ++i)
            visit(static_cast<const StructModelRole&>(rows.at(i)));
    }
}

} // namespace

int StructModelRoleMarshal::getKeyByRunNameAllSources(const KorString& runName, int& role) {
    int result = 0;
    forAllRoles([&](const StructModelRole& row) {
        if (result == 0 && row.name == runName) {
            role = row.role;
            result = 1;
        }
    });
    return result;
}

int StructModelRoleMarshal::getRunNameByKeyAllSources(int role, KorString& runName) {
    int result = 0;
    forAllRoles([&](const StructModelRole& row) {
        if (result == 0 && row.role == role) {
            runName = row.name;
            result = 1;
        }
    });
    return result;
}

int StructModelRoleMarshal::getOrderedRunNameListAllSources(KorArray<KorString>& names) {
    std::map<int, KorString> byRole;
    forAllRoles([&](const StructModelRole& row) { byRole.emplace(row.role, row.name); });
    names.clear();
    for (const auto& [role, name] : byRole)
        if (names.find(name) < 0)
            names.append(name);
    return names.length();
}
