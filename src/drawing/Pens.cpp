#include "drawing/Pens.h"

#include "base/Translation.h"

namespace {

constexpr double kThin = 0.18; // mm

const LinetypeDefinitionPtr& axisLine() {
    static const LinetypeDefinitionPtr line = [] {
        LinetypeDefinition axis;
        axis.pattern = *LinetypePatterns::parse("A,8,-1.5,1.5,-1.5");
        return std::make_shared<const LinetypeDefinition>(std::move(axis));
    }();
    return line;
}

} // namespace

LinetypeDefinitionPtr Pens::read(std::int32_t key) {
    const auto* row = m_rows.row<StructLinetypes>(key);
    if (!row || row->lineTypeId != 0)
        return nullptr; // those of the host are drawn through
    const auto [folder, name] = LinetypeFile::split(row->filePath);
    const std::filesystem::path file =
        folder.isEmpty() ? m_support / row->filePath.toStdString() : LinetypeFile::pathOf(folder, name);
    LinetypeDefinitionPtr found = LinetypeFile::shared(file)->find(row->name);
    m_rows.noteOutside(kTableLinetypes, key, [file, found, name = row->name] {
        return LinetypeFile::shared(file)->find(name) == found;
    });
    if (!found)
        m_rows.note(KorString::format(
            translated("The line type \"%s\" is not in \"%s\", so its lines are drawn through."),
            {row->name, row->filePath}));
    return found;
}

LinetypeDefinitionPtr Pens::linetype(std::int32_t key) {
    return m_rows.once<LinetypeDefinitionPtr>(key, [&] { return read(key); });
}

Pen Pens::pen(std::int32_t key, int color, double weight) {
    return {linetype(key), m_settings.lineScale, color, weight, m_settings.layer.toStdString()};
}

Pen Pens::centreLine(int color) const {
    return {axisLine(), m_settings.lineScale, color, kThin, m_settings.layer.toStdString()};
}

Pen Pens::thin(int color) const {
    return {nullptr, m_settings.lineScale, color, kThin, m_settings.layer.toStdString()};
}
