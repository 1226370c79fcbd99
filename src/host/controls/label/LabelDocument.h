#pragma once

#include "base/LabelFormat.h"

#include <QColor>
#include <QTextCharFormat>
#include <QTextCursor>

class QTextDocument;

/// How a label is shown: what the document needs besides the label itself.
struct LabelLook {
    LabelStyle defaults{"Arial", 5.0, 3};
    QColor background = Qt::black;
    /// A text of 2.5 mm has to be legible, and a title of 7 mm should leave room for a few lines.
    double pixelsPerMillimetre = 5;
};

/// Labels in text documents. A character format carries the label's own attributes beside what Qt draws from
/// them, so that a size or a colour comes back exactly as it went in.
namespace LabelDocument {

/// The object type of a variable in a document: one object character whose format carries the name.
inline constexpr int kToken = QTextFormat::UserObject + 1;

void setFont(QTextCharFormat& format, const KorString& family);
void setSize(QTextCharFormat& format, double size, const LabelLook& look);
void setColor(QTextCharFormat& format, int number, const LabelLook& look);
void setBold(QTextCharFormat& format, bool on);
QTextCharFormat charFormat(const LabelStyle& style, const LabelLook& look);

/// The style that `format` carries; attributes that it lacks are those of `defaults`.
LabelStyle styleOf(const QTextCharFormat& format, const LabelStyle& defaults);

/// The name of the variable whose object has `format`; empty for other characters.
QString variableOf(const QTextFormat& format);

/// Replaces the selection of `cursor` by `runs`, as one step of undo.
void insert(QTextCursor& cursor, const LabelRuns& runs, const LabelLook& look);

/// Replaces the whole document, and forgets its undo steps. Typing into an empty document takes the defaults.
void fill(QTextDocument& document, const LabelRuns& runs, const LabelLook& look);

/// The label between two positions of the document.
LabelRuns runs(const QTextDocument& document, int from, int to, const LabelStyle& defaults);
LabelRuns runs(const QTextDocument& document, const LabelStyle& defaults);

} // namespace LabelDocument
