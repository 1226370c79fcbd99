#pragma once

#include "controls/KorInfoCtrl.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTextEdit>
#include <QToolButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

/// The contrast of two colours by the formula of the Web Content Accessibility Guidelines.
inline double wcagContrast(const QColor& text, const QColor& ground) {
    const auto luminance = [&](const QColor& color) {
        const auto linear = [](double c) {
            return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        // What shines through counts.
        const auto seen = [&](double over, double under) {
            return linear(over * color.alphaF() + under * (1 - color.alphaF()));
        };
        return 0.2126 * seen(color.redF(), ground.redF()) + 0.7152 * seen(color.greenF(), ground.greenF()) +
               0.0722 * seen(color.blueF(), ground.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(text), luminance(ground)});
    return (light + 0.05) / (dark + 0.05);
}

/// The roles in which a widget draws its text and what is below it.
inline std::pair<QPalette::ColorRole, QPalette::ColorRole> rolesOf(const QWidget& widget) {
    if (const auto* combo = qobject_cast<const QComboBox*>(&widget))
        return {combo->currentIndex() < 0 ? QPalette::PlaceholderText : QPalette::ButtonText,
                QPalette::Button};
    if (qobject_cast<const QPushButton*>(&widget) || qobject_cast<const QToolButton*>(&widget))
        return {QPalette::ButtonText, QPalette::Button};
    if (qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QTextEdit*>(&widget) ||
        qobject_cast<const QAbstractItemView*>(&widget))
        return {QPalette::Text, QPalette::Base};
    return {QPalette::WindowText, QPalette::Window};
}

/// Expects that every text that is seen below `root` can be read easily, in the state and palette in which
/// it is now. Returns how many that were.
inline int expectReadable(const QWidget& root) {
    constexpr double kEnough = 4.5;
    int seen = 0;
    for (const QWidget* widget : root.findChildren<QWidget*>()) {
        if (!widget->isVisible())
            continue;
        ++seen;
        const QPalette palette = widget->palette(); // of the group that its state selects
        const auto [text, ground] = rolesOf(*widget);
        EXPECT_GE(wcagContrast(palette.color(text), palette.color(ground)), kEnough)
            << widget->metaObject()->className() << " " << widget->objectName().toStdString();
        const auto* edit = qobject_cast<const QTextEdit*>(widget);
        for (QTextBlock block = edit ? edit->document()->begin() : QTextBlock(); block.isValid();
             block = block.next())
            for (auto run = block.begin(); !run.atEnd(); ++run) {
                const QBrush own = run.fragment().charFormat().foreground();
                EXPECT_GE(wcagContrast(own.style() == Qt::NoBrush ? palette.color(text) : own.color(),
                                       palette.color(QPalette::Base)),
                          kEnough)
                    << run.fragment().text().toStdString();
            }
    }
    return seen;
}

/// What a screen reader calls a widget. The name of a combo box is its chosen text on some systems; what it
/// is for says the label that belongs to it.
inline QString accessibleName(QWidget& widget) {
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&widget);
    if (!told || !qobject_cast<QComboBox*>(&widget))
        return told ? told->text(QAccessible::Name) : QString();
    for (const auto& [label, relation] : told->relations(QAccessible::Label))
        if (!qobject_cast<QGroupBox*>(label->object()))
            return label->text(QAccessible::Name);
    return {};
}

/// Expects that whatever takes the focus below `root`, every box in a list and every picture has a name for
/// those who do not see it. Returns how many that were.
inline int expectNamed(const QWidget& root) {
    int seen = 0;
    for (QWidget* widget : root.findChildren<QWidget*>()) {
        const auto* panel = qobject_cast<const KorInfoCtrl*>(widget);
        const bool takesFocus = (widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->focusProxy();
        if (!widget->isVisible() || !(takesFocus || (panel && panel->pictureId() != 0)))
            continue;
        ++seen;
        const QString name = accessibleName(*widget);
        EXPECT_FALSE(name.isEmpty() || name.contains(u'&'))
            << widget->metaObject()->className() << " " << widget->objectName().toStdString() << " in "
            << widget->parentWidget()->metaObject()->className() << " picture "
            << (panel ? panel->pictureId() : 0);
        const auto* view = qobject_cast<const QAbstractItemView*>(widget);
        for (int row = 0; view && view->model() && row < view->model()->rowCount(); ++row) {
            const QModelIndex box = view->model()->index(row, 0);
            if (box.data(Qt::CheckStateRole).isValid()) {
                EXPECT_FALSE(box.data(Qt::AccessibleTextRole).toString().isEmpty()) << row;
            }
        }
    }
    return seen;
}
