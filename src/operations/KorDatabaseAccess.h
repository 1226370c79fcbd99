#pragma once

#include "base/Result.h"
#include "records/KorDSNDefinitions.h"

/// Opening of database files as sources, beside those that the data folder gives.
class KorDatabaseAccess {
public:
    /// Extension of style database files, without the dot.
    static KorString getDatabaseExtension() { return "dsdb"; }
    /// Extension of the desktop database files of earlier installations, which cannot be opened.
    static KorString getAccessExtension() { return "mdb"; }
    /// Extension of the journal that stands beside a database file while a change is being written.
    static KorString getDatabaseLogExtension() { return "dsdb-journal"; }

    /// Opens a database file for reading as the source (dsn, index), in the place of what was open there,
    /// after a check for damage. The file must not be open as another source. After a failure the source is
    /// absent.
    static Result<> setConnection(eDSN dsn, eIndex index, const KorString& path);
    /// The same for a connection string such as "DBQ=/path/to/styles.dsdb;ReadOnly=1": the entry named "DBQ"
    /// or "Database" gives the path, other entries are ignored.
    static Result<> setConnectionString(eDSN dsn, eIndex index, const KorString& connection);
    /// Closes a source; its pending changes are dropped. Returns 1, or 0 when it was not open.
    static int detachDatabase(eDSN dsn, eIndex index);

    /// Would turn a database file of an earlier installation into a style database. Such files cannot be
    /// read: it always fails, and says what to do instead.
    static Result<> migrateMdb(const KorString& path);
};
