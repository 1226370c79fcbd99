#pragma once

#include "base/KorString.h"

#include <QObject>

class CommandStrip;
class NameFilter;
class Navigation;
class QPushButton;
class SectionViews;
class StatusLine;
class TreeSelection;

/// What the window says and allows about what is selected, beside the right side: the status line and the
/// states of the commands.
class SelectionStatus : public QObject {
    Q_OBJECT

public:
    /// `use` does what the command of that name does. All must outlive the object.
    SelectionStatus(SectionViews& sections, NameFilter& filter, TreeSelection& selection,
                    Navigation& navigation, CommandStrip& commands, QPushButton& use, StatusLine& status);

    void updateCommands();

private:
    void show();
    void showFiltered(bool found);
    KorString whatIsHidden() const;

    SectionViews& m_sections;
    NameFilter& m_filter;
    TreeSelection& m_selection;
    Navigation& m_navigation;
    CommandStrip& m_commands;
    QPushButton& m_use;
    StatusLine& m_status;
    bool m_isAnyFound = true; // by the filter
};
