#pragma once

#include "drawing/StyleRows.h"

#include <filesystem>

/// Lines as the records of one style draw them.
class Pens {
public:
    /// `support` is the folder in which line type files without a path lie.
    Pens(StyleRows& rows, const StructDetHcadSettings& settings, std::filesystem::path support)
        : m_rows(rows), m_settings(settings), m_support(std::move(support)) {}

    /// The definition of a line type; null for continuous ones. One that cannot be read is noted.
    LinetypeDefinitionPtr linetype(std::int32_t key);
    Pen pen(std::int32_t linetype, int color, double weight);
    /// The line of axes.
    Pen centreLine(int color) const;
    /// A thin continuous line.
    Pen thin(int color = 7) const;

    const StructDetHcadSettings& settings() const { return m_settings; }

private:
    LinetypeDefinitionPtr read(std::int32_t key);

    StyleRows& m_rows;
    const StructDetHcadSettings& m_settings;
    std::filesystem::path m_support;
};
