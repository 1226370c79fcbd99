#include "pages/RecordNames.h"

#include "controls/KorComboBox.h"
#include "controls/KorQt.h"
#include "model/KorDSMFamilies.h"
#include "operations/CurrentRows.h"
#include "operations/KorDetStructureUtilities.h"
#include "pages/QualifierHints.h"
#include "pages/ValuePictures.h"
#include "records/OwnWords.h"
#include "session/KorDSMValueText.h"

#include <algorithm>

namespace {

constexpr int kSortedAtOnce = 250; // so few that it takes no time

} // namespace

void RecordNames::fill(const TableSchema& table, bool isSorted, bool isOptional, bool isPictured,
                       const std::function<bool(const StructRecord&)>& isOffered) {
    beginResetModel();
    m_table = &table;
    m_filing = KorDSMFamilies::filingColumn(table.type);
    m_isOptional = isOptional;
    m_isPictured = isPictured;
    m_entries.clear();
    if (isOptional)
        m_entries.push_back({0, toQt(KorDSMValueText::nothing()), QIcon()});
    const RowArray* rows = CurrentRows::all(table.type);
    const int count = rows ? rows->size() : 0;
    m_isInOrder = !isSorted || count <= kSortedAtOnce;
    if (isSorted && m_isInOrder) {
        for (const StructRecord* row : CurrentRows::byName(table.type))
            if (isOffered(*row))
                m_entries.push_back({row->key, toQt(OwnWords::nameOf(table.type, *row))});
    } else {
        m_entries.reserve(static_cast<std::size_t>(count) + 1);
        for (int i = 0; i < count; ++i)
            m_entries.push_back({rows->at(i).key});
    }
    endResetModel();
}

void RecordNames::putInOrder() {
    if (m_isInOrder)
        return;
    m_isInOrder = true;
    const QList<QPersistentModelIndex> noParents;
    Q_EMIT layoutAboutToBeChanged(noParents, VerticalSortHint);
    std::vector<std::pair<KorString, std::size_t>> names; // with where they stand
    for (std::size_t i = m_isOptional; i < m_entries.size(); ++i)
        names.emplace_back(fromQt(nameAt(i)), i);
    std::ranges::stable_sort(names, KorDetStructureUtilities::isNameBefore,
                             &std::pair<KorString, std::size_t>::first);
    std::vector<Entry> ordered(m_entries.begin(), m_entries.begin() + m_isOptional);
    std::vector<int> places(m_entries.size());
    for (const auto& [name, from] : names) {
        places[from] = static_cast<int>(ordered.size());
        ordered.push_back(std::move(m_entries[from]));
    }
    m_entries = std::move(ordered);
    for (const QModelIndex& kept : persistentIndexList())
        changePersistentIndex(kept, index(places[static_cast<std::size_t>(kept.row())]));
    Q_EMIT layoutChanged(noParents, VerticalSortHint);
}

int RecordNames::entryOf(std::int32_t key) const {
    const auto found = std::ranges::find(m_entries, key, &Entry::key);
    return found == m_entries.end() ? -1 : static_cast<int>(found - m_entries.begin());
}

void RecordNames::forgetPictures() {
    if (!m_isPictured || m_entries.empty())
        return;
    for (std::size_t i = m_isOptional; i < m_entries.size(); ++i)
        m_entries[i].picture.reset();
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::DecorationRole});
}

int RecordNames::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

bool RecordNames::insertRows(int row, int count, const QModelIndex& parent) {
    beginInsertRows(parent, row, row + count - 1);
    m_entries.insert(m_entries.begin() + row, static_cast<std::size_t>(count), {0, QString(), QIcon()});
    endInsertRows();
    return true;
}

bool RecordNames::removeRows(int row, int count, const QModelIndex& parent) {
    beginRemoveRows(parent, row, row + count - 1);
    m_entries.erase(m_entries.begin() + row, m_entries.begin() + row + count);
    endRemoveRows();
    return true;
}

bool RecordNames::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole)
        return false;
    m_entries[static_cast<std::size_t>(index.row())].name = value.toString();
    Q_EMIT dataChanged(index, index);
    return true;
}

const QString& RecordNames::nameAt(std::size_t at) const {
    Entry& entry = m_entries[at];
    if (!entry.name) {
        const StructRecord* row = CurrentRows::find(m_table->type, KorOdbcKey(entry.key));
        entry.name = row ? toQt(OwnWords::nameOf(m_table->type, *row)) : QString();
    }
    return *entry.name;
}

const QIcon& RecordNames::pictureAt(std::size_t at) const {
    Entry& entry = m_entries[at];
    if (!entry.picture) {
        const StructRecord* row = CurrentRows::find(m_table->type, KorOdbcKey(entry.key));
        entry.picture = row ? ValuePictures::ofRow(*m_table, *row) : QIcon();
    }
    return *entry.picture;
}

QVariant RecordNames::groupAt(std::size_t at) const {
    const StructRecord* row =
        m_filing ? CurrentRows::find(m_table->type, KorOdbcKey(m_entries[at].key)) : nullptr;
    const StructRecord* group =
        row ? CurrentRows::find(m_filing->target, KorOdbcKey(m_filing->integerIn(row))) : nullptr;
    return group ? QVariant(toQt(group->name)) : QVariant();
}

QVariant RecordNames::data(const QModelIndex& index, int role) const {
    const auto at = static_cast<std::size_t>(index.row());
    if (!index.isValid() || at >= m_entries.size())
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return nameAt(at);
    case Qt::DecorationRole:
        return m_isPictured ? QVariant(pictureAt(at)) : QVariant();
    case Qt::UserRole:
        return m_entries[at].key;
    case Qt::ToolTipRole:
        return m_table->type == kTableQualifierSet ? QVariant(QualifierHints::sentenceOf(fromQt(nameAt(at))))
                                                   : QVariant();
    case KorComboBox::kGroupRole:
        return groupAt(at);
    default:
        return {};
    }
}
