#pragma once

#include "data/text/TableRows.h"

/// The text form of a style database: files that people read, compare and edit.
///
///     # a comment; blank lines count for nothing
///     [length_clip]
///     name            | along_x | interval | linetype
///     Long members    | 1       | 1000     | Zigzag
///     Plates          | 0       |          |
///
/// A section holds rows of one table: the table's name in brackets, a line that names columns, one line for
/// each row. Fields are separated by `|`; blanks around them do not count. A table may have several sections,
/// in any number of files; rows are numbered in the order in which they come, unless the section has the
/// column `key`, in which keys ascend.
///
/// - `[include path]` reads another file or folder at this place; a path that is not absolute starts in the
///   folder of the file. A file counts once, however often it is included.
/// - A column that a section does not name has the record's default in all rows, and so has an empty field
///   of a number or a reference. An empty field of a text is an empty text.
/// - A reference is the run name of the row that it means, wherever that row stands, or a key in angle
///   brackets: `<17>`, `<-1>`. Run names are unique and not empty, but for the parts of other rows and in
///   sections with the column `key`.
/// - Numbers have a point as decimal mark; real numbers may be fractions: `1/48`.
/// - Columns that the schema numbers (`view_1`, `view_2`, ...) are one column here (`views`), a list with `;`
///   between its elements. Elements left out, at the end or between two `;`, have the default.
/// - A backslash takes the meaning from the sign after it: `\|`, `\;`, `\\`, and `\#`, `\[` or `\<` where one
///   of them begins a text. `\n`, `\r` and `\t` are a line break, a carriage return and a tab, `\s` a blank
///   at the end of a text.

/// Reads the file `path`, or all `*.txt` files of the folder `path` in the order of their names, into `rows`,
/// which must be empty. On failure the sentence names file and line, and `rows` holds part of the rows.
Result<> readTextForm(const std::string& path, TableRows& rows);

/// Makes the database file `targetFile` from the text form in `textFolder`. An existing file is an error and
/// stays as it is; nothing appears before it is complete.
Result<> buildDatabase(const std::string& textFolder, const std::string& targetFile);
