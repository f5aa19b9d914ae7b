#pragma once

// Versions: of executable and library files, and of the running Windows.

#include <afx.h>
#include <kadata/export.h>

// What the version resource of a file tells, read once by the constructor. A value: objects are independent of each other, and
// one object may be used by several threads for reading only. Throws nothing of its own.
class KADATA_API CFileVersionInfo {
public:
    // The size of an array that takes a version: major, minor, build and revision.
    static constexpr int VERSION_SIZE = 4 * sizeof(WORD);

    // Of no file: not valid.
    CFileVersionInfo() = default;
    // Reads the file `path`, in which %NAME% is replaced by environment variables; where there is no such file, that of this path
    // in the program's folder. Not valid when there is no file, no version resource, or it cannot be read. `language` is what
    // GetLanguage tells of a file that does not name its own.
    CFileVersionInfo(CString path, WORD language);

    bool IsValid() const { return m_valid; }
    // The first language that the resource names.
    WORD GetLanguage() const { return m_language; }
    // Four numbers, 0 where the file tells none. `out` is left alone unless `size` is VERSION_SIZE (bytes).
    void GetFileVersion(WORD* out, int size) const;
    void GetProductVersion(WORD* out, int size) const;
    // The texts are those of the first language, empty without one.
    CString GetProductVersion() const { return m_productText; }

    // One line for a log: "NAME: FileVer TEXT [1,2,3,4]", or "NAME: no version info or file not found". The name is the path, or
    // with `fullPath` false its last part, followed by blanks up to 18 characters.
    CString ToString(bool fullPath) const;

private:
    struct Version {
        WORD numbers[4] = {};  // major, minor, build, revision
    };

    static void Copy(const Version& version, WORD* out, int size);
    void Read();

    WORD m_language = 0;
    CString m_path;
    Version m_file;
    Version m_product;
    CString m_fileText;
    CString m_productText;
    bool m_valid = false;
};

// Which Windows the program runs on, as the system tells programs of its kind; false everywhere else, and where the system does
// not tell.
class KADATA_API KaCOSInfo {
public:
    static bool IsWindowsXPOrAbove();
    static bool IsWindowsServer2003();  // and nothing above
    static bool IsWindowsVistaOrAbove();
    static bool IsWindows7OrAbove();
};
