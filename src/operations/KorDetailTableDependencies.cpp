#include "operations/KorDetailTableDependencies.h"

#include "data/FreeName.h"
#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "data/exchange/MasterNumbers.h"

int KorDetailTableDependencies::gatherRows(RowRef row) {
    StyleSource* source = StyleDatabases::current().here();
    m_rows = source && source->complete() ? closureOf(*source, row) : std::vector<RowRef>();
    m_rowNumber = 0;
    return m_rows.empty() ? 0 : 1;
}

int KorDetailTableDependencies::SetRowNr(int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= m_rows.size())
        return 0;
    m_rowNumber = static_cast<std::size_t>(row);
    return 1;
}

RowRef KorDetailTableDependencies::currentRow() const {
    return m_rows.empty() ? RowRef() : m_rows[m_rowNumber];
}

int KorDetailTableDependencies::storeRow(eTableType table, StructRecord& record, const KorOdbcKey& key) {
    StyleDatabases& databases = StyleDatabases::current();
    StyleSource* source = databases.here();
    if (!source)
        return WriteResult::kFailed;
    if (!source->table(table).find(key))
        return databases.append(table, record).code();
    record.key = key;
    return databases.store(table, record).code();
}

int KorDetailTableDependencies::Save(StructDetailMaster& record, const KorOdbcKey& key) {
    if (StyleSource* source = StyleDatabases::current().here()) {
        record.key = key.isValid() ? key.getKey() : 0;
        record.number = freeMasterNumber(*source, record);
    }
    return store(record, key);
}

int KorDetailTableDependencies::GetDefaultNameForRow(eTableType table, KorString& name) {
    StyleSource* source = StyleDatabases::current().here();
    if (!source || !findTable(table))
        return 0;
    name = freeName(*source, table, name);
    return 1;
}
