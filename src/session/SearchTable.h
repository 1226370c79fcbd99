#pragma once

#include "data/StyleSource.h"
#include "services/OtherWordings.h"
#include "session/FoldedTexts.h"
#include "session/SearchWords.h"

#include <functional>
#include <unordered_map>

/// What can be found of one table of one source: the names of its rows, and what their columns show. The rows
/// must not come or go meanwhile.
class SearchTable {
public:
    /// Collects the names. `hasValues`: the columns are looked at, too, once they were collected. The source
    /// must outlive the object.
    SearchTable(StyleSource& source, const TableSchema& table, bool hasValues, const OtherWordings& wordings);

    /// Collects what the columns show. The source is to be the current one, whose units and names values are
    /// shown with. Returns whether that was left to do.
    bool collectValues(const OtherWordings& wordings);

    const TableSchema& schema() const { return *m_schema; }
    /// Whether rows came or went since.
    bool isOutdated() const;

    struct Match {
        SearchFit fit;
        std::size_t row = 0;            ///< index
        const Column* column = nullptr; ///< null: the name
        std::size_t length = 0;         ///< of the text that fits, in bytes
    };
    /// Receives what is found; returns false where that is enough.
    using Take = std::function<bool(const Match&)>;
    /// The rows of a table that are found by their names, by their keys.
    using Keys = std::unordered_map<std::int32_t, SearchFit>;
    /// Finds them for words that may stand in a context.
    using KeysOf = std::function<const Keys&(eTableType table, const std::string& context)>;

    /// What the rows are called in any language, in lower case.
    const std::string& kind() const { return m_kind; }
    /// The rows whose names fit; the kind of the rows, in any language, is the context where none is given.
    void names(const SearchWords& words, const Take& take, const std::string* context = nullptr) const;
    /// The cells that fit, at most so many of each column. A flag is found only by its caption and its value.
    void values(const SearchWords& words, const KeysOf& keysOf, std::size_t atMost, const Take& take) const;

    const StructRecord& rowAt(std::size_t index) const;
    /// What the shown value is called in other languages.
    const std::vector<KorString>& otherValues(const Column& column, const KorString& shown) const;

private:
    struct Choice {
        std::uint64_t bits; // of the cell
        KorString shown;
        std::vector<KorString> others;
        std::vector<std::string> folded; // all of them
    };
    struct Values {
        const Column* column;
        std::string caption; // in lower case, in all languages
        FoldedTexts texts;   // of the rows of a text column
        std::vector<Choice> choices;
    };
    using Fits = std::vector<std::pair<std::uint64_t, SearchFit>>;

    KorString shownName(const StructRecord& row) const;
    void addColumn(const Column& column, const OtherWordings& wordings);
    void addChoices(Values& values, const OtherWordings& wordings) const;
    void texts(const Values& values, const SearchWords& words, std::size_t atMost, const Take& take) const;
    void cells(const Values& values, const Fits& fits, std::size_t atMost, const Take& take) const;
    const Values* valuesOf(const Column& column) const;

    StyleSource* m_source;
    const TableSchema* m_schema;
    const RowArray* m_rows;
    std::string m_kind;
    FoldedTexts m_names;
    bool m_areValuesDue;
    std::vector<Values> m_values;
};
