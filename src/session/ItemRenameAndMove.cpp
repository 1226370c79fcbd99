#include "model/KorDSMFamilies.h"
#include "services/Prompts.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMTwins.h"
#include "session/PendingGroup.h"

// Renaming, and filing under another group.

namespace KorDSMItemCommands {

using namespace ItemCommandParts;

namespace {

constexpr int kMoving = 247; // "moving of "%s""

constexpr int kShownAsPart = 236;  // not movable: shown as a part of another record
constexpr int kOtherKind = 237;    // not movable: groups of another kind
constexpr int kOtherSource = 238;  // not movable: another database
constexpr int kAlreadyThere = 239; // not movable: there already

} // namespace

CommandResult renameItem(KorDSMDatabaseItem& item, const KorString& newName) {
    CommandResult outcome;
    if (!item.record())
        return outcome;
    const SourceRequest source(item);
    const auto renamed =
        KorDSMRecordCommands::rename(KorDSMItemSource::sourceOf(&item), rowOf(item), newName);
    if (!outcome.settle(static_cast<const WriteResult&>(renamed)))
        return outcome;
    KorDSMTwins::recordWritten(item);
    KorDSMTwins::showName(item);
    outcome.notice = noticeFor(item, DsmListChanged::kRenamed);
    return outcome;
}

namespace {

// The row and column in which it is written where the item is filed.
struct Filing {
    eTableType table = kNoTable;
    std::int32_t key = 0;
    int column = 0;
};

Filing filingOf(const KorDSMDatabaseItem& item) {
    Filing filing{item.tableType(), item.recordKey(), 0};
    if (needsMaster(item.tableType())) {
        StructDetailMaster master;
        readMaster(rowOf(item), master);
        filing = {kTableDetailMaster, master.key, 0};
    }
    filing.column = KorDSMFamilies::filingColumn(filing.table)->number;
    return filing;
}

} // namespace

KorString whyNotMovable(const KorDSMDatabaseItem& item, const KorDSMDatabaseItem& group) {
    const auto reason = [](int number) { return Prompts::dsm(number); };
    const KorDSMFamily* family = KorDSMFamilies::of(item.type());
    const SourceRequest source(item);
    if (!family || !family->isFiled() || group.type() != family->group)
        return reason(kOtherKind);
    if (!item.parent() || item.parent()->type() != family->group)
        return reason(kShownAsPart);
    if (KorDSMItemSource::sourceOf(&item) != KorDSMItemSource::sourceOf(&group))
        return reason(kOtherSource);
    if (item.parent() == &group)
        return reason(kAlreadyThere);
    return whyNotWritable(item);
}

CommandResult moveToGroup(KorDSMDatabaseItem& item, KorDSMDatabaseItem& group) {
    CommandResult outcome;
    outcome.error = whyNotMovable(item, group).toStdString();
    if (!outcome.error.empty())
        return outcome;
    const SourceRequest source(item);
    const Filing filing = filingOf(item);
    PendingGroup pending(label(kMoving, item.record()->name));
    if (!outcome.settle(KorDSMGuardedWrite::setField(filing.table, KorOdbcKey(filing.key), filing.column,
                                                     std::int64_t{group.recordKey()})))
        return outcome;
    KorDSMTwins::recordWritten(item);
    group.addChild(item.parent()->releaseChild(item));
    outcome.notice = noticeFor(item, DsmListChanged::kReload);
    return outcome;
}

} // namespace KorDSMItemCommands
