#include "data/store/odbc/OdbcDatabase.h"

#include <charconv>

namespace {

// What a driver or a locale that takes texts for something else than UTF-8 would alter.
constexpr const char* kProbe = "\u00e4\u2014\u6f22{?}\\";

} // namespace

Result<> OdbcDatabase::connect() {
    opened = connection.open(address.login());
    if (opened)
        return failure(opened);
    dialect = OdbcDialect::of(connection.engine(), connection.quote(), address.schema);
    OdbcRows rows;
    if (const OdbcError error =
            connection.query(dialect->greeting() + "SELECT " + dialect->text(kProbe), rows))
        return failure(error);
    const std::string back = rows.empty() ? std::string() : rows.front().front().value_or("");
    return back == kProbe ? Result<>() : fault(eServerFault::kAltersText, back);
}

Result<> OdbcDatabase::execute(const std::vector<std::string>& statements) {
    for (const std::string& sql : statements)
        if (Result<> result = execute(sql); !result)
            return result;
    return {};
}

Result<> OdbcDatabase::queryInteger(const std::string& sql, std::optional<std::int64_t>& value) {
    OdbcRows rows;
    value.reset();
    if (const OdbcError error = connection.query(sql, rows))
        return failure(error);
    if (rows.empty() || !rows.front().front())
        return {};
    const std::string& text = *rows.front().front();
    std::int64_t number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc())
        value = number;
    return {};
}

Result<> OdbcDatabase::readColumns(StoredColumns& columns) {
    OdbcRows rows;
    if (const OdbcError error = connection.query(dialect->columns(), rows))
        return failure(error);
    for (const auto& row : rows)
        columns.add(row[0].value_or(""), row[1].value_or(""));
    return {};
}

Result<> OdbcDatabase::layoutOf(const TableSchema& table, const TableLayout*& layout) {
    if (!m_columns) {
        StoredColumns columns;
        if (Result<> result = readColumns(columns); !result)
            return result;
        m_columns = std::move(columns);
    }
    auto it = m_layouts.find(&table);
    if (it == m_layouts.end())
        it = m_layouts.emplace(&table, m_columns->layoutOf(table)).first;
    layout = &it->second;
    return {};
}
