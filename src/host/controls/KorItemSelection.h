#pragma once

#include "controls/KorOwnColors.h"

#include <QStyleOptionViewItem>

namespace KorItemSelection {

/// Shows selected rows in a soft tone of the highlight colour with the text as elsewhere, so that coloured
/// pictures in them stay visible, on light and dark.
inline void soften(QPalette& palette) {
    constexpr double kShare = 0.3;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor base = palette.color(group, QPalette::Base);
        const QColor highlight = palette.color(group, QPalette::Highlight);
        const auto mix = [](int from, int to) { return from + static_cast<int>((to - from) * kShare); };
        palette.setColor(group, QPalette::Highlight,
                         QColor(mix(base.red(), highlight.red()), mix(base.green(), highlight.green()),
                                mix(base.blue(), highlight.blue())));
        palette.setColor(group, QPalette::HighlightedText, palette.color(group, QPalette::Text));
    }
}

inline void soften(QStyleOptionViewItem* option) {
    soften(option->palette);
}

/// Shows the selected rows of a list so from now on.
inline void keepSoft(QWidget* list) {
    new KorOwnColors(list, [](QPalette& own, const QPalette& around) {
        QPalette soft = around;
        soften(soft);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            for (const auto role : {QPalette::Highlight, QPalette::HighlightedText})
                own.setColor(group, role, soft.color(group, role));
    });
}

} // namespace KorItemSelection
