// Names: joining and splitting paths, what a file name may hold, the escaping pair, environment variables in a text.

#include <kadata/directory.h>

#include <algorithm>
#include <array>
#include <string>

#include "directory_support.h"

using namespace kadata::directory;

namespace {

constexpr TCHAR kEscape = _T('~');
constexpr TextView kForbidden = _T("\\/\"<>*?|:");

struct EscapeRow {
    TCHAR character;
    TCHAR code;
};
constexpr EscapeRow kEscapes[] = {
    {_T('*'), _T('A')}, {_T('+'), _T('P')}, {_T(','), _T('k')}, {_T('/'), _T('S')}, {_T(':'), _T('C')}, {_T(';'), _T('K')},
    {_T('<'), _T('L')}, {_T('>'), _T('G')}, {_T('?'), _T('Q')}, {_T('|'), _T('V')}, {_T('~'), _T('T')},
};

// Null when no row has it.
const EscapeRow* FindRow(TCHAR EscapeRow::*column, TCHAR value) {
    const auto row =
        std::find_if(std::begin(kEscapes), std::end(kEscapes), [=](const EscapeRow& r) { return r.*column == value; });
    return row == std::end(kEscapes) ? nullptr : row;
}

CString Escape(const CString& name) {
    std::basic_string<TCHAR> escaped;
    for (const TCHAR c : View(name)) {
        const EscapeRow* const row = FindRow(&EscapeRow::character, c);
        if (row == nullptr)
            escaped += c;
        else
            escaped.append({kEscape, row->code});
    }
    return ToText(escaped);
}

struct PathParts {
    CString directory;  // with the drive, and the separator at the end
    CString name;
    CString extension;  // with its dot
};

// No part is longer than the path, so nothing is cut whatever its length.
PathParts Split(const CString& path) {
    const auto room = static_cast<std::size_t>(path.GetLength()) + 1;
    TCHAR drive[_MAX_DRIVE] = {};
    std::basic_string<TCHAR> folder(room, 0), name(room, 0), extension(room, 0);
    _wsplitpath_s(path, drive, std::size(drive), folder.data(), room, name.data(), room, extension.data(), room);
    return {CString(drive) + folder.c_str(), CString(name.c_str()), CString(extension.c_str())};
}

// Empty when it is not set.
CString EnvironmentValue(const CString& name) {
    const DWORD room = GetEnvironmentVariableW(name, nullptr, 0);
    std::basic_string<TCHAR> value(room, 0);
    const DWORD length = room == 0 ? 0 : GetEnvironmentVariableW(name, value.data(), room);
    return length < room ? CString(value.data(), static_cast<int>(length)) : CString();
}

// False when there is nothing left to replace, or it must not be.
bool ExpandFirstVariable(CString& text) {
    const int first = text.Find(_T('%'));
    const int second = first < 0 ? -1 : text.Find(_T('%'), first + 1);
    if (second < 0)
        return false;
    const CString value = EnvironmentValue(text.Mid(first + 1, second - first - 1));
    if (value.IsEmpty() || text.GetLength() - (second - first + 1) + value.GetLength() > kLongestText)
        return false;
    text = text.Left(first) + value + text.Mid(second + 1);
    return true;
}

}  // namespace

CString CDirectory::Concat(CString dir, const CString& name) {
    if (dir.IsEmpty())
        return name;
    dir = WithoutSeparator(dir);
    if (!name.IsEmpty() && name[0] != kSeparator)
        dir += kSeparator;
    return dir + name;
}

CString CDirectory::FullPath(const CString& path) {
    const DWORD room = GetFullPathNameW(path, 0, nullptr, nullptr);
    std::basic_string<TCHAR> full(room, 0);
    const DWORD length = room == 0 ? 0 : GetFullPathNameW(path, room, full.data(), nullptr);
    return length < room ? CString(full.data(), static_cast<int>(length)) : CString();
}

void CDirectory::ExpandEnvironmentVariables(CString& text) {
    // A variable that names itself would be replaced for ever without the text growing.
    for (int i = 0; i < kLongestText && ExpandFirstVariable(text); ++i) {
    }
}

CString CDirectory::GetFileExtension(const CString& path) {
    return Split(path).extension;
}

int CDirectory::HasFileExtension(const CString& path, const CString& extension) {
    return GetFileExtension(path).CompareNoCase(extension) == 0;
}

CString CDirectory::SplitFileNameAndExtensionFromPath(const CString& path) {
    const PathParts parts = Split(path);
    return parts.name + parts.extension;
}

CString CDirectory::SplitFileNameWithoutExtensionFromPath(const CString& path) {
    return Split(path).name;
}

CString CDirectory::SplitPathFromFileNameWithPath(const CString& path) {
    return Split(path).directory;
}

bool CDirectory::IsValidFileName(const CString& name, const CString& extraForbidden) {
    return View(name).find_first_of(kForbidden) == TextView::npos &&
           View(name).find_first_of(View(extraForbidden)) == TextView::npos;
}

CString CDirectory::CreateFileNameForDisk(CString path) {
    return Concat(DirectoryPart(path), Escape(NamePart(path)));
}

CString CDirectory::CreateFileNameForDisplay(CString name) {
    std::basic_string<TCHAR> shown;
    const TextView stored = View(name);
    for (std::size_t i = 0; i < stored.size(); ++i) {
        const bool mark = stored[i] == kEscape && i + 1 < stored.size();
        const EscapeRow* const row = mark ? FindRow(&EscapeRow::code, stored[i + 1]) : nullptr;
        shown += row == nullptr ? stored[i] : row->character;
        i += row == nullptr ? 0 : 1;
    }
    return ToText(shown);
}
