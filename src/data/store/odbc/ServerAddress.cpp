#include "data/store/odbc/ServerAddress.h"

#include "base/Translation.h"
#include "data/store/DatabaseName.h"

#include <algorithm>
#include <vector>

namespace {

struct Entry {
    std::string key; // as it is written
    std::string value;
    std::string lowered() const { return KorString(key).lowered().toStdString(); }
};

// Values in braces may hold semicolons.
std::vector<Entry> entriesOf(const std::string& text) {
    std::vector<Entry> entries;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t equals = text.find_first_of("=;", at);
        if (equals == std::string::npos)
            break;
        if (text[equals] == ';') { // says nothing
            at = equals + 1;
            continue;
        }
        const bool isBraced = equals + 1 < text.size() && text[equals + 1] == '{';
        const std::size_t closing = isBraced ? text.find('}', equals) : equals;
        const std::size_t end =
            std::min(closing == std::string::npos ? closing : text.find(';', closing), text.size());
        entries.push_back({KorString(text.substr(at, equals - at)).trimmed().toStdString(),
                           KorString(text.substr(equals + 1, end - equals - 1)).trimmed().toStdString()});
        at = end + 1;
    }
    return entries;
}

std::string bare(const std::string& value) {
    return value.size() > 1 && value.front() == '{' && value.back() == '}' ? value.substr(1, value.size() - 2)
                                                                           : value;
}

// Options of a driver can hold one, too.
bool isSecret(const Entry& entry) {
    const std::string key = entry.lowered();
    const std::string value = KorString(entry.value).lowered().toStdString();
    return key == "pwd" || key.find("password") != std::string::npos ||
           value.find("password") != std::string::npos;
}

} // namespace

bool ServerAddress::holdsPassword(const std::string& text) {
    return std::ranges::any_of(entriesOf(text), isSecret);
}

bool ServerAddress::isConnection(const std::string& text) {
    const auto says = [](const Entry& entry) {
        const std::string key = entry.lowered();
        return key == "driver" || key == "dsn" || key == "server" || key == "servername" ||
               key == "database" || isSecret(entry);
    };
    return std::ranges::any_of(entriesOf(text), says);
}

Result<ServerAddress> ServerAddress::parse(const std::string& text, const std::string& origin) {
    ServerAddress address{{}, kUsualSchema, {}};
    std::string server;
    std::string port;
    std::string database;
    if (holdsPassword(text))
        return Result<>::failure(KorString::format(
            translated("A password must not stand in %s, where others can read it; put it into the driver's "
                       "password file or environment."),
            {origin}));
    for (const Entry& entry : entriesOf(text)) {
        const std::string key = entry.lowered();
        if (key == "schema") {
            address.schema = entry.value;
            continue;
        }
        if (key == "server" || key == "servername" || key == "dsn")
            server = entry.value;
        else if (key == "port")
            port = ":" + entry.value;
        else if (key == "database")
            database = entry.value;
        else if (key == "driver")
            address.driver = bare(entry.value);
        else if (key == "uid" || key == "user" || key == "username")
            address.user = bare(entry.value);
        address.connection += entry.key + "=" + entry.value + ";";
    }
    if ((server.empty() && database.empty()) || address.schema.empty())
        return Result<>::failure(
            KorString::format(translated("The connection \"%s\" in %s names no server; write it as "
                                         "Driver=...;Server=...;Database=...;Schema=...."),
                              {text, origin}));
    address.name = std::string(kServerPrefix) + server + port;
    for (const std::string& part : {database, address.schema})
        if (!part.empty())
            address.name += (address.name == kServerPrefix ? "" : "/") + part;
    return address;
}

std::string ServerAddress::login() const {
    if (password.empty())
        return connection;
    std::string braced;
    for (const char c : password)
        braced += c == '}' ? std::string("}}") : std::string(1, c);
    return connection + "PWD={" + braced + "};";
}
