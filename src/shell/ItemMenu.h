#pragma once

#include "controls/KorTreeModel.h"

#include <QObject>

#include <functional>
#include <vector>

class CommandStrip;
class KorDSMDatabaseItem;
class KorDSMUndoStrip;
class QMenu;
class QPoint;
class QWidget;
class TreeSelection;
class RightSide;
class SectionViews;

/// The context menus of the trees and of the list at the right: what can be done with what is selected.
class ItemMenu : public QObject {
    Q_OBJECT

public:
    /// Adds commands that only some items have.
    using AddOwn = std::function<void(QMenu&, KorDSMDatabaseItem&)>;

    /// All must outlive the object.
    ItemMenu(QWidget& window, SectionViews& sections, RightSide& rightSide, TreeSelection& selection,
             CommandStrip& commands, KorDSMUndoStrip& undo);

    /// In the order in which they come in the menu.
    void add(AddOwn addOwn) { m_own.push_back(std::move(addOwn)); }

    /// Fills a menu with what can be done with what is selected; F1 in it opens the topic of the commands.
    void fill(QMenu& menu);

private:
    void showForTree(KorTreeHandle entry, const QPoint& position);
    void showForList(const QPoint& position);

    QWidget& m_window;
    SectionViews& m_sections;
    RightSide& m_rightSide;
    TreeSelection& m_selection;
    CommandStrip& m_commands;
    KorDSMUndoStrip& m_undo;
    std::vector<AddOwn> m_own;
};
