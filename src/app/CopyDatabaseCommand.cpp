#include "app/Commands.h"
#include "app/Console.h"
#include "app/HeldSignals.h"
#include "app/ServerOptions.h"
#include "app/ServerPlace.h"
#include "base/Translation.h"
#include "data/exchange/CopiedDatabase.h"
#include "data/store/LockWait.h"
#include "data/store/SqliteStore.h"
#include "session/KorDSMPasswords.h"

namespace {

struct Opened : Result<> {
    std::unique_ptr<StyleStore> store = {};
};

Opened openToRead(const SourceSettings::Place& place) {
    if (!place.error.empty())
        return {{place.error}};
    if (place.file.empty()) {
        OpenedServer opened = KorDSMPasswords::current().open(place.server, OdbcStore::eMode::kRead);
        return {{opened.error}, std::move(opened.store)};
    }
    OpenedStore opened =
        SqliteStore::open(place.file.string(), SqliteStore::eMode::kRead, SqliteStore::eCheck::kFull);
    return {{opened.error}, std::move(opened.store)};
}

// What waits for a server does not go on either.
class StopsWaiting {
public:
    explicit StopsWaiting(const HeldSignals& held) {
        LockWait::setAsk([this, &held](const std::string& name, std::chrono::milliseconds waited) {
            return !(m_stops && held.haveCome()) && (!m_before || m_before(name, waited));
        }).swap(m_before);
    }
    /// From now on what was begun is waited for to its end.
    void letFinish() { m_stops = false; }
    bool stops() const { return m_stops; }
    ~StopsWaiting() { LockWait::setAsk(std::move(m_before)); }
    StopsWaiting(const StopsWaiting&) = delete;
    StopsWaiting& operator=(const StopsWaiting&) = delete;

private:
    bool m_stops = true;
    LockWait::Ask m_before;
};

Result<> copyToServer(StyleStore& from, const ServerAddress& address,
                      const CopiedDatabase::Progress& progress, StopsWaiting& stops) {
    OpenedServer to = KorDSMPasswords::current().open(address, OdbcStore::eMode::kWrite);
    if (!to.ok())
        return {to.error};
    Result<> result = to.store->begin(); // from now on nobody else adds rows
    if (result)
        result = CopiedDatabase::refuseRows(*to.store);
    if (result)
        result = CopiedDatabase::copy(from, *to.store, progress);
    const bool isCopied = result.ok();
    if (isCopied) {
        stops.letFinish(); // whether it is stored must be known
        result = to.store->commit();
    }
    if (isCopied && !result && to.store->outcome() == StyleStore::eOutcome::kUnknown)
        return Result<>::failure(KorString::format(
            translated(
                "The connection to \"%s\" was lost while the copy was being stored, so it is not known "
                "whether it was: it is there as a whole or not at all; look at \"detailstyles server "
                "status\"."),
            {address.name}));
    if (!result)
        to.store->rollback();
    return result;
}

} // namespace

int copyDatabaseCommand(DataFolder& folder, const CopyDatabaseOptions& options) {
    HeldSignals held;
    StopsWaiting stops(held);
    const Opened from = openToRead(ServerPlace::placeOf(folder, options.from));
    const SourceSettings::Place to = ServerPlace::placeOf(folder, options.to);
    Result<> result{from.error.empty() ? to.error : from.error};
    int all = 0;
    const auto progress = [&](const TableSchema& table, int rows) {
        all += rows;
        Console::complain(KorString::format(translated("%s: %s rows"),
                                            {table.kindName(), KorString::number(std::int64_t{rows})}));
        return !held.haveCome();
    };
    const auto fill = [&](StyleStore& store) { return CopiedDatabase::copy(*from.store, store, progress); };
    if (result)
        result = to.file.empty() ? copyToServer(*from.store, to.server, progress, stops)
                                 : SqliteStore::createWith(to.file.string(), fill, false);
    if (!result) {
        const bool isStopped = stops.stops() && held.haveCome();
        Console::complain(isStopped ? translated("The copy was stopped, so nothing was copied.")
                                    : KorString(result.error));
        return kExitFailed;
    }
    held.forget();
    Console::sayStored(KorString::format(translated("Copied %s rows of \"%s\" to \"%s\"."),
                                         {KorString::number(std::int64_t{all}), from.store->name(),
                                          to.file.empty() ? to.server.name : to.file.string()}));
    return kExitDone;
}
