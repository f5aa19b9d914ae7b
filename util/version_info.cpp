#include <kadata/directory.h>
#include <kadata/version_info.h>
#include <sysinfoapi.h>
#include <winver.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>

namespace {

constexpr int NAME_WIDTH = 18;

struct Translation {
    WORD language;
    WORD codePage;
};

// The version resource of a file.
class VersionBlock {
public:
    explicit VersionBlock(const CString& path) {
        DWORD unused = 0;
        const DWORD size = GetFileVersionInfoSizeW(path, &unused);
        if (size == 0) {
            return;
        }
        const DWORD room = std::max(size * ROOM, LONGEST_NODE);
        m_bytes.reset(new BYTE[room]());
        if (!GetFileVersionInfoW(path, 0, room, m_bytes.get())) {
            m_bytes.reset();
        }
    }

    bool IsOpen() const { return m_bytes != nullptr; }

    // A value of at least that type's size; a copy, for nothing is known of its alignment.
    template <class T>
    std::optional<T> Value(const CString& name) const {
        const void* value = nullptr;
        T copy;
        if (Query(name, value) < sizeof copy || value == nullptr) {
            return std::nullopt;
        }
        std::memcpy(&copy, value, sizeof copy);
        return copy;
    }

    // Up to its terminator, if there is one.
    CString Text(const CString& name) const {
        const void* value = nullptr;
        const UINT length = Query(name, value);
        if (length == 0 || value == nullptr) {
            return CString();
        }
        const std::basic_string_view<TCHAR> units(static_cast<const TCHAR*>(value), length);
        return CString(units.data(), static_cast<int>(std::min<std::size_t>(units.find(TCHAR{0}), length)));
    }

private:
    // Deliberate: much more than asked for. Lengths inside a damaged resource may lead behind its end, but none of them further
    // than 64 KiB.
    static constexpr DWORD ROOM = 8;
    static constexpr DWORD LONGEST_NODE = 0x20000;

    UINT Query(const CString& name, const void*& value) const {
        void* found = nullptr;
        UINT size = 0;
        if (!VerQueryValueW(m_bytes.get(), name, &found, &size)) {
            return 0;
        }
        value = found;
        return size;
    }

    std::unique_ptr<BYTE[]> m_bytes;
};

CString Field(const Translation& translation, LPCTSTR name) {
    CString field;
    field.Format(_T("\\StringFileInfo\\%04x%04x\\%s"), static_cast<unsigned int>(translation.language),
                 static_cast<unsigned int>(translation.codePage), name);
    return field;
}

bool IsFile(const CString& path) {
    return CDirectory::FileExist(path, _T("")) != 0;
}

// Major in the upper half, minor in the lower one; 0 when the system does not tell.
DWORD WindowsVersion() {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    return GetVersionExW(&version) ? version.dwMajorVersion << 16 | version.dwMinorVersion : 0;
}

constexpr DWORD WINDOWS_XP = 0x50001;
constexpr DWORD WINDOWS_SERVER_2003 = 0x50002;
constexpr DWORD WINDOWS_VISTA = 0x60000;
constexpr DWORD WINDOWS_7 = 0x60001;

}  // namespace

CFileVersionInfo::CFileVersionInfo(CString path, WORD language) : m_language(language) {
    try {
        CDirectory::ExpandEnvironmentVariables(path);
        m_path = IsFile(path) ? path : CDirectory::Concat(CDirectory::GetExePath(), path);
        Read();
    } catch (CException* e) {
        e->Delete();
    } catch (...) {  // no memory: not valid
    }
}

void CFileVersionInfo::Read() {
    if (!IsFile(m_path)) {
        return;
    }
    const VersionBlock block(CDirectory::FullPath(m_path));
    if (!block.IsOpen()) {
        return;
    }
    if (const auto translation = block.Value<Translation>(_T("\\VarFileInfo\\Translation"))) {
        m_language = translation->language;
        m_fileText = block.Text(Field(*translation, _T("FileVersion")));
        m_productText = block.Text(Field(*translation, _T("ProductVersion")));
    }
    if (const auto fixed = block.Value<VS_FIXEDFILEINFO>(_T("\\"))) {
        m_file = {{HIWORD(fixed->dwFileVersionMS), LOWORD(fixed->dwFileVersionMS), HIWORD(fixed->dwFileVersionLS),
                   LOWORD(fixed->dwFileVersionLS)}};
        m_product = {{HIWORD(fixed->dwProductVersionMS), LOWORD(fixed->dwProductVersionMS), HIWORD(fixed->dwProductVersionLS),
                      LOWORD(fixed->dwProductVersionLS)}};
    }
    m_valid = true;
}

void CFileVersionInfo::Copy(const Version& version, WORD* out, int size) {
    if (out != nullptr && size == VERSION_SIZE) {
        std::copy(std::begin(version.numbers), std::end(version.numbers), out);
    }
}

void CFileVersionInfo::GetFileVersion(WORD* out, int size) const {
    Copy(m_file, out, size);
}

void CFileVersionInfo::GetProductVersion(WORD* out, int size) const {
    Copy(m_product, out, size);
}

CString CFileVersionInfo::ToString(bool fullPath) const {
    CString line = fullPath ? m_path : CDirectory::SplitFileNameAndExtensionFromPath(m_path);
    line += CString(_T(' '), std::max(NAME_WIDTH - line.GetLength(), 0));
    if (!m_valid) {
        return line + _T(": no version info or file not found");
    }
    CString version;
    version.Format(_T(": FileVer %s [%u,%u,%u,%u]"), m_fileText, static_cast<unsigned int>(m_file.numbers[0]),
                   static_cast<unsigned int>(m_file.numbers[1]), static_cast<unsigned int>(m_file.numbers[2]),
                   static_cast<unsigned int>(m_file.numbers[3]));
    return line + version;
}

bool KaCOSInfo::IsWindowsXPOrAbove() {
    return WindowsVersion() >= WINDOWS_XP;
}

bool KaCOSInfo::IsWindowsServer2003() {
    return WindowsVersion() == WINDOWS_SERVER_2003;
}

bool KaCOSInfo::IsWindowsVistaOrAbove() {
    return WindowsVersion() >= WINDOWS_VISTA;
}

bool KaCOSInfo::IsWindows7OrAbove() {
    return WindowsVersion() >= WINDOWS_7;
}
