#pragma once

#include "model/KorDSMDefines.h"
#include "records/Column.h"
#include "records/KorOdbcKey.h"

#include <array>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <span>

class KorDSMDatabaseItem;
class KorDsmAddInContentItem;
struct StructRecord;
struct SectionLoadProgress;

/// A few numbers of a row in a constant table, none of them 0.
class FewNumbers {
public:
    constexpr FewNumbers() = default;
    constexpr FewNumbers(std::initializer_list<int> numbers) {
        for (const int number : numbers)
            m_numbers.at(m_count++) = number;
    }

    constexpr const int* begin() const { return m_numbers.data(); }
    constexpr const int* end() const { return m_numbers.data() + m_count; }
    constexpr bool isEmpty() const { return m_count == 0; }

private:
    std::array<int, 5> m_numbers{};
    std::size_t m_count = 0;
};

/// A family: the records of one table, as the editor shows them. Whatever tells families apart reads its row.
struct KorDSMFamily {
    using eItemType = KorDSMDefines::eItemType;

    // In the place of a prompt.
    static constexpr int kEntryText = -1; ///< the text of the item's tree entry
    static constexpr int kTableName = -2; ///< what rows of the table are called

    eItemType type = KorDSMDefines::kNoType; ///< of its items
    eTableType table = kNoTable;

    // The items.

    int icon = 0;               ///< index in the icon table
    bool startsExpanded = true; ///< false: the dependent children are made when the entry is opened
    bool bringsChildren =
        false; ///< an item has its children from the start; they are read anew when it is opened
    bool hasEqualItems = false; ///< a record can appear at several places in the tree
    /// A new item with a default record; null for records that stand in no tree.
    std::unique_ptr<KorDSMDatabaseItem> (*make)() = nullptr;
    /// Reads from the current source what an item shows beyond its record; null: nothing.
    void (*complete)(KorDSMDatabaseItem& item) = nullptr;
    /// Makes the dependent children from the current source; null: there are none.
    void (*addDependents)(KorDSMDatabaseItem& item) = nullptr;

    // Filing.

    eItemType group = KorDSMDefines::kNoType; ///< under which its records are filed; `kNoType`: under none
    eTableType filedBy = kNoTable; ///< whose rows file its records for the host; `kNoTable`: its own
    bool isCategory = false;       ///< a group that is called a category and stands in the order of names
    /// Of a group: the order in which a user is offered several; null for other records.
    bool (*isBefore)(const StructRecord& a, const StructRecord& b) = nullptr;

    // Words, as prompts of category "UPS".

    int statusPrompt = 0;            ///< what the status bar says of an item; 0: nothing
    int confirmationPrompt = 0;      ///< what a shared record is called; 0: just an item
    int titlePrompt = 0;             ///< title of the dialog that asks for a name; 0: that of the label
    int namePrompt = 0;              ///< what the name is a name of; 0: such records are not named
    bool proposesName = false;       ///< that dialog proposes a name
    eTableType namedLike = kNoTable; ///< whose names the dialog that also asks for a group proposes;
                                     ///< `kNoTable`: its own

    // Pages and commands.

    const char* pageGroup = ""; ///< name under which the group of pages is remembered
    FewNumbers pages = {};      ///< template numbers, in tab order
    FewNumbers listedBy = {};   ///< codes of the pages that list its records
    bool isExchanged = false;   ///< can be exported and imported on its own

    bool isFiled() const { return group != KorDSMDefines::kNoType; }
    bool isGroup() const { return isBefore != nullptr; }
};

/// A section of the editor: the records of one family in their groups.
struct KorDSMSection {
    KorDSMDefines::eViewSections section = KorDSMDefines::kViewDetailStyles;
    KorDSMDefines::eItemType type = KorDSMDefines::kNoType; ///< of the section's item
    int namePrompt = 0;                                     ///< "UPS"
    int emptyPrompt = 0;                                    ///< "DSM": what to do where nothing is in it yet
    int tree = 0;                                           ///< number of its tree control
    int button = 0;                                         ///< number of its button
    int bitmap = 0;                                         ///< picture of the button
    int checkedBitmap = 0;                                  ///< and when the section is shown
    KorDSMDefines::eItemType family = KorDSMDefines::kNoType;
    /// A new item for the content of one database or add-in.
    std::unique_ptr<KorDsmAddInContentItem> (*makeContent)() = nullptr;
    /// Loads the whole content from the current source when the editor opens; null: only the groups are
    /// loaded then, and their records when the content is opened for the first time.
    void (*load)(KorDsmAddInContentItem& content, SectionLoadProgress& progress) = nullptr;
};

namespace KorDSMFamilies {

/// All families, in the order in which their pages are made, and all sections by their number.
std::span<const KorDSMFamily> all();
std::span<const KorDSMSection> sections();

/// The family of the items of a type, or of the records of a table; null when there is none.
const KorDSMFamily* of(KorDSMDefines::eItemType type);
const KorDSMFamily* of(eTableType table);
/// The family that is filed under groups of this one, or null.
const KorDSMFamily* filedUnder(const KorDSMFamily& group);

const KorDSMSection& section(KorDSMDefines::eViewSections section);
/// Whether an item of this type has its children from the start.
bool bringsChildren(KorDSMDefines::eItemType type);

/// The section in whose items records of the family are filed or are the groups; null for other families.
const KorDSMSection* sectionOf(const KorDSMFamily& family);
/// The section whose own item has this type, or null.
const KorDSMSection* sectionOfType(KorDSMDefines::eItemType type);

/// The column with which rows of the table are filed under a group or category, or null.
const Column* filingColumn(eTableType table);

/// A new item of the family, which must stand in the trees, for a record of the current source.
std::unique_ptr<KorDSMDatabaseItem> makeItem(const KorDSMFamily& family, const StructRecord& record);

} // namespace KorDSMFamilies

namespace KorDSMDefines {

/// Whether an item of this type shows a record that can appear at several places in the tree.
bool canHaveEqualItems(eItemType type);
/// Whether an item of this type is a category or group that records are filed under.
bool isGroupType(eItemType type);
bool isSectionType(eItemType type);

} // namespace KorDSMDefines
