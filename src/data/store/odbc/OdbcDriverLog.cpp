#include "data/store/odbc/OdbcDriverLog.h"

#include "base/Translation.h"
#include "data/store/odbc/OdbcLibrary.h"

#include <algorithm>
#include <array>
#include <map>

namespace {

using Settings = std::map<std::string, std::string>;

// As the driver manager tells them, each with a zero at its end.
Settings settingsIn(std::string_view text) {
    Settings settings;
    while (!text.empty()) {
        const std::string_view entry = text.substr(0, text.find('\0'));
        text.remove_prefix(std::min(entry.size() + 1, text.size()));
        if (const std::size_t equals = entry.find('='); equals != std::string_view::npos)
            settings.emplace(entry.substr(0, equals), entry.substr(equals + 1));
    }
    return settings;
}

// Of a driver, in the files of this computer; none where it is not installed.
Settings settingsOf(const std::string& driver) {
    const OdbcLibrary* library = OdbcLibrary::instance();
    SQLHENV environment = SQL_NULL_HENV;
    if (!library || !SQL_SUCCEEDED(library->allocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment)))
        return {};
    library->setEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    std::array<SQLCHAR, 256> name{};
    std::array<SQLCHAR, 4096> text{};
    SQLSMALLINT size = 0;
    Settings settings;
    SQLUSMALLINT which = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(library->drivers(environment, which, name.data(), name.size(), nullptr, text.data(),
                                          text.size(), &size))) {
        which = SQL_FETCH_NEXT;
        const auto length = static_cast<std::size_t>(std::max<SQLSMALLINT>(size, 0));
        if (driver == reinterpret_cast<const char*>(name.data()))
            settings =
                settingsIn({reinterpret_cast<const char*>(text.data()), std::min(length, text.size())});
    }
    library->freeHandle(SQL_HANDLE_ENV, environment);
    return settings;
}

} // namespace

std::string hintAtDriverLog(const ServerAddress& address) {
    const Settings settings = settingsOf(address.driver);
    std::string off;
    for (const std::string log : {"CommLog", "Debug"})
        if (const auto found = settings.find(log); found != settings.end() && found->second != "0")
            off += (off.empty() ? "" : ", ") + log + "=0";
    return off.empty()
               ? std::string()
               : KorString::format(translated("The driver \"%s\" leaves a file in the folder of temporary "
                                              "files at each start; %s in its section of odbcinst.ini ends "
                                              "that."),
                                   {address.driver, off})
                     .toStdString();
}
