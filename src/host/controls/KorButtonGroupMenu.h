#pragma once

#include "controls/KorButtonGroup.h"

class QMenu;

/// A button strip with a menu button at its end, whose menu holds check items numbered from 0.
class KorButtonGroupMenu : public QWidget {
    Q_OBJECT

public:
    explicit KorButtonGroupMenu(QWidget* parent = nullptr);

    /// The strip before the menu button.
    KorButtonGroup* buttonGroup() const { return m_group; }
    /// Side by side, or (at first) below each other.
    void setOrientation(Qt::Orientation orientation);

    /// Sets up the menu button; `text` is its tooltip and accessible name.
    void setMenuButton(int id, const KorString& text, const QIcon& icon);
    QToolButton* menuButton() const { return m_menuButton; }
    /// The menu, for entries that are no check items; these come behind all check items.
    QMenu* checkMenu() const { return m_menu; }

    /// Appends a check item and returns its index.
    int addMenuItem(const KorString& text);
    /// Sets a check mark without announcing it. An index that is not there changes nothing.
    void setCheck(int index, bool checked);
    bool isChecked(int index) const;

Q_SIGNALS:
    /// The user chose an item; `checked` is its new state.
    void toggled(int index, bool checked);

private:
    KorButtonGroup* m_group;
    QToolButton* m_menuButton;
    QMenu* m_menu;
};
