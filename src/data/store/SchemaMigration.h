#pragma once

#include "data/store/SchemaHistory.h"
#include "data/store/SqliteDatabase.h"

/// Brings a database from the version `from` to the current one, in the transaction that is open. A database
/// that this cannot be done with is a failure; what was done until then must be rolled back.
Result<> migrate(const SqliteDatabase& database, const SchemaHistory& history, int from);

/// Makes `copy`, which is not open, a database in memory with what `database` holds in its open transaction.
Result<> copyToMemory(const SqliteDatabase& database, SqliteDatabase& copy);
