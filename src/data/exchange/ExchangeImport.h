#pragma once

#include "data/StyleDatabases.h"
#include "data/exchange/ExchangeProgress.h"
#include "data/exchange/MasterNumbers.h"
#include "data/exchange/RowMatcher.h"

#include <map>
#include <set>

/// Copies rows of one open source with everything that they depend on into another one, as pending changes.
/// The caller has made sure that the target may be edited, makes it current and keeps the changes in one
/// group.
class ExchangeImport {
public:
    ExchangeImport(StyleDatabases& databases, StyleSource& from, StyleSource& to, ExchangeProgress& progress,
                   ImportReport& report);

    /// What to do with rows of the same name and other content; both are kept at first. `single` says it of
    /// some rows apart.
    void setNamesakes(eNamesakes namesakes, const std::map<RowRef, eNamesakes>& single = {}) {
        m_namesakes = namesakes;
        m_single = single;
    }

    /// Brings the categories in which these rows are filed. Others, in which only views are listed, don't
    /// come along: a listing comes where its category is in the target by then.
    void bringPlaces(const std::vector<RowRef>& rows);
    /// Files these rows under a group of the target, where they are new there, instead of a counterpart of
    /// their own group, which does not come along then. Rows that are filed in groups of another kind are
    /// left to their own.
    void fileUnder(RowRef group, const std::vector<RowRef>& rows);
    /// Brings what a row depends on, one step of progress each. Returns false when the user has cancelled or
    /// the target refused a row (see `isRefused`).
    bool bringClosure(RowRef row);
    /// Brings the row with everything that it depends on, and tells the host of it where the source did. The
    /// result as for `bringClosure`. With a name, which must be free, the row itself comes in as a new one of
    /// that name, whatever the target holds.
    bool bring(RowRef row, const KorString& asName = {});
    /// Brings a row that others refer to with everything that it depends on, and returns the key of its
    /// counterpart; 0 as `bring` returns false.
    std::int32_t bringTarget(RowRef row);
    /// Brings the lists that are looked up, such as scales, where the target has nothing in them: without the
    /// list of scales a view that takes the next larger one is drawn in another. Returns false when the
    /// target refused a row.
    bool bringMissingLists();
    bool isRefused() const { return m_refused; }
    /// Why the target refused a row, where that is known: one sentence.
    const std::string& refusal() const { return m_refusal; }

private:
    std::int32_t counterpart(RowRef row);
    std::vector<RowRef> groupsOf(RowRef row, eTableType kind);
    void bringTargets(RowRef row);
    void bringWhatItUses(RowRef row);
    std::int32_t bringNew(RowRef row, const KorString& asName);
    std::int32_t append(RowRef row, const KorString& asName);
    bool hasPlace(const Referrer& listing);
    void appendPart(const Referrer& part, const StructRecord& whole);
    void identify(RowRef row, std::int32_t key);
    bool appendRecord(eTableType table, StructRecord& record);
    eNamesakes namesakesOf(RowRef row) const;
    void note(RowRef row, ImportReport::Row::eFate fate);
    std::int32_t replace(RowRef row, const StructRecord& theirs);
    void renameIfTaken(eTableType table, StructRecord& record);
    void file(RowRef row, eTableType table, StructRecord& record) const;

    StyleDatabases& m_databases;
    StyleSource& m_from;
    StyleSource& m_to;
    ExchangeProgress& m_progress;
    ImportReport& m_report;
    RowMatcher m_matcher;
    std::optional<MasterNumbers> m_masterNumbers; // of the target, made for the first master
    eNamesakes m_namesakes = eNamesakes::kKeepBoth;
    std::map<RowRef, eNamesakes> m_single;
    std::set<RowRef> m_noted;
    RowRef m_group; // of the target, under which these are filed where they are new
    std::set<RowRef> m_filed;
    bool m_refused = false;
    std::string m_refusal;
};
