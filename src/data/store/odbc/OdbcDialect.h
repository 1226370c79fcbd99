#pragma once

#include "data/store/SchemaHistory.h"
#include "records/RowRef.h"

#include <memory>
#include <span>

/// What a role may do with the styles of a database.
enum class eServerRole { kReader, kEditor, kMaintainer };

/// All that differs from one database engine to the other. The base is what the standard of SQL says; engines
/// that need something else override it.
class OdbcDialect {
public:
    /// That of the engine of this name. `quote` is what it puts around names, `schema` that of the styles.
    static std::unique_ptr<OdbcDialect> of(const std::string& engine, const std::string& quote,
                                           const std::string& schema);

    OdbcDialect(std::string quote, std::string schema)
        : m_quote(std::move(quote)), m_schema(std::move(schema)) {}
    virtual ~OdbcDialect() = default;
    OdbcDialect(const OdbcDialect&) = delete;
    OdbcDialect& operator=(const OdbcDialect&) = delete;

    const std::string& schema() const { return m_schema; }
    std::string name(const std::string& name) const;
    /// A table of the styles, with its schema.
    virtual std::string table(const std::string& name) const;
    virtual std::string text(std::string_view text) const;
    /// All bits of it.
    virtual std::string real(double value) const;
    std::string value(const CellValue& value) const;
    /// What is said of columns and tables when they are made.
    SchemaWords words() const;

    /// A column as it is selected: as a text that has all bits of a number.
    virtual std::string selected(const Column& column) const { return name(column.name); }
    /// A column as a text, whatever it is.
    virtual std::string asText(const Column& column) const {
        return "CAST(" + name(column.name) + " AS " + textType() + ")";
    }
    /// Behind a SELECT of rows that are about to be changed.
    virtual std::string forUpdate() const { return {}; }
    /// Whether one call may have several statements.
    virtual bool takesSeveralStatements() const { return false; }

    /// SQL that a new connection runs first, before another statement; may be empty.
    virtual std::string greeting() const { return {}; }
    /// Behind an UPDATE of one row: what makes it yield that column. Empty where it cannot.
    virtual std::string returning(const std::string&) const { return {}; }
    /// SQL that makes the transaction, which it begins, one of one state, before another statement; may be
    /// empty.
    virtual std::string oneState() const { return {}; }
    /// SQL that selects name of table and name of column of each ordinary table of the schema.
    virtual std::string columns() const;
    /// SQL that selects 1 where the user may do what the role may, and 0 where not. Engines that cannot tell
    /// say 1 to everybody who may read: they refuse themselves what is not allowed.
    virtual std::string may(eServerRole role) const;
    virtual std::string currentUser() const { return "CURRENT_USER"; }

    /// SQL that marks the row for others as one with pending changes, or takes the mark back, until the
    /// connection ends; no table tells that the styles are open. Nothing is written by it. Empty where the
    /// engine has nothing of the kind.
    virtual std::string mark(RowRef, bool) const { return {}; }
    /// SQL that adds rows to `query`, which selects a number: what others marked, each as NULL, a number of
    /// the connection, its user, table type and key.
    virtual std::string withMarks(const std::string& query) const { return query; }

    /// SQL that makes the schema with its roles, and afterwards what gives each its rights. What is there
    /// already (`existing` roles) is used.
    virtual std::vector<std::string> makeSchema(std::span<const std::string> existing) const;
    virtual std::vector<std::string> giveRights() const { return {}; }
    /// SQL that selects of the roles of this schema that are there: the name, whether the user has it (1 or
    /// 0), and who else has, in one text. Empty where the engine has no roles.
    virtual std::string roles() const { return {}; }
    /// Of the name of the schema, in bytes, so that there is room for the names of its roles.
    virtual std::size_t longestSchema() const { return 128; }
    /// The role's name; empty where the engine has none.
    virtual std::string role(eServerRole) const { return {}; }
    /// SQL that lets what is made belong to the maintainers, and makes names without a schema those of the
    /// styles, until the transaction ends.
    virtual std::vector<std::string> asMaintainer() const { return {}; }

protected:
    virtual const char* textType() const { return "VARCHAR(4000)"; }
    virtual const char* realType() const { return "DOUBLE PRECISION"; }

private:
    std::string m_quote;
    std::string m_schema;
};
