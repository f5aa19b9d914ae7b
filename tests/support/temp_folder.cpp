#include "temp_folder.h"

#include <gtest/gtest.h>
#include <tchar.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace test {
namespace {

namespace fs = std::filesystem;

fs::path NativePath(const Text& path) {
    if constexpr (std::is_same_v<fs::path::value_type, TCHAR>) {
        return fs::path(path);
    } else {  // C:\ is the root of the file system
        std::string native = Narrow(std::basic_string_view<TCHAR>(path).substr(2));
        for (char& c : native) {
            c = c == '\\' ? '/' : c;
        }
        return fs::path(native);
    }
}

Text SystemPath(const fs::path& path) {
    const std::string native = path.string();
    Text text = native.front() == '/' ? Text(_T("C:")) + Widen(native) : Widen(native);
    for (TCHAR& c : text) {
        c = c == _T('/') ? _T('\\') : c;
    }
    return text;
}

fs::path NewFolder() {
    static std::atomic<unsigned> counter{0};
    const std::string name = "kadata-test-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++counter);
    fs::path path = fs::temp_directory_path() / name;
    fs::create_directories(path);
    fs::permissions(path, fs::perms::all);  // usable without root's rights too
    return path;
}

}  // namespace

TempFolder::TempFolder() : path_(SystemPath(NewFolder())) {}

TempFolder::~TempFolder() {
    std::error_code error;
    fs::remove_all(NativePath(path_), error);
    EXPECT_FALSE(error) << "left behind: " << Narrow(path_) << ": " << error.message();
}

Text TempFolder::Path(std::basic_string_view<TCHAR> name) const {
    return path_ + _T("\\") + Text(name);
}

Text TempFolder::Write(std::basic_string_view<TCHAR> name, std::string_view bytes) const {
    Text path = Path(name);
    WriteBytes(path, bytes);
    return path;
}

Text TempFolder::MakeFolder(std::basic_string_view<TCHAR> name) const {
    Text path = Path(name);
    fs::create_directories(NativePath(path));
    return path;
}

std::string TempFolder::Read(std::basic_string_view<TCHAR> name) const {
    return ReadBytes(Path(name));
}

bool TempFolder::Has(std::basic_string_view<TCHAR> name) const {
    return fs::exists(fs::symlink_status(NativePath(Path(name))));
}

std::string ReadBytes(const Text& path) {
    std::ifstream file(NativePath(path), std::ios::binary);
    EXPECT_TRUE(file.is_open()) << Narrow(path);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

void WriteBytes(const Text& path, std::string_view bytes) {
    std::ofstream file(NativePath(path), std::ios::binary | std::ios::trunc);
    file << bytes;
    EXPECT_TRUE(file.flush().good()) << Narrow(path);
}

std::string Narrow(std::basic_string_view<TCHAR> text) {
    const int length = static_cast<int>(text.size());
    std::string out(text.size() * 3, '\0');
    const int bytes =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, out.data(), static_cast<int>(out.size()), nullptr, nullptr);
    out.resize(static_cast<std::size_t>(bytes));
    return out;
}

Text Widen(std::string_view text) {
    const int length = static_cast<int>(text.size());
    Text out(text.size(), _T('\0'));
    const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, out.data(), length);
    out.resize(static_cast<std::size_t>(units));
    return out;
}

}  // namespace test
