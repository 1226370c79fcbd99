#include "data/text/TextFormWriter.h"

namespace {

std::unordered_map<std::int32_t, KorString> uniqueNames(const RowArray& rows) {
    std::unordered_map<KorString, int> counts;
    for (int i = 0; i < rows.size(); ++i)
        ++counts[rows.at(i).name];
    std::unordered_map<std::int32_t, KorString> names;
    for (int i = 0; i < rows.size(); ++i)
        if (const StructRecord& row = rows.at(i); !row.name.isEmpty() && counts[row.name] == 1)
            names.emplace(row.key, row.name);
    return names;
}

bool isDefault(const TextColumn& column, const RowArray& rows, const StructRecord& defaults) {
    for (int i = 0; i < rows.size(); ++i)
        for (const Column* cell : column.cells)
            if (cell->read(&rows.at(i)) != cell->read(&defaults))
                return false;
    return true;
}

std::string line(const std::vector<std::string>& fields) {
    std::string text;
    for (std::size_t i = 0; i < fields.size(); ++i)
        text += (i > 0 ? " | " : "") + fields[i];
    return text + "\n";
}

} // namespace

TextFormWriter::TextFormWriter(const TableRows& rows) : m_rows(rows) {
    for (const TableSchema& table : allTables())
        m_names[static_cast<std::size_t>(table.type)] = uniqueNames(rows.of(table.type));
}

std::string TextFormWriter::text() const {
    std::string all;
    for (const TableSchema& table : allTables())
        if (m_rows.of(table.type).size() > 0)
            all += (all.empty() ? "" : "\n") + section(table);
    return all;
}

std::string TextFormWriter::section(const TableSchema& table) const {
    const RowArray& rows = m_rows.of(table.type);
    const auto defaults = rows.copyOf(nullptr);
    const std::vector<TextColumn> columns = usedColumns(table);
    std::vector<std::string> fields;
    for (const TextColumn& column : columns)
        fields.push_back(column.name);
    std::string text = "[" + table.name + "]\n" + line(fields);
    for (int i = 0; i < rows.size(); ++i) {
        fields.clear();
        for (const TextColumn& column : columns)
            fields.push_back(field(column, rows.at(i), *defaults));
        text += line(fields);
    }
    return text;
}

std::vector<TextColumn> TextFormWriter::usedColumns(const TableSchema& table) const {
    const RowArray& rows = m_rows.of(table.type);
    const auto defaults = rows.copyOf(nullptr);
    std::vector<TextColumn> columns;
    for (TextColumn& column : TextFields::columnsOf(table))
        if (column.cells.front()->number == 1 || !isDefault(column, rows, *defaults))
            columns.push_back(std::move(column));
    // With the name alone, a row without a name would be a blank line.
    if (needsKeys(table) || (columns.size() == 1 && TextFields::isPartTable(table)))
        columns.insert(columns.begin(), {"key", {}});
    return columns;
}

bool TextFormWriter::needsKeys(const TableSchema& table) const {
    const RowArray& rows = m_rows.of(table.type);
    if (rows.at(rows.size() - 1).key != rows.size())
        return true;
    return !TextFields::isPartTable(table) &&
           m_names[static_cast<std::size_t>(table.type)].size() != static_cast<std::size_t>(rows.size());
}

std::string TextFormWriter::field(const TextColumn& column, const StructRecord& record,
                                  const StructRecord& defaults) const {
    if (column.cells.empty())
        return std::to_string(record.key);
    if (!column.isList())
        return cell(*column.cells.front(), record, defaults);
    std::string text;
    std::size_t used = 0; // elements at the end that hold the default are left out
    for (std::size_t i = 0; i < column.cells.size(); ++i) {
        const std::string element = cell(*column.cells[i], record, defaults);
        if (element.empty())
            continue;
        for (; used < i; ++used)
            text += "; ";
        text += KorString(element).replaced(";", "\\;").view();
    }
    return text;
}

std::string TextFormWriter::cell(const Column& column, const StructRecord& record,
                                 const StructRecord& defaults) const {
    const CellValue value = column.read(&record);
    if (const auto* text = std::get_if<KorString>(&value))
        return TextFields::escaped(text->view());
    if (value == column.read(&defaults))
        return {};
    if (column.isReference())
        return reference(column.target, column.integerIn(&record));
    return column.isReal() ? TextFields::number(column.realIn(&record))
                           : std::to_string(column.integerIn(&record));
}

std::string TextFormWriter::reference(eTableType target, std::int32_t key) const {
    const Names& names = m_names[static_cast<std::size_t>(target)];
    const auto name = names.find(key);
    return name == names.end() ? "<" + std::to_string(key) + ">" : TextFields::escaped(name->second.view());
}
