#pragma once

// Reads log files as a technician would: lines with their headers, messages put together again.

#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace test {

struct LogFolder {
    std::vector<std::pair<int, std::size_t>> files;  // number and size in bytes, by number
    std::vector<std::string> messages;               // joined lines without headers, in file order
    std::vector<std::string> broken;                 // lines that belong to no message
};

// Every message is expected to begin with "<tag" and to end with ">", on one line or several.
LogFolder ReadLogFolder(const Text& folder);

// The lines of one file behind its file header, each without its end.
std::vector<std::string> ReadLogLines(const Text& path);

// The folder of the log front end, beside the executable. It is emptied by LoggedBy.
Text OwnLogFolder();

// What the child function (support/child_process.h) logs, up to five minutes long and in one file: its lines, with "HEADER" in
// place of line headers; "" when there is no log at all.
std::string LoggedBy(const TCHAR* child);

}  // namespace test
