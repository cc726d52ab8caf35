#pragma once

// What the reading program mixorama-mdbread and the library that runs it agree on: its command
// words, its exit codes and the stderr line that names a missing table.
namespace accessfile::protocol {

inline constexpr char kProgramName[] = "mixorama-mdbread";
inline constexpr char kListCommand[] = "list";
inline constexpr char kCopyCommand[] = "copy";

enum ExitCode : int {
    kOk = 0,
    kUsage = 1,
    kNotADatabase = 2,  // not an Access file, or damaged beyond reading
    kTableMissing = 3,  // a requested table is not in the file
    kOutputFailed = 4,  // the SQLite file could not be written
    kCannotOpen = 5,    // the Access file is missing or unreadable
};

// The line on stderr that names a missing table, followed by the name and a newline.
inline constexpr char kMissingTablePrefix[] = "table not found: ";
// Lines on stdout while copying, so a watcher sees the program is still working.
inline constexpr char kProgressPrefix[] = "progress ";
// A line on stdout for a table of which not every row could be read: the prefix, the row count
// its definition states, the rows copied and the table's name, separated by blanks.
inline constexpr char kIncompletePrefix[] = "incomplete ";

}  // namespace accessfile::protocol
