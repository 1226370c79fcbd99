#pragma once

#include <QObject>

#include <string>

class QActionGroup;
class QMenu;
class StatusLine;

/// The choice of the program's language: that of the system, or one of those that there are texts of. It is
/// remembered, and holds from the next start on: what is open keeps its words.
class LanguageMenu : public QObject {
    Q_OBJECT

public:
    /// Adds the choice to a menu. Both must outlive the object.
    LanguageMenu(QMenu& options, StatusLine& status);

private:
    /// `code` is empty for the system's.
    void add(QMenu& menu, QActionGroup& group, const QString& text, const std::string& code);
    void choose(const std::string& code);

    StatusLine& m_status;
};
