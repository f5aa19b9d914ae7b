#include "path_map.h"

#include <stdlib.h>
#include <unistd.h>

#include <memory>
#include <vector>

#include "../files/drive_table.h"
#include "error_map.h"
#include "utf.h"

namespace kawin {
namespace {

constexpr std::size_t kLongestPath = 32767;
constexpr char16_t kForbidden[] = u"<>\"|?*";

bool IsSeparator(char16_t unit) {
    return unit == u'\\' || unit == u'/';
}

bool IsLetter(char16_t unit) {
    return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}

bool HasDrive(std::u16string_view path) {
    return path.size() >= 2 && IsLetter(path[0]) && path[1] == u':';
}

// Whether a name can hold all of these characters.
bool IsName(std::u16string_view text) {
    for (const char16_t unit : text) {
        if (unit < u' ' || std::u16string_view(kForbidden).find(unit) != std::u16string_view::npos) {
            return false;
        }
    }
    return true;
}

// A path taken apart.
struct Parsed {
    enum class Base { drive, network, current_folder, current_drive, nowhere } base = Base::current_folder;
    char16_t letter = 0;     // of a drive
    bool from_root = false;  // of a drive: not relative to the current directory on it
    std::u16string_view rest;
};

bool TakeOff(std::u16string_view& path, std::size_t length, bool when) {
    path.remove_prefix(when ? length : 0);
    return when;
}

bool StartsWithUnc(std::u16string_view path) {
    return path.size() >= 4 && (path[0] | 0x20) == u'u' && (path[1] | 0x20) == u'n' && (path[2] | 0x20) == u'c' &&
           IsSeparator(path[3]);
}

// Takes \\?\ or \\.\ off; only a drive or UNC\ may follow it.
Parsed Parse(std::u16string_view path) {
    const bool two = path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1]);
    const bool prefixed =
        TakeOff(path, 4, two && path.size() >= 4 && (path[2] == u'?' || path[2] == u'.') && IsSeparator(path[3]));
    Parsed parsed;
    if (prefixed ? TakeOff(path, 4, StartsWithUnc(path)) : TakeOff(path, 2, two)) {
        parsed.base = Parsed::Base::network;
    } else if (HasDrive(path)) {
        parsed.base = Parsed::Base::drive;
        parsed.letter = path[0];
        path.remove_prefix(2);
        parsed.from_root = prefixed || (!path.empty() && IsSeparator(path[0]));
    } else if (prefixed) {
        parsed.base = Parsed::Base::nowhere;
    } else if (!path.empty() && IsSeparator(path[0])) {
        parsed.base = Parsed::Base::current_drive;
    }
    parsed.rest = path;
    return parsed;
}

// Appends the components of `rest` to `path`, "." and ".." resolved; ".." never goes above the first `root` characters.
template <class Text, class Convert>
void AppendComponents(std::u16string_view rest, std::size_t root, typename Text::value_type separator, Convert&& convert,
                      Text& path) {
    while (!rest.empty()) {
        std::size_t length = 0;
        while (length < rest.size() && !IsSeparator(rest[length])) {
            ++length;
        }
        const std::u16string_view component = rest.substr(0, length);
        rest.remove_prefix(length < rest.size() ? length + 1 : length);
        if (component == u"..") {
            const std::size_t last = path.rfind(separator);
            path.resize(last == Text::npos || last < root ? root : last);
        } else if (!component.empty() && component != u".") {
            path += separator;
            path += convert(component);
        }
    }
}

// A native folder, and how much of it is the root that ".." cannot leave.
struct Start {
    std::string folder;  // without trailing slash
    std::size_t root = 0;
};

std::optional<Start> CurrentFolder() {
    const std::unique_ptr<char, void (*)(void*)> native(getcwd(nullptr, 0), &free);
    if (native == nullptr || native.get()[0] != '/') {  // removed, or outside of this process's root
        Fail(ERROR_PATH_NOT_FOUND);
        return std::nullopt;
    }
    Start start{native.get(), 0};
    DriveOf(start.folder, &start.root);
    if (start.folder == "/") {
        start.folder.clear();
    }
    return start;
}

std::optional<Start> StartOnDrive(char16_t letter, bool from_root) {
    std::optional<std::string> root = DriveRoot(letter);
    if (!root) {
        Fail(ERROR_PATH_NOT_FOUND);
        return std::nullopt;
    }
    const std::size_t length = root->size();
    if (!from_root) {
        std::optional<Start> current = CurrentFolder();
        if (!current || (current->root == length && current->folder.compare(0, length, *root) == 0)) {
            return current;
        }
    }
    return Start{std::move(*root), length};
}

constexpr auto kAsTheyAre = [](std::u16string_view name) { return name; };
constexpr auto kAsFileNames = [](std::u16string_view name) { return ToFileName(name); };

// Takes server and share off the path, because ".." cannot leave them: "\server\share", or nothing with ERROR_BAD_NETPATH.
std::optional<std::u16string> TakeShare(std::u16string_view& rest) {
    std::size_t end = 0;
    for (int separators = 0; end < rest.size(); ++end) {
        separators += IsSeparator(rest[end]) ? 1 : 0;
        if (separators == 2) {
            break;
        }
    }
    std::u16string share;
    AppendComponents(rest.substr(0, end), 0, u'\\', kAsTheyAre, share);
    const std::size_t between = share.rfind(u'\\');
    if (between == 0 || between == std::u16string::npos) {
        Fail(ERROR_BAD_NETPATH);
        return std::nullopt;
    }
    rest.remove_prefix(end);
    return share;
}

std::optional<Start> StartOnNetwork(std::u16string_view& rest) {
    const char* const root = getenv("KADATA_UNC_ROOT");
    if (root == nullptr || root[0] != '/') {
        Fail(ERROR_BAD_NETPATH);
        return std::nullopt;
    }
    const std::optional<std::u16string> share = TakeShare(rest);
    if (!share) {
        return std::nullopt;
    }
    Start start{root, 0};
    AppendComponents(*share, 0, '/', kAsFileNames, start.folder);
    start.root = start.folder.size();
    return start;
}

std::optional<Start> StartOf(Parsed& parsed) {
    switch (parsed.base) {
        case Parsed::Base::drive:
            return StartOnDrive(parsed.letter, parsed.from_root);
        case Parsed::Base::network:
            return StartOnNetwork(parsed.rest);
        case Parsed::Base::nowhere:
            Fail(ERROR_PATH_NOT_FOUND);
            return std::nullopt;
        default:
            break;
    }
    std::optional<Start> start = CurrentFolder();
    if (start && parsed.base == Parsed::Base::current_drive) {
        start->folder.resize(start->root);
    }
    return start;
}

struct SystemStart {
    std::u16string folder;  // without trailing backslash
    std::size_t root = 0;
};

std::optional<SystemStart> SystemStartOf(Parsed& parsed) {
    if (parsed.base == Parsed::Base::network) {
        const std::optional<std::u16string> share = TakeShare(parsed.rest);
        return share ? std::optional<SystemStart>({u'\\' + *share, share->size() + 1}) : std::nullopt;
    }
    constexpr std::size_t kDriveLength = 2;
    if (parsed.from_root) {
        return SystemStart{{static_cast<char16_t>(parsed.letter & ~0x20), u':'}, kDriveLength};
    }
    const std::optional<Start> start = StartOf(parsed);
    if (!start) {
        return std::nullopt;
    }
    std::u16string folder = ToSystemPath(start->folder);
    if (folder.back() == u'\\') {
        folder.pop_back();
    }
    return SystemStart{std::move(folder), kDriveLength};
}

// The path's text, or nothing with the last error set.
std::optional<std::u16string_view> CheckedText(LPCWSTR path) {
    const std::u16string_view text = path == nullptr ? std::u16string_view() : std::u16string_view(path);
    if (text.empty() || text.size() > kLongestPath) {
        Fail(text.empty() ? ERROR_PATH_NOT_FOUND : ERROR_FILENAME_EXCED_RANGE);
        return std::nullopt;
    }
    return text;
}

}  // namespace

std::optional<std::string> ToNativePath(LPCWSTR path) {
    const std::optional<std::u16string_view> text = CheckedText(path);
    if (!text) {
        return std::nullopt;
    }
    Parsed parsed = Parse(*text);
    if (!IsName(parsed.rest)) {
        Fail(ERROR_INVALID_NAME);
        return std::nullopt;
    }
    std::optional<Start> start = StartOf(parsed);
    if (!start) {
        return std::nullopt;
    }
    start->folder.reserve(start->folder.size() + parsed.rest.size() + 1);
    AppendComponents(
        parsed.rest, start->root, '/', [](std::u16string_view name) { return ToFileName(name); }, start->folder);
    return start->folder.empty() ? std::string("/") : std::move(start->folder);
}

std::u16string ToSystemPath(std::string_view native) {
    std::size_t root = 0;
    const WCHAR letter = DriveOf(native, &root);
    std::u16string path = {letter, u':'};
    path += FromFileName(native.substr(root));
    for (char16_t& unit : path) {
        unit = unit == u'/' ? u'\\' : unit;
    }
    return path.size() == 2 ? path + u'\\' : path;
}

std::u16string ToFullSystemPath(LPCWSTR path) {
    const std::optional<std::u16string_view> text = CheckedText(path);
    if (!text) {
        return {};
    }
    Parsed parsed = Parse(*text);
    std::optional<SystemStart> start = SystemStartOf(parsed);
    if (!start) {
        return {};
    }
    std::u16string full = std::move(start->folder);
    AppendComponents(parsed.rest, start->root, u'\\', kAsTheyAre, full);
    const bool drive_only = parsed.base != Parsed::Base::network && full.size() == start->root;
    return drive_only || IsSeparator(text->back()) ? full + u'\\' : full;
}

}  // namespace kawin
