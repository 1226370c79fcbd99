#pragma once

#include <QString>

#include <span>
#include <vector>

class QLabel;
class QMenu;
class QWidget;

/// The letters behind which Alt leads to the controls of a window. They are given here, so that no text has
/// to name one and no two are the same, in whatever language the texts are. A text that names its own keeps
/// it.
namespace KorMnemonics {

/// A letter for each of the texts as far as letters go, none of them twice and none of `taken`; a null
/// character where there is none. First letters of words come before others.
std::vector<QChar> choose(const std::vector<QString>& texts, const QString& taken = {});

/// Gives letters to what can be reached in `part`, a window or a page of one: fields by their labels, buttons
/// by their texts, frames without such by their captions. What is seen outside of `part` keeps its own.
/// Pages within `part` are left out. OK and Cancel have Enter and Esc. To be called again when texts changed
/// or when something came up; what is hidden now gets what is left.
void give(QWidget& part);
/// Gives letters to the entries of a menu, and to those of menus within it.
void give(QMenu& menu);

/// The text as it is read: without the mark before a letter.
QString plain(const QString& text);
/// What says `text` where a mark before a letter counts: for names that hold an ampersand.
QString literal(QString text);
/// Lets the label say `text`, without a change where it does so already apart from its letter.
void setText(QLabel& label, const QString& text);

} // namespace KorMnemonics
