// Dotted texts against dotted patterns: the first line is the text, each further one a pattern.

#include <kadata/utils.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

// Empty pieces included, the last one too.
std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> pieces(1);
    for (const char c : text) {
        if (c == separator) {
            pieces.emplace_back();
        } else {
            pieces.back() += c;
        }
    }
    return pieces;
}

bool Matches(const std::string& pattern, const std::string& text) {
    const std::vector<std::string> wanted = Split(pattern, '.');
    const std::vector<std::string> elements = Split(text, '.');
    bool matches = wanted.size() == elements.size();
    for (std::size_t i = 0; matches && i < wanted.size(); ++i) {
        const std::size_t length = wanted[i].size();
        const bool open = wanted[i].ends_with('*');
        matches = open ? elements[i].substr(0, length - 1) == wanted[i].substr(0, length - 1) : elements[i] == wanted[i];
    }
    return matches;
}

CString Widen(const std::string& text) {
    CString wide;
    for (const char c : text) {
        wide += static_cast<TCHAR>(static_cast<unsigned char>(c));
    }
    return wide;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> lines = Split(std::string(reinterpret_cast<const char*>(data), size), '\n');
    const std::string text = lines.front();
    lines.erase(lines.begin());
    CStringArrayEx patterns;
    bool expected = false;
    for (const std::string& line : lines) {
        patterns.Add(Widen(line));
        expected = expected || Matches(line, text);
    }
    if ((patterns.ContainsStringWithWildcards(Widen(text)) != FALSE) != expected) {
        std::abort();
    }
    return 0;
}
