#include "data/store/odbc/OdbcFault.h"

#include "base/Translation.h"

#include <algorithm>
#include <utility>

namespace {

using Kind = OdbcError::eKind;

// %s is the database, a second %s what the driver says.
constexpr std::pair<Kind, const char*> kErrors[] = {
    {Kind::kNoManager,
     translatable("The style database \"%s\" cannot be reached, because ODBC is missing on this computer; "
                  "install the package unixodbc.")},
    {Kind::kNoDriver,
     translatable(
         "The style database \"%s\" cannot be reached, because its ODBC driver is missing on this "
         "computer (%s); install the driver, such as the package odbc-postgresql, or correct its name in the "
         "connection.")},
    {Kind::kNotReached,
     translatable("The server of the style database \"%s\" cannot be reached (%s); check the server's name "
                  "and the network, and try again.")},
    {Kind::kLogin,
     translatable(
         "The server of the style database \"%s\" does not let you in (%s); check the user's name, and the "
         "password in the driver's password file or environment.")},
    {Kind::kNoPassword,
     translatable("The server of the style database \"%s\" asks for your password; type it where the editor "
                  "asks, or put it into the driver's password file or environment.")},
    {Kind::kNoDatabase,
     translatable(
         "The server of \"%s\" has no such database (%s); correct its name in the connection, or have "
         "it made.")},
    {Kind::kNoSchema,
     translatable("A table of the style database \"%s\" is missing (%s); have it brought back by whoever "
                  "looks after the server.")},
    {Kind::kRights,
     translatable("You have no right to do this in the style database \"%s\" (%s); ask whoever looks after "
                  "the server for the role that you need.")},
    {Kind::kLocked,
     translatable("Somebody else is just storing a change in the style database \"%s\"; try again.")},
    {Kind::kKeyTaken,
     translatable("Somebody else has just stored rows of the same keys in the style database \"%s\"; read it "
                  "again and repeat the change.")},
    {Kind::kLost, translatable("The connection to the style database \"%s\" was lost; what is not stored "
                               "yet stays as it is. Try again when the server can be reached.")},
    {Kind::kFrozen,
     translatable("The server of the style database \"%s\" gave no answer, so the connection was given up; "
                  "what is not stored yet stays as it is. Try again when the server can be reached.")},
    {Kind::kBusy, translatable("The server of the style database \"%s\" has not answered yet; try again.")},
    {Kind::kOther,
     translatable(
         "The server refused something in the style database \"%s\" (%s); try again, or ask whoever looks "
         "after the server.")},
};

constexpr std::pair<eServerFault, const char*> kFaults[] = {
    {eServerFault::kNoStyles,
     translatable("There are no styles in the schema of \"%s\"; correct its name in the connection, or make "
                  "them with \"detailstyles server create\".")},
    {eServerFault::kExists,
     translatable("There are styles in the schema of \"%s\" already; choose another schema.")},
    {eServerFault::kLongName, translatable("The name of the schema of \"%s\" is too long; choose one of at "
                                           "most %s letters.")},
    {eServerFault::kRolesTaken,
     translatable("The roles of \"%s\" are on its server already, for a schema of this name in another "
                  "database, and you are no maintainer there; choose another schema.")},
    {eServerFault::kOtherContent,
     translatable("The schema of \"%s\" belongs to another program; choose another schema.")},
    {eServerFault::kOlder,
     translatable("The style database \"%s\" is of an earlier version of the program (%s); have it brought "
                  "to the present one with \"detailstyles server upgrade\".")},
    {eServerFault::kNewer,
     translatable("The style database \"%s\" was made by a newer version of the program (%s); it can be "
                  "read, but not changed.")},
    {eServerFault::kAltersText,
     translatable("The ODBC driver of the style database \"%s\" alters texts (%s); use its variant for "
                  "Unicode, or set the language of the system to one with UTF-8.")},
    {eServerFault::kReadOnly,
     translatable("You may read the style database \"%s\", but not change it; ask whoever looks after the "
                  "server for the role of an editor.")},
    {eServerFault::kMayNotChange,
     translatable("Only a maintainer may do this with the style database \"%s\"; ask whoever looks after the "
                  "server for that role.")},
    {eServerFault::kUnknownOutcome,
     translatable(
         "The connection to the style database \"%s\" was lost while a change was being stored, so it is not "
         "known yet whether it was; the change stays as it is, and is compared as soon as the "
         "server can be reached.")},
    {eServerFault::kWaitsForOutcome,
     translatable("It is not known yet whether the last change of the style database \"%s\" was stored, so "
                  "nothing else can be; try again when the server can be reached.")},
    {eServerFault::kRowsMoved,
     translatable("Another program changed the style database \"%s\" while a change was being stored, so "
                  "nothing was; read it again and repeat the change.")},
};

template <typename Key, std::size_t N>
Result<> sentence(const std::pair<Key, const char*> (&patterns)[N], Key key, const std::string& name,
                  const std::string& detail) {
    const auto* found = std::ranges::find(patterns, key, &std::pair<Key, const char*>::first);
    return Result<>::failure(KorString::format(translated(found->second), {name, detail}));
}

} // namespace

Result<> serverFault(eServerFault fault, const std::string& name, const std::string& detail) {
    return sentence(kFaults, fault, name, detail);
}

Result<> serverFault(const OdbcError& error, const std::string& name) {
    return error ? sentence(kErrors, error.kind, name, error.message) : Result<>();
}
