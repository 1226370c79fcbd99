#pragma once

#include <string>
#include <vector>

class DataFolder;

/// What the program gives back to the shell.
enum eExitCode : int {
    kExitDone = 0,
    kExitFailed = 1, ///< it could not, or it found something
    kExitUsage = 2,  ///< the command line itself is wrong
};

struct EditOptions {
    std::string screenshot; ///< file into which a picture of the open editor goes instead of running it
    std::string size;       ///< of the window, "WxH" in pixels; empty: as the editor likes
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

struct ShowOptions {
    RowOptions row;
    bool json = false;
};

struct SetOptions {
    RowOptions row;
    std::string column;
    std::string value;
    bool shared = false; ///< write although several records show this row
};

/// The commands without a window. Each prints its result on standard output and sentences about what went
/// wrong on standard error, and returns an `eExitCode`. `folder` is open.
int listCommand(DataFolder& folder, const ListOptions& options);
int showCommand(DataFolder& folder, const ShowOptions& options);
int setCommand(DataFolder& folder, const SetOptions& options);
