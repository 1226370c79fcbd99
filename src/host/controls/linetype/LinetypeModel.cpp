#include "controls/linetype/LinetypeModel.h"

#include "controls/KorQt.h"

#include <algorithm>

namespace {

std::string keyOf(const KorString& name) {
    const KorString lowered = name.lowered();
    const bool first = lowered.view().starts_with(' ');
    const bool last = lowered.view().starts_with("\u00A0");
    return (first ? '0' : last ? '2' : '1') + lowered.toStdString();
}

} // namespace

void LinetypeModel::removeAll() {
    beginResetModel();
    m_entries.clear();
    m_file = nullptr; // the next one looks whether the file has changed
    endResetModel();
}

int LinetypeModel::load(const KorString& name) {
    if (std::filesystem::path path = filePath(); !m_file || path != m_readPath) {
        m_file = LinetypeFile::shared(path);
        m_readPath = std::move(path);
    }
    if (name == "*") {
        addAll(m_file->definitions());
        return static_cast<int>(m_file->definitions().size());
    }
    auto definition = m_file->find(name);
    if (!definition)
        return 0;
    add(std::move(definition));
    return 1;
}

void LinetypeModel::add(LinetypeDefinitionPtr definition, int lineTypeId) {
    std::string key = keyOf(definition->name);
    const auto place = std::ranges::lower_bound(m_entries, key, {}, &Entry::key);
    const int row = static_cast<int>(place - m_entries.begin());
    if (place != m_entries.end() && place->key == key) {
        *place = {std::move(key), std::move(definition), lineTypeId};
        Q_EMIT dataChanged(index(row), index(row));
        return;
    }
    beginInsertRows({}, row, row);
    m_entries.insert(place, {std::move(key), std::move(definition), lineTypeId});
    endInsertRows();
}

void LinetypeModel::addAll(const std::vector<LinetypeDefinitionPtr>& definitions) {
    beginResetModel();
    std::vector<Entry> all;
    all.reserve(definitions.size() + m_entries.size());
    for (const LinetypeDefinitionPtr& definition : definitions)
        all.push_back({keyOf(definition->name), definition});
    std::ranges::move(m_entries, std::back_inserter(all));
    std::ranges::stable_sort(all, {}, &Entry::key); // of two, the one just read comes first and stays
    const auto surplus = std::ranges::unique(all, {}, &Entry::key);
    all.erase(surplus.begin(), surplus.end());
    m_entries = std::move(all);
    endResetModel();
}

int LinetypeModel::rowOf(const KorString& name) const {
    const std::string key = keyOf(name);
    const auto place = std::ranges::lower_bound(m_entries, key, {}, &Entry::key);
    return place != m_entries.end() && place->key == key ? static_cast<int>(place - m_entries.begin()) : -1;
}

const LinetypeDefinition* LinetypeModel::definition(int row) const {
    return row >= 0 && row < rowCount() ? m_entries[static_cast<std::size_t>(row)].definition.get() : nullptr;
}

const LinetypeDefinition* LinetypeModel::definition(const QModelIndex& index) {
    const auto* model = qobject_cast<const LinetypeModel*>(index.model());
    return model ? model->definition(index.row()) : nullptr;
}

int LinetypeModel::lineTypeId(int row) const {
    return definition(row) ? m_entries[static_cast<std::size_t>(row)].lineTypeId : 0;
}

int LinetypeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant LinetypeModel::data(const QModelIndex& index, int role) const {
    const LinetypeDefinition* shown = definition(index.row());
    if (!shown)
        return {};
    if (role == Qt::DisplayRole)
        return toQt(shown->name);
    if (role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole)
        return toQt(shown->description);
    return {};
}
