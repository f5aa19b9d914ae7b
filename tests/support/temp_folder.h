#pragma once

// A folder of its own for one test, removed with all that is in it when the test ends. A test that leaves the folder impossible
// to remove (a handle left open, rights taken away) fails there.

#include <windows.h>

#include <string>
#include <string_view>

namespace test {

using Text = std::basic_string<TCHAR>;

class TempFolder {
public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    // The system path, without a backslash at its end; with a name: the path of that entry.
    const Text& Path() const { return path_; }
    Text Path(std::basic_string_view<TCHAR> name) const;

    // Creates or replaces a file; returns its path.
    Text Write(std::basic_string_view<TCHAR> name, std::string_view bytes) const;
    Text MakeFolder(std::basic_string_view<TCHAR> name) const;

    // The bytes of a file; a test failure and nothing when it cannot be read.
    std::string Read(std::basic_string_view<TCHAR> name) const;
    bool Has(std::basic_string_view<TCHAR> name) const;

private:
    Text path_;
};

// The same for any path.
std::string ReadBytes(const Text& path);
void WriteBytes(const Text& path, std::string_view bytes);

// Text for messages of a failing test.
std::string Narrow(std::basic_string_view<TCHAR> text);
template <class String>
auto Narrow(const String& text) -> decltype(Narrow(text.View())) {  // of a CString
    return Narrow(text.View());
}
Text Widen(std::string_view text);

}  // namespace test
