#include "log_reader.h"

#include <gtest/gtest.h>
#include <kadata/directory.h>

#include <algorithm>

#include "support/child_process.h"

namespace test {
namespace {

constexpr std::size_t kHeaderLines = 4;

std::vector<std::string> Lines(const std::string& utf16) {
    EXPECT_EQ(utf16.size() % 2, 0U) << "half a character at the end";
    std::vector<std::string> lines(1);
    for (std::size_t i = 2; i + 1 < utf16.size(); i += 2) {
        const unsigned unit =
            static_cast<unsigned char>(utf16[i]) | static_cast<unsigned>(static_cast<unsigned char>(utf16[i + 1])) << 8;
        const char c = unit < 0x80 ? static_cast<char>(unit) : '?';
        if (c == '\n' && lines.back().ends_with('\r')) {
            lines.back().pop_back();
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    EXPECT_TRUE(lines.back().empty()) << "the last line has no end: " << lines.back();
    lines.pop_back();
    return lines;
}

void Collect(const std::vector<std::string>& lines, LogFolder& folder) {
    std::string open;
    for (const std::string& line : lines) {
        const std::size_t start = line.find('<');
        if (start != line.npos) {
            if (!open.empty())
                folder.broken.push_back(open);
            open = line.substr(start);
        } else if (!open.empty() && !line.empty()) {
            open += "|" + line.substr(line.find_first_not_of(' '));
        }
        if (open.ends_with('>')) {
            folder.messages.push_back(open);
            open.clear();
        }
    }
    if (!open.empty())
        folder.broken.push_back(open);
}

}  // namespace

std::vector<std::string> ReadLogLines(const Text& path) {
    std::vector<std::string> lines = Lines(ReadBytes(path));
    EXPECT_GE(lines.size(), kHeaderLines) << Narrow(path) << " has no file header";
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(std::min(lines.size(), kHeaderLines)));
    return lines;
}

LogFolder ReadLogFolder(const Text& path) {
    LogFolder folder;
    CStringArray names;
    CDirectory::ListFiles(path.c_str(), names, _T("TARVO*.log"), 0xFFFFFFFF);
    std::vector<Text> sorted;
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
        sorted.emplace_back(names[i].GetString());
    std::sort(sorted.begin(), sorted.end());
    for (const Text& name : sorted) {
        const Text file = path + _T("\\") + name;
        folder.files.emplace_back(_wtoi(name.substr(5, 3).c_str()),
                                  static_cast<std::size_t>(CDirectory::GetFileSize(file.c_str())));
        Collect(ReadLogLines(file), folder);
    }
    return folder;
}

Text OwnLogFolder() {
    return Text(CDirectory::Concat(CDirectory::GetExePath(), _T("SERVICE\\LOG-FILES")).View());
}

std::string LoggedBy(const TCHAR* child) {
    const CString folder = OwnLogFolder().c_str();
    CDirectory::Remove(folder);
    EXPECT_EQ(ChildProcess({child}).Wait(300000), 0U);
    if (!CDirectory::FileExist(folder, _T("TARVO000.log")))
        return "";
    std::string all;
    for (const std::string& line : ReadLogLines(OwnLogFolder() + _T("\\TARVO000.log"))) {
        const std::size_t ids = line.find("; P") == line.npos ? line.find(";  P") : line.find("; P");
        const std::size_t header = ids == line.npos ? 0 : line.find("  ", line.find('.', ids)) + 2;
        all += (header != 0 ? "HEADER" + line.substr(header) : line) + "\n";
    }
    return all;
}

}  // namespace test
