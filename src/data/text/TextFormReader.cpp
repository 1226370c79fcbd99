#include "data/text/TextFormReader.h"

#include "base/Translation.h"
#include "base/Utf8.h"

#include <filesystem>
#include <fstream>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr const char* kKeyColumn = "key";
constexpr const char* kBadBackslash =
    translatable("the text \"%s\" has a backslash that means nothing; write \\\\ for a backslash.");

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

KorString number(std::size_t value) {
    return KorString::number(static_cast<std::int64_t>(value));
}

} // namespace

Result<> TextFormReader::failureAt(const Place& place, const KorString& pattern,
                                   std::initializer_list<KorString> arguments) {
    return Result<>::failure(
        KorString::format(translated("\"%s\", line %s: %s"), {place.file, KorString::number(place.line),
                                                              KorString::format(pattern, arguments)}));
}

Result<> TextFormReader::read(const std::string& path) {
    const std::vector<fs::path> files = filesOf(path);
    if (files.empty())
        return Result<>::failure(KorString::format(
            translated("The folder \"%s\" holds no definitions (*.txt); choose another one."), {path}));
    for (const fs::path& file : files)
        if (Result<> result = readFile(file.string()); !result)
            return result;
    return {};
}

Result<> TextFormReader::readFile(const std::string& file) {
    std::error_code error;
    if (!m_files.insert(fs::weakly_canonical(file, error).string()).second)
        return {};
    std::ifstream stream(file, std::ios::binary);
    const Place outer = std::exchange(m_place, {file, 0});
    Result<> result = readLines(stream);
    m_table = nullptr;
    m_columns.clear();
    m_place = outer;
    return result;
}

Result<> TextFormReader::readLines(std::istream& stream) {
    m_table = nullptr;
    for (std::string line; std::getline(stream, line);) {
        ++m_place.line;
        std::string_view text = line;
        if (m_place.line == 1 && text.starts_with("\xEF\xBB\xBF"))
            text.remove_prefix(3);
        if (text.ends_with('\r'))
            text.remove_suffix(1);
        if (Result<> result = readLine(TextFields::trimmed(text)); !result)
            return result;
    }
    if (stream.eof())
        return {};
    return Result<>::failure(KorString::format(
        translated("The file \"%s\" cannot be read; check that it is there and may be read."),
        {m_place.file}));
}

Result<> TextFormReader::include(std::string_view path) {
    const fs::path target = (fs::path(m_place.file).parent_path() / path).lexically_normal();
    std::error_code error;
    return fs::exists(target, error)
               ? read(target.string())
               : failure(translated("there is no \"%s\" to include; correct the path."), {target.string()});
}

Result<> TextFormReader::readLine(std::string_view line) {
    if (line.empty() || line.front() == '#')
        return {};
    if (!isCleanUtf8(line))
        return failure(translated("the line is not UTF-8 text; save the file in that encoding."));
    if (line.front() == '[' && line.back() == ']')
        return openSection(line.substr(1, line.size() - 2));
    if (!m_table)
        return failure(
            translated("the line stands in no section; write a table's name in brackets above it."));
    return m_columns.empty() ? readHeader(line) : readRow(line);
}

Result<> TextFormReader::openSection(std::string_view name) {
    constexpr std::string_view kInclude = "include ";
    m_columns.clear();
    if (name.starts_with(kInclude))
        return include(TextFields::trimmed(name.substr(kInclude.size())));
    m_table = findTable(TextFields::trimmed(name));
    return m_table ? Result<>() : failure(translated("there is no table \"%s\"; correct the name."), {name});
}

Result<> TextFormReader::readHeader(std::string_view line) {
    const std::vector<TextColumn> all = TextFields::columnsOf(*m_table);
    for (const std::string_view name : TextFields::split(line, '|')) {
        if (std::ranges::find(m_columns, name, &TextColumn::name) != m_columns.end())
            return failure(translated("the column \"%s\" is named twice; remove one."), {name});
        const auto column = std::ranges::find(all, name, &TextColumn::name);
        if (column != all.end())
            m_columns.push_back(*column);
        else if (name == kKeyColumn)
            m_columns.push_back({kKeyColumn, {}});
        else
            return failure(translated("the table \"%s\" has no column \"%s\"; correct the name."),
                           {m_table->name, name});
    }
    return {};
}

Result<> TextFormReader::readRow(std::string_view line) {
    const std::vector<std::string_view> fields = TextFields::split(line, '|');
    if (fields.size() > m_columns.size())
        return failure(translated("the row has %s fields for %s columns; remove the surplus, or write \\| in "
                                  "texts."),
                       {number(fields.size()), number(m_columns.size())});
    RowArray& rows = m_rows.of(m_table->type);
    const std::int32_t lastKey = rows.size() > 0 ? rows.at(rows.size() - 1).key : 0;
    StructRecord& record = rows.append();
    record.key = lastKey + 1;
    // Cells take the row's key along, so that comes first.
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (m_columns[i].cells.empty())
            if (Result<> result = readKey(record, fields[i]); !result)
                return result;
    if (record.key <= lastKey)
        return failure(translated("the key %s does not follow %s; keys must ascend."),
                       {KorString::number(record.key), KorString::number(lastKey)});
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (Result<> result = readField(record, m_columns[i], fields[i]); !result)
            return result;
    return registerName(record);
}

Result<> TextFormReader::readKey(StructRecord& record, std::string_view field) {
    const auto key = TextFields::toInteger(field);
    if (!key || *key <= 0 || *key > std::numeric_limits<std::int32_t>::max())
        return failure(translated("\"%s\" is no key; write a whole number above 0."), {field});
    record.key = static_cast<std::int32_t>(*key);
    return {};
}

Result<> TextFormReader::readField(StructRecord& record, const TextColumn& column, std::string_view field) {
    if (column.cells.empty())
        return {};
    if (!column.isList())
        return readCell(record, *column.cells.front(), field);
    const std::vector<std::string_view> elements = TextFields::split(field, ';');
    if (elements.size() > column.cells.size())
        return failure(translated("the column \"%s\" takes at most %s elements; remove the surplus."),
                       {column.name, number(column.cells.size())});
    for (std::size_t i = 0; i < elements.size(); ++i)
        if (Result<> result = readCell(record, *column.cells[i], elements[i]); !result)
            return result;
    return {};
}

Result<> TextFormReader::readCell(StructRecord& record, const Column& column, std::string_view field) {
    if (column.isText()) {
        const auto text = TextFields::unescaped(field);
        if (!text)
            return failure(translated(kBadBackslash), {field});
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
    if (ok)
        return {};
    return failure(column.isReal()
                       ? translated("\"%s\" is no number for the column \"%s\"; write one with a point as "
                                    "decimal mark.")
                       : translated("\"%s\" is no number for the column \"%s\"; write a whole number."),
                   {field, column.name});
}

Result<> TextFormReader::readReference(StructRecord& record, const Column& column, std::string_view field) {
    if (field.front() == '<') {
        const auto key =
            field.back() == '>' ? TextFields::toInteger(field.substr(1, field.size() - 2)) : std::nullopt;
        if (key && column.write(&record, *key))
            return {};
        return failure(translated("\"%s\" is no key; write a whole number in angle brackets."), {field});
    }
    const auto name = TextFields::unescaped(field);
    if (!name)
        return failure(translated(kBadBackslash), {field});
    m_open.push_back({m_table, record.key, &column, KorString(*name), m_place});
    return {};
}

bool TextFormReader::hasKeyColumn() const {
    return std::ranges::any_of(m_columns, [](const TextColumn& column) { return column.cells.empty(); });
}

Result<> TextFormReader::registerName(const StructRecord& record) {
    Names& names = m_names[static_cast<std::size_t>(m_table->type)];
    const bool isFree = TextFields::isPartTable(*m_table) || hasKeyColumn();
    if (record.name.isEmpty())
        return isFree ? Result<>()
                      : failure(translated("the %s has no name; give it one."), {m_table->rowName()});
    if (names.keys.emplace(record.name, record.key).second)
        return {};
    names.ambiguous.insert(record.name);
    return isFree ? Result<>()
                  : failure(translated("another %s is called \"%s\" already; rename one."),
                            {m_table->rowName(), record.name});
}

Result<> TextFormReader::resolveReferences() {
    for (const OpenReference& reference : m_open)
        if (Result<> result = resolve(reference); !result)
            return result;
    m_open.clear();
    return {};
}

Result<> TextFormReader::resolve(const OpenReference& reference) {
    const Names& names = m_names[static_cast<std::size_t>(reference.column->target)];
    const TableSchema& target = *findTable(reference.column->target);
    const auto found = names.keys.find(reference.target);
    if (found == names.keys.end())
        return failureAt(reference.place,
                         translated("there is no %s called \"%s\"; correct the name or add the row."),
                         {target.rowName(), reference.target});
    if (names.ambiguous.contains(reference.target))
        return failureAt(reference.place,
                         translated("there are several rows \"%s\" among the %s rows; write the key in angle "
                                    "brackets."),
                         {reference.target, target.rowName()});
    reference.column->integerIn(m_rows.of(reference.table->type).find(reference.key)) = found->second;
    return {};
}
