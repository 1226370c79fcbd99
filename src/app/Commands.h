#pragma once

#include <cstdint>
#include <string>
#include <vector>

class DataFolder;

/// What the program gives back to the shell.
enum eExitCode : int {
    kExitDone = 0,
    kExitFailed = 1, ///< it could not, or it found something
    kExitUsage = 2,  ///< the command line itself is wrong
};

struct ListOptions {
    std::string source; ///< empty: all
    std::string kind = "detail-style";
    bool json = false;
};

/// One row, as a user names it.
struct RowOptions {
    std::string kind;
    std::string name;
    std::string source; ///< empty: the command's own choice
};

/// A picture of a window that is painted instead of opening it for a user.
struct PictureOptions {
    std::string file;       ///< PNG; empty: no picture, the window is the user's
    bool overwrite = false; ///< replace the file where there is one
    std::string size;       ///< of the window, "WxH" in pixels; empty: as the window likes
};

struct EditOptions {
    std::string file; ///< a style database that is shown beside the others
    RowOptions style{
        "detail-style", {}, {}}; ///< the style to open with; without a name the file's, or the last place
    PictureOptions picture;
};

struct RequestOptions {
    int key = 0;        ///< of the view request that is selected at first; 0: none
    std::string source; ///< in which alone one can be chosen; empty: in all
    bool json = false;
    PictureOptions picture;
};

struct ShowOptions {
    RowOptions row;
    bool json = false;
};

/// How a command changes records.
struct ChangeOptions {
    bool json = false;
    bool dryRun = false; ///< only say what would be done
    bool shared = false; ///< write although several records show the row
};

struct SetOptions {
    RowOptions row;
    std::string column;
    std::string value;
    ChangeOptions how;
};

struct NewOptions {
    RowOptions row;
    std::string group;               ///< in which it is filed; empty: none
    std::vector<std::string> values; ///< of its columns, as COLUMN=VALUE
    ChangeOptions how;
};

struct CopyOptions {
    RowOptions row;
    std::string newName;
    std::string to;    ///< source of the copy; empty: the User database
    bool deep = false; ///< copy all along that it uses
    ChangeOptions how;
};

struct RenameOptions {
    RowOptions row;
    std::string newName;
    ChangeOptions how;
};

struct DeleteOptions {
    RowOptions row;
    ChangeOptions how;
};

enum class eEntryAction : std::uint8_t { kAdd, kRemove, kMove, kSet };

struct EntryOptions {
    eEntryAction action = eEntryAction::kAdd;
    RowOptions owner;                ///< the record whose list it is
    std::string entry;               ///< its place, from 1, or its name
    std::string place;               ///< where it is put; empty: at the end
    std::vector<std::string> values; ///< of a new one, as COLUMN=VALUE, or the value of its first column
    std::string column;
    std::string value;
    ChangeOptions how;
};

struct ExportOptions {
    std::string style;               ///< its name
    std::vector<std::string> others; ///< those that go into the same file
    std::string source;              ///< empty: the first that has the first of them
    std::string file;
    bool overwrite = false;
};

/// A drawing that a style makes of a sample part.
struct DrawingOptions {
    RowOptions row{"detail-style", {}, {}};
    std::string part;                   ///< name of the sample part; empty: the one that suits the style
    std::string view;                   ///< the one view that is wanted; empty: all
    std::vector<std::string> highlight; ///< kind and name of a record, and a column of it; empty: none
    bool sheet = false;                 ///< with what the style says in words
    std::string file;
    bool overwrite = false;
    bool json = false;
};

struct ImportOptions {
    std::string file;
    std::vector<std::string> styles; ///< by their names; empty: all of the file
    std::string to;                  ///< source that they come into; empty: the User database
    std::string sameName;            ///< "both", "mine" or "replace"; empty: both are kept
    bool dryRun = false;             ///< only say what would be done
    bool json = false;
};

struct CheckOptions {
    std::vector<std::string> files; ///< empty: the databases of the data folder
    bool json = false;
};

struct CompactOptions {
    std::string source = "user";
    bool dryRun = false; ///< only say what would be removed
};

struct SamplesOptions {
    std::string folder; ///< empty: the data folder
};

/// The commands without a window. Each prints its result on standard output and sentences about what went
/// wrong on standard error, and returns an `eExitCode`. `folder` is open, except
/// where samples are built or files checked.
int listCommand(DataFolder& folder, const ListOptions& options);
int showCommand(DataFolder& folder, const ShowOptions& options);
int setCommand(DataFolder& folder, const SetOptions& options);
/// Makes a record with the defaults of its kind.
int newCommand(DataFolder& folder, const NewOptions& options);
/// Copies a record under a new name, within its source or into another one with all that it uses.
int copyCommand(DataFolder& folder, const CopyOptions& options);
int renameCommand(DataFolder& folder, const RenameOptions& options);
/// Deletes a record that nothing uses.
int deleteCommand(DataFolder& folder, const DeleteOptions& options);
/// Edits the list of a record: entries of a map, qualifiers of a set, dimensions, views of a style, ...
int entryCommand(DataFolder& folder, const EntryOptions& options);
/// Writes detail styles of one source with all that they depend on into a database file of their own.
int exportCommand(DataFolder& folder, const ExportOptions& options);
/// Draws a sample part as a detail style says, into an SVG file. What could not be shown is told.
int pictureCommand(DataFolder& folder, const DrawingOptions& options);
/// Takes detail styles of such a file into a source.
int importCommand(DataFolder& folder, const ImportOptions& options);
/// Looks for damage, dangling references and unused records.
int checkCommand(DataFolder& folder, const CheckOptions& options);
/// Removes the parts of records that do not exist any more.
int compactCommand(DataFolder& folder, const CompactOptions& options);
/// Builds the sample databases where they are absent.
int samplesCommand(DataFolder& folder, const SamplesOptions& options);
