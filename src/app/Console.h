#pragma once

#include "base/KorString.h"

#include <vector>

class QJsonArray;
class QJsonObject;
class QString;

/// What the commands print.
namespace Console {

/// A sentence about something that went wrong, on standard error.
void complain(const KorString& sentence);
/// A line on standard output.
void say(const KorString& line);
/// Prints text that has line breaks of its own.
void sayAsItIs(const std::string& text);
/// The same of something that is stored now: `finish` repeats it where standard output does not take all.
void sayStored(const KorString& line);
/// What a document on standard output says is stored, in a sentence for `finish` alone.
void noteStored(const KorString& sentence);
/// Sends out what is held back. Where standard output did not take all, complains and repeats on standard
/// error what was stored since the last call. Returns whether it did.
bool finish();
/// Text as JSON documents take it.
QString text(const KorString& utf8);
/// A document on standard output, indented.
void print(const QJsonArray& document);
void print(const QJsonObject& document);

/// Rows of cells under a heading, in columns as wide as their widest cell; nothing where there are no rows.
/// Lines are cut to the width of a terminal, and not at all where the output is none. Line breaks and control
/// characters are shown as escapes: what a database holds must not steer the terminal.
void printColumns(const std::vector<KorString>& heading, const std::vector<std::vector<KorString>>& rows);

} // namespace Console
