#include "data/StyleTable.h"

#include <algorithm>
#include <limits>

NameIndex& StyleTable::names() const {
    if (!m_names) {
        m_names = std::make_unique<NameIndex>();
        m_names->reserve(m_rows->size());
        for (int i = 0; i < m_rows->size(); ++i)
            m_names->add(m_rows->at(i).name, m_rows->at(i).key);
    }
    return *m_names;
}

RowArray& StyleTable::rowsToFill() {
    m_rows->clear();
    m_names.reset();
    m_highestKey = 0;
    return *m_rows;
}

const StructRecord* StyleTable::find(const KorString& runName) const {
    const std::int32_t key = names().lowestKey(runName);
    return key ? m_rows->find(key) : nullptr;
}

bool StyleTable::setCell(KorOdbcKey key, const Column& column, const CellValue& value) {
    StructRecord* row = m_rows->find(key);
    if (!row)
        return false;
    if (column.number != 1 || !m_names)
        return column.write(row, value);
    const KorString before = row->name;
    if (!column.write(row, value))
        return false;
    m_names->remove(before, key);
    m_names->add(row->name, key);
    return true;
}

void StyleTable::insert(const StructRecord& record) {
    m_highestKey = std::max(m_highestKey, record.key);
    m_rows->insert(record);
    if (m_names)
        m_names->add(record.name, record.key);
}

void StyleTable::remove(KorOdbcKey key) {
    const int index = m_rows->indexOfKey(key);
    if (index < 0)
        return;
    m_highestKey = std::max(m_highestKey, key.getKey());
    if (m_names)
        m_names->remove(m_rows->at(index).name, key);
    m_rows->removeAt(index);
}

std::int32_t StyleTable::highestKey() const {
    const std::int32_t last = m_rows->size() > 0 ? m_rows->at(m_rows->size() - 1).key : 0;
    return std::max({m_highestKey, last, 0});
}

std::int32_t StyleTable::unusedKey() const {
    const std::int32_t highest = highestKey();
    return highest < std::numeric_limits<std::int32_t>::max() ? highest + 1 : 0;
}
