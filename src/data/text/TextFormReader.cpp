#include "data/text/TextFormReader.h"

#include "base/Utf8.h"

#include <filesystem>
#include <fstream>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr const char* kKeyColumn = "key";

std::vector<fs::path> filesOf(const fs::path& path) {
    std::error_code error;
    if (!fs::is_directory(path, error))
        return {path};
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(path, error))
        if (entry.path().extension() == ".txt")
            files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

std::string inQuotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

} // namespace

StoreResult TextFormReader::failureAt(const Place& place, const std::string& what) {
    return StoreResult::failure(inQuotes(place.file) + ", line " + std::to_string(place.line) + ": " + what);
}

StoreResult TextFormReader::read(const std::string& path) {
    const std::vector<fs::path> files = filesOf(path);
    if (files.empty())
        return StoreResult::failure("The folder " + inQuotes(path) +
                                    " holds no definitions (*.txt); choose another "
                                    "one.");
    for (const fs::path& file : files)
        if (const StoreResult result = readFile(file.string()); !result)
            return result;
    return {};
}

StoreResult TextFormReader::readFile(const std::string& file) {
    std::error_code error;
    if (!m_files.insert(fs::weakly_canonical(file, error).string()).second)
        return {};
    std::ifstream stream(file, std::ios::binary);
    const Place outer = std::exchange(m_place, {file, 0});
    const StoreResult result = readLines(stream);
    m_table = nullptr;
    m_columns.clear();
    m_place = outer;
    return result;
}

StoreResult TextFormReader::readLines(std::istream& stream) {
    m_table = nullptr;
    for (std::string line; std::getline(stream, line);) {
        ++m_place.line;
        std::string_view text = line;
        if (m_place.line == 1 && text.starts_with("\xEF\xBB\xBF"))
            text.remove_prefix(3);
        if (text.ends_with('\r'))
            text.remove_suffix(1);
        if (const StoreResult result = readLine(TextFields::trimmed(text)); !result)
            return result;
    }
    if (stream.eof())
        return {};
    return StoreResult::failure("The file " + inQuotes(m_place.file) +
                                " cannot be read; check that it is there and "
                                "may be read.");
}

StoreResult TextFormReader::include(std::string_view path) {
    const fs::path target = (fs::path(m_place.file).parent_path() / path).lexically_normal();
    std::error_code error;
    return fs::exists(target, error) ? read(target.string())
                                     : failure("there is no " + inQuotes(target.string()) +
                                               " to include; correct the "
                                               "path.");
}

StoreResult TextFormReader::readLine(std::string_view line) {
    if (line.empty() || line.front() == '#')
        return {};
    if (!isCleanUtf8(line))
        return failure("the line is not UTF-8 text; save the file in that encoding.");
    if (line.front() == '[' && line.back() == ']')
        return openSection(line.substr(1, line.size() - 2));
    if (!m_table)
        return failure("the line stands in no section; write a table's name in brackets above it.");
    return m_columns.empty() ? readHeader(line) : readRow(line);
}

StoreResult TextFormReader::openSection(std::string_view name) {
    constexpr std::string_view kInclude = "include ";
    m_columns.clear();
    if (name.starts_with(kInclude))
        return include(TextFields::trimmed(name.substr(kInclude.size())));
    m_table = findTable(TextFields::trimmed(name));
    return m_table ? StoreResult() : failure("there is no table " + inQuotes(name) + "; correct the name.");
}

StoreResult TextFormReader::readHeader(std::string_view line) {
    const std::vector<TextColumn> all = TextFields::columnsOf(*m_table);
    for (const std::string_view name : TextFields::split(line, '|')) {
        if (std::ranges::find(m_columns, name, &TextColumn::name) != m_columns.end())
            return failure("the column " + inQuotes(name) + " is named twice; remove one.");
        const auto column = std::ranges::find(all, name, &TextColumn::name);
        if (column != all.end())
            m_columns.push_back(*column);
        else if (name == kKeyColumn)
            m_columns.push_back({kKeyColumn, {}});
        else
            return failure("the table " + inQuotes(m_table->name) + " has no column " + inQuotes(name) +
                           "; correct the name.");
    }
    return {};
}

StoreResult TextFormReader::readRow(std::string_view line) {
    const std::vector<std::string_view> fields = TextFields::split(line, '|');
    if (fields.size() > m_columns.size())
        return failure("the row has " + std::to_string(fields.size()) + " fields for " +
                       std::to_string(m_columns.size()) +
                       " columns; remove the surplus, or write \\| in texts.");
    RowArray& rows = m_rows.of(m_table->type);
    const std::int32_t lastKey = rows.size() > 0 ? rows.at(rows.size() - 1).key : 0;
    StructRecord& record = rows.append();
    record.key = lastKey + 1;
    // Cells take the row's key along, so that comes first.
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (m_columns[i].cells.empty())
            if (const StoreResult result = readKey(record, fields[i]); !result)
                return result;
    if (record.key <= lastKey)
        return failure("the key " + std::to_string(record.key) + " does not follow " +
                       std::to_string(lastKey) + "; keys must ascend.");
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (const StoreResult result = readField(record, m_columns[i], fields[i]); !result)
            return result;
    return registerName(record);
}

StoreResult TextFormReader::readKey(StructRecord& record, std::string_view field) {
    const auto key = TextFields::toInteger(field);
    if (!key || *key <= 0 || *key > std::numeric_limits<std::int32_t>::max())
        return failure(inQuotes(field) + " is no key; write a whole number above 0.");
    record.key = static_cast<std::int32_t>(*key);
    return {};
}

StoreResult TextFormReader::readField(StructRecord& record, const TextColumn& column,
                                      std::string_view field) {
    if (column.cells.empty())
        return {};
    if (!column.isList())
        return readCell(record, *column.cells.front(), field);
    const std::vector<std::string_view> elements = TextFields::split(field, ';');
    if (elements.size() > column.cells.size())
        return failure("the column " + inQuotes(column.name) + " takes at most " +
                       std::to_string(column.cells.size()) + " elements; remove the surplus.");
    for (std::size_t i = 0; i < elements.size(); ++i)
        if (const StoreResult result = readCell(record, *column.cells[i], elements[i]); !result)
            return result;
    return {};
}

StoreResult TextFormReader::readCell(StructRecord& record, const Column& column, std::string_view field) {
    if (column.isText()) {
        const auto text = TextFields::unescaped(field);
        if (!text)
            return failure("the text " + inQuotes(field) +
                           " has a backslash that means nothing; write \\\\ for a backslash.");
        column.textIn(&record) = KorString(*text);
        return {};
    }
    if (field.empty())
        return {};
    if (column.isReference())
        return readReference(record, column, field);
    bool ok = false;
    if (column.isReal()) {
        const auto value = TextFields::toReal(field);
        ok = value && column.write(&record, *value);
    } else {
        const auto value = TextFields::toInteger(field);
        ok = value && column.write(&record, *value);
    }
    return ok ? StoreResult()
              : failure(inQuotes(field) + " is no number for the column " + inQuotes(column.name) +
                        "; write " +
                        (column.isReal() ? "one with a point as decimal mark." : "a whole number."));
}

StoreResult TextFormReader::readReference(StructRecord& record, const Column& column,
                                          std::string_view field) {
    if (field.front() == '<') {
        const auto key =
            field.back() == '>' ? TextFields::toInteger(field.substr(1, field.size() - 2)) : std::nullopt;
        if (key && column.write(&record, *key))
            return {};
        return failure(inQuotes(field) + " is no key; write a whole number in angle brackets.");
    }
    const auto name = TextFields::unescaped(field);
    if (!name)
        return failure("the name " + inQuotes(field) +
                       " has a backslash that means nothing; write \\\\ for a "
                       "backslash.");
    m_open.push_back({m_table, record.key, &column, KorString(*name), m_place});
    return {};
}

bool TextFormReader::hasKeyColumn() const {
    return std::ranges::any_of(m_columns, [](const TextColumn& column) { return column.cells.empty(); });
}

StoreResult TextFormReader::registerName(const StructRecord& record) {
    Names& names = m_names[static_cast<std::size_t>(m_table->type)];
    const bool isFree = TextFields::isPartTable(*m_table) || hasKeyColumn();
    if (record.name.isEmpty())
        return isFree ? StoreResult() : failure("the " + m_table->rowName() + " has no name; give it one.");
    if (names.keys.emplace(record.name, record.key).second)
        return {};
    names.ambiguous.insert(record.name);
    return isFree ? StoreResult()
                  : failure("there is already a " + m_table->rowName() + " called " +
                            inQuotes(record.name.view()) + "; rename one.");
}

StoreResult TextFormReader::resolveReferences() {
    for (const OpenReference& reference : m_open)
        if (const StoreResult result = resolve(reference); !result)
            return result;
    m_open.clear();
    return {};
}

StoreResult TextFormReader::resolve(const OpenReference& reference) {
    const Names& names = m_names[static_cast<std::size_t>(reference.column->target)];
    const std::string kind = findTable(reference.column->target)->rowName();
    const auto found = names.keys.find(reference.target);
    if (found == names.keys.end())
        return failureAt(reference.place, "there is no " + kind + " called " +
                                              inQuotes(reference.target.view()) +
                                              "; correct the name or add the row.");
    if (names.ambiguous.contains(reference.target))
        return failureAt(reference.place, "there are several rows " + inQuotes(reference.target.view()) +
                                              " among the " + kind +
                                              " rows; write the key in angle brackets.");
    reference.column->integerIn(m_rows.of(reference.table->type).find(reference.key)) = found->second;
    return {};
}
