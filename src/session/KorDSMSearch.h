#pragma once

#include "records/RowRef.h"
#include "session/SearchTable.h"

#include <memory>

/// Kinds of what can be found; of those that fit equally well the earlier ones come first.
enum class eSearchKind : std::uint8_t { kCommand, kPage, kRecord, kField, kTopic, kValue };
inline constexpr std::size_t kNumberOfSearchKinds = 6;

/// What can be found and is no record: commands, sections, pages, topics of the help.
struct KorDSMSearchTerm {
    eSearchKind kind = eSearchKind::kCommand;
    KorString text;
    KorString kindText;                     ///< what it is
    KorString path = {};                    ///< where it is
    std::vector<KorString> alsoCalled = {}; ///< besides what the text is called in other languages
    bool isOffered = true;                  ///< false: it cannot be done now
};

/// What was found.
struct KorDSMSearchHit {
    eSearchKind kind = eSearchKind::kCommand;
    KorString text;     ///< a name, a title, or a caption with its value
    KorString kindText; ///< what it is
    KorString path;     ///< where it stands
    KorString source;   ///< name of its source; empty for what lies in none
    int icon = 0;       ///< number of its picture among the icons; 0 for terms
    bool isOffered = true;
    std::size_t term = 0; ///< place among the terms that were given
    SourceId sourceId;    ///< of records, fields and values
    RowRef row;
    int column = 0; ///< of fields and values; 0: the record
};

struct KorDSMSearchResult {
    std::vector<KorDSMSearchHit> hits; ///< the best ones first
    bool areAll = true;
};

/// Finds records by their names and values, fields by their captions, and terms that are given, in all
/// languages that the program has.
class KorDSMSearch {
public:
    /// Where the user is: what stands there comes first, and is where fields lead to.
    struct Here {
        SourceId source;
        RowRef row; ///< that is shown; without a key for none
    };

    /// Reads the open sources.
    KorDSMSearch(const Here& here, std::vector<KorDSMSearchTerm> terms);
    ~KorDSMSearch();

    /// Whether databases may be looked at: nothing is half done, and none is waited for.
    static bool mayCollect();
    /// Collects the values of one more table, which the first search for values would wait for. Returns
    /// whether there was one.
    bool collectAhead();
    /// What fits the typed words, at most `atMost` of each kind.
    KorDSMSearchResult find(const KorString& typed, std::size_t atMost);
    /// Where fields of the table lead to: the row that is shown or a part of it, else the first one of the
    /// source where the user is, else of any. Without a key where no source has one.
    static std::pair<SourceId, RowRef> rowOf(const Here& here, eTableType table);
    /// The names of the sources that are searched.
    std::vector<KorString> sourceNames() const;

private:
    struct Source;
    struct Field;
    struct Query;
    struct Candidate;

    void readSources();
    void addFields();
    void findTerms(Query& query) const;
    void findFields(Query& query) const;
    void findRecords(Query& query) const;
    void findValues(Query& query) const;
    KorDSMSearchHit describe(const SearchWords& words, const Candidate& candidate) const;
    void describeField(const SearchWords& words, const Field& field, KorDSMSearchHit& hit) const;
    void describeRow(const SearchWords& words, const Candidate& candidate, KorDSMSearchHit& hit) const;

    static std::vector<SourceId> orderedSources(const Here& here);

    Here m_here;
    OtherWordings m_wordings;
    std::vector<KorDSMSearchTerm> m_terms;
    std::vector<std::vector<KorString>> m_termWordings; // of each term, all of them
    std::vector<Source> m_sources;                      // where the user is first
    std::vector<Field> m_fields;
};
