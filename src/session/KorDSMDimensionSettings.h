#pragma once

#include "base/Result.h"
#include "records/KorDSNDefinitions.h"
#include "records/TableSchema.h"

#include <optional>
#include <vector>

/// The values of a source that new dimensions and titles start from: named numeric defaults, defaults of new
/// titles, and the text sizes and scales that lists offer. They are changed on a copy, which is stored as one
/// step of undo.
class KorDSMDimensionSettings {
public:
    enum class eGroup : std::uint8_t { kDefaults, kTitles, kTextSizes, kScales };
    static constexpr int kNumberOfGroups = 4;

    /// One value. Those that the source lacks and Standard has are there too, without a value.
    struct Setting {
        eGroup group = eGroup::kDefaults;
        std::int32_t key = 0;           ///< of its row; 0: there is none yet
        KorString name;                 ///< of its row
        KorString text;                 ///< as users read it; empty: no value
        KorString standard;             ///< the same in Standard; empty: it has none
        KorString unit;                 ///< empty: none, or printed with the value
        std::vector<KorString> choices; ///< of a value that is chosen; empty: it is typed

        /// What the value is called.
        KorString caption() const;
    };

    /// Reads the settings of an open source.
    explicit KorDSMDimensionSettings(SourceId source);

    const std::vector<Setting>& settings() const { return m_settings; }
    /// Why nothing can be changed in the source; empty when something can.
    KorString whyReadOnly() const;
    static KorString groupCaption(eGroup group);

    /// Gives a value another text, or says in a word why that is none.
    Result<> change(std::size_t index, const KorString& text);
    /// Whether the value is another one than Standard has, which `reset` gives it.
    bool canReset(std::size_t index) const;
    void reset(std::size_t index);
    /// Whether a group is a list, whose values come and go.
    static bool isList(eGroup group) { return group == eGroup::kTextSizes || group == eGroup::kScales; }
    /// Puts a text size or scale into its list, or says in a word why not.
    Result<> add(eGroup group, const KorString& text);
    void remove(std::size_t index);

    bool isChanged() const;
    /// Stores what was changed. On failure nothing is, and a sentence says why.
    Result<> store() const;

private:
    void read();
    void readGroup(eGroup group);
    std::optional<CellValue> parsed(const Setting& setting, const KorString& text) const;
    bool write(const Setting& setting) const;

    SourceId m_source;
    std::vector<Setting> m_settings;
    std::vector<Setting> m_stored; // as they were read
};
