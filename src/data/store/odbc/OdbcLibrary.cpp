#include "data/store/odbc/OdbcLibrary.h"

#include <dlfcn.h>

#include <optional>

namespace {

std::optional<OdbcLibrary> load() {
    void* module = dlopen("libodbc.so.2", RTLD_NOW | RTLD_LOCAL);
    if (!module)
        return {};
    OdbcLibrary library;
    bool all = true;
    const auto find = [&](auto& function, const char* name) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(dlsym(module, name));
        all = all && function;
    };
    find(library.allocHandle, "SQLAllocHandle");
    find(library.freeHandle, "SQLFreeHandle");
    find(library.setEnvAttr, "SQLSetEnvAttr");
    find(library.setConnectAttr, "SQLSetConnectAttr");
    find(library.driverConnect, "SQLDriverConnect");
    find(library.disconnect, "SQLDisconnect");
    find(library.getDiagRec, "SQLGetDiagRec");
    find(library.getInfo, "SQLGetInfo");
    find(library.setStmtAttr, "SQLSetStmtAttr");
    find(library.execDirect, "SQLExecDirect");
    find(library.numResultCols, "SQLNumResultCols");
    find(library.rowCount, "SQLRowCount");
    find(library.bindCol, "SQLBindCol");
    find(library.fetch, "SQLFetch");
    find(library.moreResults, "SQLMoreResults");
    find(library.freeStmt, "SQLFreeStmt");
    find(library.endTran, "SQLEndTran");
    find(library.drivers, "SQLDrivers");
    return all ? std::optional(library) : std::nullopt;
}

} // namespace

const OdbcLibrary* OdbcLibrary::instance() {
    static const std::optional<OdbcLibrary> library = load();
    return library ? &*library : nullptr;
}
