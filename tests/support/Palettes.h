#pragma once

#include <QPalette>

inline QPalette darkPalette() {
    const QColor window(45, 47, 50);
    const QColor base(32, 34, 36);
    const QColor text(228, 230, 232);
    const QColor disabled(128, 131, 135);
    QPalette palette(window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(38, 40, 43));
    palette.setColor(QPalette::Button, QColor(56, 59, 63));
    palette.setColor(QPalette::Mid, QColor(80, 84, 88));
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::Link, QColor(110, 175, 240));
    palette.setColor(QPalette::Highlight, QColor(45, 110, 185));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(80, 84, 88));
    palette.setColor(QPalette::Disabled, QPalette::Base, window);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    palette.setColor(QPalette::PlaceholderText, disabled);
    return palette;
}

/// A complete light or dark palette, as a desktop gives them to the program.
inline QPalette desktopPalette(bool dark) {
    if (dark)
        return darkPalette();
    const QColor window(239, 240, 241);
    QPalette light(window);
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Disabled, QPalette::Base, window);
    light.setColor(QPalette::AlternateBase, QColor(247, 248, 249));
    light.setColor(QPalette::Highlight, QColor(48, 115, 190));
    light.setColor(QPalette::HighlightedText, Qt::white);
    light.setColor(QPalette::Disabled, QPalette::Highlight, QColor(170, 174, 178));
    return light;
}

/// White and yellow on black, as desktops offer to those who see little.
inline QPalette highContrastPalette() {
    QPalette palette(Qt::black);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const auto role : {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button,
                                QPalette::ToolTipBase, QPalette::HighlightedText})
            palette.setColor(group, role, Qt::black);
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                QPalette::ToolTipText, QPalette::Mid})
            palette.setColor(group, role, Qt::white);
        palette.setColor(group, QPalette::Highlight, Qt::yellow);
        palette.setColor(group, QPalette::PlaceholderText, QColor(150, 150, 150));
    }
    palette.setColor(QPalette::Link, Qt::cyan);
    return palette;
}

/// Light, dark and of high contrast.
inline QList<QPalette> desktopPalettes() {
    return {desktopPalette(false), desktopPalette(true), highContrastPalette()};
}
