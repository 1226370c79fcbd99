#pragma once

#include "data/StyleDatabases.h"
#include "records/RowRef.h"

#include <map>
#include <optional>

/// Lets what a replay made as one change stand as the commands that it came from, as far as it still has to
/// do with them, so that they can be named and taken back one by one.
class ReplayedCommands {
public:
    /// Before the replay: copies what is pending, and what stands in the log `lost` that is brought back, or
    /// null.
    ReplayedCommands(StyleDatabases& databases, const PendingLog* lost);

    /// After the replay: of the conflicts in `changes` only those in `mine` are decided for what this program
    /// wants. Deletes new records that a command made for a cell that is not to refer to them now, where
    /// nothing else uses them.
    void dropWhatWasMadeFor(const std::vector<OutsideChange>& changes,
                            const std::vector<OutsideChange>& mine);
    /// After it, and after what was kept of its conflicts. What had been taken back can be brought again as
    /// far as it fits, unless there were any.
    void settle(const std::vector<OutsideChange>& changes);

private:
    using Row = std::pair<SourceId, RowRef>;
    using Steps = std::vector<PendingStep>;
    /// A step of a command that was made before the replay.
    struct Made {
        std::size_t command = 0;
        PendingStep step;
        bool isReplayed = false;
        std::optional<PendingStep> now = {}; ///< what the replay made of it
    };
    using Places = std::vector<std::size_t>; ///< in `m_made`, oldest first

    void add(const PendingLog::Commands& commands);
    void letStand(const std::vector<OutsideChange>& changes);
    void dropMadeFor(const OutsideChange& change, const WantedCell& cell);
    bool isMadeFor(const OutsideChange& change, RowRef row, const WantedCell& cell) const;
    void follow(const OutsideChange& change);
    std::map<Row, Steps> replayed() const;
    std::map<Row, Places> placesOfRows() const;
    void place(const Steps& steps, const Places& made);
    bool placeAppended(const Steps& steps, const Places& made);
    bool placeDeleted(const Steps& steps, const Places& made);
    bool placeCells(const Steps& steps, const Places& made);
    void placeChain(const Places& chain, CellValue before, const CellValue& after, bool mends);
    Places chainOf(const Places& made, const Column& column) const;
    bool canHold(const PendingStep& step, const Column& column, const CellValue& value) const;
    PendingLog::Commands commands() const;

    StyleDatabases& m_databases;
    bool m_bringsBack;
    int m_lastGroup = 0;
    std::size_t m_firstLost = 0; ///< of `m_made`
    std::vector<KorString> m_labels;
    std::vector<Made> m_made;
    Steps m_takenBack;
    std::map<std::size_t, Steps> m_rest; ///< by command: what comes of none of its steps
};
