#pragma once

#include <sql.h>
#include <sqlext.h>

/// The driver manager of ODBC, loaded when the first connection needs it, so that nobody else has to have it.
struct OdbcLibrary {
    decltype(&SQLAllocHandle) allocHandle = nullptr;
    decltype(&SQLFreeHandle) freeHandle = nullptr;
    decltype(&SQLSetEnvAttr) setEnvAttr = nullptr;
    decltype(&SQLSetConnectAttr) setConnectAttr = nullptr;
    decltype(&SQLDriverConnect) driverConnect = nullptr;
    decltype(&SQLDisconnect) disconnect = nullptr;
    decltype(&SQLGetDiagRec) getDiagRec = nullptr;
    decltype(&SQLGetInfo) getInfo = nullptr;
    decltype(&SQLSetStmtAttr) setStmtAttr = nullptr;
    decltype(&SQLExecDirect) execDirect = nullptr;
    decltype(&SQLNumResultCols) numResultCols = nullptr;
    decltype(&SQLRowCount) rowCount = nullptr;
    decltype(&SQLBindCol) bindCol = nullptr;
    decltype(&SQLFetch) fetch = nullptr;
    decltype(&SQLMoreResults) moreResults = nullptr;
    decltype(&SQLFreeStmt) freeStmt = nullptr;
    decltype(&SQLEndTran) endTran = nullptr;
    decltype(&SQLDrivers) drivers = nullptr;

    /// Null where the system has none.
    static const OdbcLibrary* instance();
};
