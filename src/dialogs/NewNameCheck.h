#pragma once

#include "base/KorString.h"

#include <QObject>

#include <functional>

class QAbstractButton;
class QLabel;
class QLineEdit;

/// Watches a field in which a name is typed: while the name, without blanks at its ends, is one that exists
/// already, OK is disabled and the reason stands beside the field. Upper and lower case differ. An empty name
/// gets a remark, but doesn't disable OK: who asked for the name decides whether to take it.
class NewNameCheck : public QObject {
    Q_OBJECT

public:
    /// The widgets belong to the dialog; `reason` or `ok` may be null.
    NewNameCheck(QLineEdit* edit, QLabel* reason, QAbstractButton* ok, QObject* parent);

    /// Tells names that are taken. Says nothing about the text that is there already.
    void setTaken(std::function<bool(const KorString&)> isTaken) { m_isTaken = std::move(isTaken); }
    /// Judges the present text.
    void check();
    /// What was typed, without blanks at its ends.
    KorString name() const;

private:
    bool isTaken(const KorString& name) const;

    QLineEdit* m_edit;
    QLabel* m_reason;
    QAbstractButton* m_ok;
    std::function<bool(const KorString&)> m_isTaken = [](const KorString&) { return false; };
};
