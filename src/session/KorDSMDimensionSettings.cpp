#include "session/KorDSMDimensionSettings.h"

#include "data/StyleDatabases.h"
#include "data/WriteRefusal.h"
#include "model/CurrentUnits.h"
#include "model/KorDSMMessages.h"
#include "operations/KorDSNManager.h"
#include "records/TableDeclarations.h"
#include "services/Prompts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMValueText.h"
#include "session/KorDSMWhereUsed.h"
#include "session/PendingGroup.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using Setting = KorDSMDimensionSettings::Setting;
using eGroup = KorDSMDimensionSettings::eGroup;

constexpr int kFirstGroupText = 730; // in the order of eGroup
constexpr int kStep = 740;           // "dimension settings of %s"
constexpr int kNoNumber = 741;       // "not a number"
constexpr int kNoSize = 742;         // "not above 0"
constexpr int kThere = 743;          // "there already"
constexpr int kMetric = 744;
constexpr int kImperial = 745;
constexpr int kNo = 746;
constexpr int kYes = 747;
constexpr std::int32_t kTitles = 40;
constexpr int kNameColumn = 1;

struct GroupRow {
    eTableType table;
    const char* column; // that holds the value
};
constexpr std::array<GroupRow, KorDSMDimensionSettings::kNumberOfGroups> kGroups = {{
    {kTableNumericDefault, "value"},
    {kTableCreationDefault, "value"},
    {kTableTextSize, "size"},
    {kTableScale, "factor"},
}};

const GroupRow& rowOf(eGroup group) {
    return kGroups.at(static_cast<std::size_t>(group));
}
const Column& columnOf(eGroup group) {
    return *findTable(rowOf(group).table)->column(std::string_view(rowOf(group).column));
}

enum class eKind : std::uint8_t { kNumber, kText, kPaper, kLength, kUnits, kFlag, kScale };

// The values that the program knows by name.
struct KnownRow {
    const char* name;
    int prompt;
    eKind kind;
};
constexpr KnownRow kKnown[] = {
    {"C01_DistanceUnit", 790, eKind::kUnits},   {"C40_ClipLineDistance", 791, eKind::kLength},
    {"C40_ClipExtension", 792, eKind::kLength}, {"C40_DimLineDistance", 793, eKind::kPaper},
    {"C40_ViewDistance", 794, eKind::kPaper},   {"TextFont", 795, eKind::kText},
    {"TitleHeight", 796, eKind::kPaper},        {"TitleColor", 797, eKind::kNumber},
    {"TitleBold", 798, eKind::kFlag},           {"TitleItalic", 799, eKind::kFlag},
    {"TitleUnderline", 800, eKind::kFlag},
};

const KnownRow* knownAs(const KorString& name) {
    const auto* it = std::ranges::find_if(kKnown, [&](const KnownRow& row) { return name == row.name; });
    return it == std::end(kKnown) ? nullptr : it;
}

eKind kindOf(const Setting& setting) {
    if (setting.group == eGroup::kTextSizes)
        return eKind::kPaper;
    if (setting.group == eGroup::kScales)
        return eKind::kScale;
    const KnownRow* known = knownAs(setting.name);
    return known ? known->kind : setting.group == eGroup::kDefaults ? eKind::kNumber : eKind::kText;
}

int unitKindOf(eKind kind) {
    return kind == eKind::kPaper    ? KorUnitsManager::kPaper
           : kind == eKind::kLength ? KorUnitsManager::kLength
                                    : KorUnitsManager::kPlain;
}

std::vector<KorString> choicesOf(eKind kind) {
    if (kind == eKind::kUnits)
        return {Prompts::dsm(kMetric), Prompts::dsm(kImperial)};
    if (kind == eKind::kFlag)
        return {Prompts::dsm(kNo), Prompts::dsm(kYes)};
    return {};
}

// A number as creation defaults keep it, with a point.
std::optional<double> plainNumber(const KorString& text) {
    const std::string digits = text.toStdString();
    char* end = nullptr;
    const double number = std::strtod(digits.c_str(), &end);
    return !digits.empty() && *end == '\0' && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

KorString plainText(double number) {
    char digits[40];
    std::snprintf(digits, sizeof digits, "%.12g", number);
    return KorString(digits);
}

KorString textOf(eKind kind, const CellValue& value) {
    const auto* kept = std::get_if<KorString>(&value);
    const auto* real = std::get_if<double>(&value);
    const std::optional<double> number = real   ? std::optional(*real)
                                         : kept ? plainNumber(*kept)
                                                : std::nullopt;
    if (kept && (kind == eKind::kText || !number))
        return *kept;
    if (!number)
        return {};
    if (const auto choices = choicesOf(kind); !choices.empty())
        return choices[*number == 1.0 ? 1 : 0];
    return kind == eKind::kScale ? KorDSMValueText::scaleText(*number)
                                 : getUnitsOfCurrentDatabase().format(*number, unitKindOf(kind));
}

// Titles alone: other families have nothing to do with dimensions.
bool belongs(eGroup group, const StructRecord& record) {
    if (group == eGroup::kTitles)
        return static_cast<const StructCreationDefault&>(record).family == kTitles;
    return group != eGroup::kScales ||
           static_cast<const StructScale&>(record).unitType == getScaleUnitsOfCurrentDatabase();
}

} // namespace

KorString KorDSMDimensionSettings::Setting::caption() const {
    const KnownRow* known = isList(group) ? nullptr : knownAs(name);
    return known ? Prompts::dsm(known->prompt) : name;
}

KorString KorDSMDimensionSettings::groupCaption(eGroup group) {
    return Prompts::dsm(kFirstGroupText + static_cast<int>(group));
}

KorDSMDimensionSettings::KorDSMDimensionSettings(SourceId source) : m_source(source) {
    read();
}

KorString KorDSMDimensionSettings::whyReadOnly() const {
    return KorDSMItemCommands::whyNotWritable(m_source);
}

void KorDSMDimensionSettings::read() {
    const KorDSNRequest request(m_source.dsn, m_source.index);
    for (int i = 0; i < kNumberOfGroups; ++i)
        readGroup(static_cast<eGroup>(i));
    m_stored = m_settings;
}

void KorDSMDimensionSettings::readGroup(eGroup group) {
    const auto each = [group](SourceId id, auto take) {
        StyleSource* source = StyleDatabases::current().source(id);
        const RowArray* rows = source ? &source->table(rowOf(group).table).rows() : nullptr;
        for (int i = 0; rows && i < rows->size(); ++i)
            if (belongs(group, rows->at(i)))
                take(rows->at(i));
    };
    const std::size_t first = m_settings.size();
    const auto settingOf = [&](const StructRecord& record) {
        Setting setting{group, record.key, record.name, {}, {}, {}, {}};
        const eKind kind = kindOf(setting);
        setting.text = textOf(kind, columnOf(group).read(&record));
        setting.choices = choicesOf(kind);
        if (kind == eKind::kPaper || kind == eKind::kLength)
            setting.unit = KorString(getUnitsOfCurrentDatabase().getUnit(unitKindOf(kind)).symbol());
        return setting;
    };
    each(m_source, [&](const StructRecord& record) { m_settings.push_back(settingOf(record)); });
    each(SourceId::standard(), [&](const StructRecord& record) {
        Setting theirs = settingOf(record);
        const auto mine =
            std::find_if(m_settings.begin() + static_cast<std::ptrdiff_t>(first), m_settings.end(),
                         [&](const Setting& setting) { return setting.name == theirs.name; });
        if (mine != m_settings.end()) {
            mine->standard = theirs.text;
        } else if (!isList(group)) {
            theirs.key = 0;
            theirs.standard = std::exchange(theirs.text, KorString());
            m_settings.push_back(theirs);
        }
    });
}

// Nothing where the text is no value of its kind.
std::optional<CellValue> KorDSMDimensionSettings::parsed(const Setting& setting,
                                                         const KorString& text) const {
    const KorDSNRequest request(m_source.dsn, m_source.index);
    const eKind kind = kindOf(setting);
    if (kind == eKind::kText)
        return CellValue(text);
    std::optional<double> number;
    if (const auto it = std::ranges::find(setting.choices, text); it != setting.choices.end())
        number = static_cast<double>(it - setting.choices.begin());
    else if (kind == eKind::kScale)
        number = kor_odbc_getSpecificScale(text);
    else if (setting.choices.empty())
        number = getUnitsOfCurrentDatabase().parse(text, unitKindOf(kind));
    if (!number || !std::isfinite(*number) || (isList(setting.group) && *number <= 0.0))
        return std::nullopt;
    return setting.group == eGroup::kTitles ? CellValue(plainText(*number)) : CellValue(*number);
}

Result<> KorDSMDimensionSettings::change(std::size_t index, const KorString& text) {
    Setting& setting = m_settings.at(index);
    const std::optional<CellValue> value = parsed(setting, text.trimmed());
    if (!value)
        return Result<>::failure(Prompts::dsm(isList(setting.group) ? kNoSize : kNoNumber));
    const KorDSNRequest request(m_source.dsn, m_source.index);
    const KorString before = std::exchange(setting.text, textOf(kindOf(setting), *value));
    if (isList(setting.group) && setting.name == before)
        setting.name = setting.text; // it is called as it is
    return {};
}

bool KorDSMDimensionSettings::canReset(std::size_t index) const {
    const Setting& setting = m_settings.at(index);
    return !setting.standard.isEmpty() && setting.standard != setting.text;
}

void KorDSMDimensionSettings::reset(std::size_t index) {
    if (canReset(index))
        m_settings[index].text = m_settings[index].standard;
}

Result<> KorDSMDimensionSettings::add(eGroup group, const KorString& text) {
    Setting setting{group, 0, {}, {}, {}, {}, {}};
    const std::optional<CellValue> value = parsed(setting, text.trimmed());
    if (!value)
        return Result<>::failure(Prompts::dsm(kNoSize));
    const KorDSNRequest request(m_source.dsn, m_source.index);
    setting.text = textOf(kindOf(setting), *value);
    setting.name = setting.text;
    const auto isSame = [&](const Setting& other) {
        return other.group == group && other.text == setting.text;
    };
    if (std::ranges::any_of(m_settings, isSame))
        return Result<>::failure(Prompts::dsm(kThere));
    if (group == eGroup::kTextSizes)
        setting.unit = KorString(getUnitsOfCurrentDatabase().getUnit(KorUnitsManager::kPaper).symbol());
    const auto behind = std::find_if(m_settings.rbegin(), m_settings.rend(),
                                     [group](const Setting& other) { return other.group <= group; });
    m_settings.insert(behind.base(), setting);
    return {};
}

void KorDSMDimensionSettings::remove(std::size_t index) {
    if (isList(m_settings.at(index).group))
        m_settings.erase(m_settings.begin() + static_cast<std::ptrdiff_t>(index));
}

bool KorDSMDimensionSettings::isChanged() const {
    return !std::ranges::equal(m_settings, m_stored, [](const Setting& a, const Setting& b) {
        return a.group == b.group && a.key == b.key && a.text == b.text;
    });
}

bool KorDSMDimensionSettings::write(const Setting& setting) const {
    const std::optional<CellValue> value = parsed(setting, setting.text);
    const eTableType table = rowOf(setting.group).table;
    const Column& column = columnOf(setting.group);
    if (!value)
        return setting.text.isEmpty(); // it has no value yet
    if (setting.key != 0)
        return KorDSMGuardedWrite::setAttributeValue(table, KorOdbcKey(setting.key), column.number, *value)
                   .isStored() &&
               KorDSMGuardedWrite::setAttributeValue(table, KorOdbcKey(setting.key), kNameColumn,
                                                     setting.name)
                   .isStored();
    StyleDatabases& databases = StyleDatabases::current();
    const auto record = databases.here()->table(table).rows().copyOf(nullptr);
    record->name = setting.name;
    column.write(record.get(), *value);
    if (setting.group == eGroup::kTitles)
        static_cast<StructCreationDefault&>(*record).family = kTitles;
    if (setting.group == eGroup::kScales) {
        auto& scale = static_cast<StructScale&>(*record);
        scale.unitType = getScaleUnitsOfCurrentDatabase();
        for (const Setting& other : m_stored)
            if (other.group == eGroup::kScales)
                scale.groupKey = static_cast<const StructScale*>(
                                     databases.here()->table(table).find(KorOdbcKey(other.key)))
                                     ->groupKey;
    }
    return databases.append(table, *record).isStored();
}

Result<> KorDSMDimensionSettings::store() const {
    if (KorString why = whyReadOnly(); !why.isEmpty())
        return Result<>::failure(why);
    const KorDSNRequest request(m_source.dsn, m_source.index);
    PendingGroup group(KorString::format(Prompts::dsm(kStep), {KorDSMWhereUsed::sourceName(m_source)}));
    bool isDone = true;
    for (const Setting& setting : m_settings) {
        const auto before = std::ranges::find_if(m_stored, [&](const Setting& other) {
            return other.group == setting.group && other.key == setting.key && other.name == setting.name;
        });
        if (before == m_stored.end() || before->text != setting.text)
            isDone = isDone && write(setting);
    }
    for (const Setting& before : m_stored) {
        const auto isSame = [&](const Setting& other) {
            return other.group == before.group && other.key == before.key;
        };
        if (before.key != 0 && std::ranges::none_of(m_settings, isSame))
            isDone = isDone && StyleDatabases::current()
                                   .remove(rowOf(before.group).table, KorOdbcKey(before.key))
                                   .isStored();
    }
    if (isDone) {
        KorDSMMainWindow::sendMessage(DsmDataChanged());
        return {};
    }
    group.takeBack();
    return Result<>::failure(KorString(WriteRefusal::noRow().error));
}
