#pragma once

#include "base/KorString.h"
#include "records/TableTypes.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <variant>
#include <vector>

struct StructRecord;

/// One cell as it travels between stores, the pending log and callers.
using CellValue = std::variant<std::int64_t, double, KorString>;

/// What a column holds. Integer, flag and reference cells are 32-bit integers, real, length and
/// scale cells doubles; lengths are millimetres, scales paper length over model length.
enum class eColumnKind : std::uint8_t { kInteger, kFlag, kReference, kReal, kLength, kScale, kText };

/// What a reference means for the row that holds it.
enum class eReferenceRole : std::uint8_t {
    kUses,       ///< the row uses the target; counts for sharing and for "in use"
    kPartOf,     ///< the row is a part of the target; it is copied and deleted with it
    kFiledUnder, ///< the target is a group or category in which the row is filed
    kIdentifies, ///< the row tells the host of the target; exported with it, written and deleted on its own
};

/// A number that means something by itself, and what it is called.
struct NamedValue {
    std::int32_t value = 0;
    std::string name;
};

/// One column of one table. Numbers are the attribute indexes of `KorOdbcMan::setAttribute`; number 0 is
/// the key and cannot be written, number 1 the run name.
struct Column {
    int number = 0;
    std::string name; ///< SQL and command line name, words joined by '_'
    eColumnKind kind = eColumnKind::kInteger;
    std::size_t offset = 0; ///< of the member in its record
    eTableType target = kNoTable;
    eReferenceRole role = eReferenceRole::kUses;
    int slot = -1; ///< place, from 0, among the slots of one kind; -1 for a column that is no slot
    int since = 1; ///< version of the schema in which databases got the column
    double minimum = -std::numeric_limits<double>::infinity(); ///< allowed range of numbers; what a store
    double maximum = std::numeric_limits<double>::infinity();  ///< holds outside it is kept and reported
    std::vector<NamedValue> valueNames; ///< what users choose from, in the order offered; a value without a
                                        ///< name may be stored all the same where the range allows it
    std::vector<NamedValue> specialValues; ///< amounts that mean something else, such as -1 for the default
    bool isColor = false; ///< drawing colours: 1 to 255, 0 that of the block, 256 that of the layer

    bool isText() const { return kind == eColumnKind::kText; }
    bool isReal() const {
        return kind == eColumnKind::kReal || kind == eColumnKind::kLength || kind == eColumnKind::kScale;
    }
    bool isInteger() const { return !isText() && !isReal(); }
    bool isSlot() const { return slot >= 0; }
    bool isReference() const { return kind == eColumnKind::kReference; }
    /// Whether users choose the value from a list instead of typing it.
    bool isChosen() const { return isReference() || isColor || !valueNames.empty(); }

    /// Whether a cell can hold the value at all: text that is clean UTF-8, or a finite number that loses
    /// nothing in the column's type.
    bool canHold(const CellValue& value) const;
    /// Whether a number lies in the allowed range.
    bool isInRange(double value) const { return value >= minimum && value <= maximum; }

    /// The cell of `record`, which must be a record of this column's table.
    CellValue read(const StructRecord* record) const;
    /// Stores a value of the column's own type; a number of the other kind is converted. Returns false, and
    /// changes nothing, when the value does not fit the column's type.
    bool write(StructRecord* record, const CellValue& value) const;

    std::int32_t& integerIn(StructRecord* record) const { return at<std::int32_t>(record); }
    std::int32_t integerIn(const StructRecord* record) const { return at<std::int32_t>(record); }
    double& realIn(StructRecord* record) const { return at<double>(record); }
    double realIn(const StructRecord* record) const { return at<double>(record); }
    KorString& textIn(StructRecord* record) const { return at<KorString>(record); }
    const KorString& textIn(const StructRecord* record) const { return at<KorString>(record); }

private:
    template <typename T>
    T& at(StructRecord* record) const {
        return *reinterpret_cast<T*>(reinterpret_cast<std::byte*>(record) + offset);
    }
    template <typename T>
    const T& at(const StructRecord* record) const {
        return *reinterpret_cast<const T*>(reinterpret_cast<const std::byte*>(record) + offset);
    }
};
