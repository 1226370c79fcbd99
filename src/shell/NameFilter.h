#pragma once

#include "controls/KorTreeModel.h"

#include <QObject>
#include <QTimer>

class KorString;
class QLineEdit;
class SectionViews;

/// The field above the trees: the tree that is shown shows only what has the typed text in its name.
class NameFilter : public QObject {
    Q_OBJECT

public:
    /// `field` is not owned; both must outlive the object.
    NameFilter(QLineEdit& field, SectionViews& sections);

    bool isSet() const;
    KorString text() const;
    bool hasFocus() const;
    void focus();

    /// Shows everything again, at once. Returns whether anything was typed.
    bool clear();
    /// Types this again, with the cursor where it was, after everything was made anew.
    void putBack(const KorString& typed, int cursor);
    int cursor() const;
    /// Items came or went, or have other names.
    void refresh();
    /// The first entry that was found; null without one.
    KorTreeHandle firstMatch();

Q_SIGNALS:
    /// The tree shows what passes now, and whether that is anything.
    void applied(bool found);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();
    void prepare();

    QLineEdit& m_field;
    SectionViews& m_sections;
    QTimer m_rest; // of the focus in the field
};
