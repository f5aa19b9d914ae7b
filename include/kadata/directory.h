#pragma once

// The library's file-system rules: directory trees, lists, clean-up by age, names for disk and display, numbered items, places.

#include <afx.h>
#include <afxcoll.h>
#include <kadata/export.h>

#include <optional>

// Orders the index lists of numbered items: ascending.
class KADATA_API CIntComparer {
public:
    bool operator()(int left, int right) const;
};

// What CDirectory::FindRemovableUsbDrive asks about the drives. The system's own drives are used where none is handed in.
// A root is a letter followed by ":\".
class KADATA_API IDriveTable {
public:
    virtual ~IDriveTable() = default;

    // One bit for each drive that is there, bit 0 for A.
    virtual DWORD LogicalDrives() const = 0;
    // What GetDriveTypeW says: DRIVE_REMOVABLE and its siblings.
    virtual UINT DriveType(const CString& root) const = 0;
    // Size of the whole medium in bytes; nothing when it cannot be read, for example because the drive is empty.
    virtual std::optional<ULONGLONG> TotalBytes(const CString& root) const = 0;
    // Nothing when it cannot be read.
    virtual std::optional<CString> VolumeLabel(const CString& root) const = 0;
    // The number of the bus (STORAGE_BUS_TYPE: 7 is USB); 0 when the device does not tell. May throw anything.
    virtual int BusType(TCHAR letter) const = 0;
};

// Static functions only, free of state: any thread may call any of them.
//
// Paths have the backslash as separator. Make, Remove and DeleteFiles throw a CFileException (by pointer; the catcher deletes
// it) with the cause accessDenied, the system's error number and the path that could not be made or removed. Every other
// function throws nothing of its own and tells a failure by its result: 0, false, an empty text, 0xFFFFFFFF.
class KADATA_API CDirectory {
public:
    // Non-zero when `dir` is a directory: 16 when it was found on the disk, 1 for a drive ("C:" or "C:\"). Zero when it is a
    // file, and for a longer name that ends with a backslash. Wildcards are looked up: the first match decides.
    static int Exist(const CString& dir);
    // Non-zero when dir\name is a file. Without `name`, `dir` is the path of the file itself.
    static int FileExist(CString dir, const CString& name);
    // Creates `path` and all missing directories above it; server and share of a network path are never created. Returns 1;
    // throws with the part of the path that could not be created. A directory that someone else creates meanwhile is welcome.
    static int Make(CString path);
    // Removes `path` with all that is in it. Links are removed themselves and never followed, `path` itself included, also when
    // somebody swaps directories and links at the same time. Returns 1 when all is gone, and 0 when `path` or a directory
    // below could not be listed (missing, no rights, deeper than the process may hold handles): that directory and those
    // above it stay. Throws when a file or an emptied directory cannot be deleted, and for the root of a drive and an empty
    // path; what was removed until then is gone.
    static int Remove(CString path);
    // Compares the bytes of two files. 1 when that could be done, and then *equal is 1 for identical contents, else 0. 0 when
    // a name or `equal` is null, a name is empty, or a file cannot be read; then *equal is 0.
    static int Compare(LPCTSTR file1, LPCTSTR file2, int* equal);
    // Joins with one backslash; one at the end of `dir` is taken off, even when `name` is empty. An empty `dir` gives `name`.
    static CString Concat(CString dir, const CString& name);

    // Appends to `out` the names (no paths) of what matches `pattern` in `dir` and has an attribute of the mask:
    // FILE_ATTRIBUTE_DIRECTORY for directories, 0xFFFFFFFF for all. "." and ".." are left out. Returns the size of `out`.
    // An empty `dir` is the root of the current drive.
    static int ListFiles(CString dir, CStringArray& out, const CString& pattern, DWORD attributeMask);
    // Deletes all files, but no directories, that match, for example "C:\x\*.tmp". No match is no failure. Throws at the first
    // file that cannot be deleted.
    static void DeleteFiles(const CString& pathWithPattern);
    // Deletes the matching files in `dir` that were last written more than `days` x 24 hours before `now` (seconds since 1970,
    // UTC; without it, the current time); 0 days means all of them. Returns how many were deleted; the others stay silently.
    // An empty `dir` is the root of the current drive.
    static int DeleteOlderFiles(CString dir, const CString& pattern, unsigned int days);
    static int DeleteOlderFiles(CString dir, const CString& pattern, unsigned int days, __time64_t now);

    // Non-zero when the directory of `filePath` lies on a medium where the caller may still write `bytes` bytes. 0 for a path
    // without backslash.
    static int EnoughRoomForFile(const CString& filePath, DWORD bytes);
    // In bytes; 0 also when there is no such file.
    static LONGLONG GetFileSize(const CString& path);
    // Sets (`set` non-zero) or clears attribute bits and returns the new attributes, whether or not they could be written.
    // 0xFFFFFFFF when the old ones cannot be read.
    static DWORD ModifyFileAttributes(LPCTSTR path, DWORD attributes, int set);

    // The absolute path with "." and ".." resolved. The disk is not looked at. Empty when `path` is no path.
    static CString FullPath(const CString& path);
    // Replaces %NAME% by the value of that environment variable (in any case), values that hold %NAME% themselves included. Stops
    // at the first name that has no value, before the text would become longer than 32,767 characters, and after as many
    // replacements, so that a variable that names itself ends too.
    static void ExpandEnvironmentVariables(CString& text);

    // The directory of the running program, with a backslash at its end.
    static CString GetExePath();
    // Name of the running program. Without extension: less its last four characters, whatever they are; empty for a name of
    // four characters or less.
    static CString GetExeNameWithoutPath(int withExtension);
    // The system's directory for temporary files, with a backslash at its end.
    static CString GetTempPathW();
    // dir\~TMPKA1.extension, or the first higher number that no file has. The file is not created: two callers can be given the
    // same name.
    static CString GetTempFileNameW(const CString& dir, const CString& extension);
    // The directory of that CSIDL number, with a backslash at its end. Empty when there is none.
    static CString GetSpecialDirectory(int folderId);
    // Where the tooth library lies: under the path in the settings where a central storage is set there, else beside the
    // program's directory. The host's string resource 20559 names the folder.
    static CString GetToothLibPath();
    // In the tooth library; the host's string resource 20557 names it.
    static CString GetExternBlockGeometryPath();

    // Extensions have their dot: ".txt". Empty without one. Both separators end a directory.
    static CString GetFileExtension(const CString& path);
    // `extension` has its dot too; case does not count.
    static int HasFileExtension(const CString& path, const CString& extension);
    static CString SplitFileNameAndExtensionFromPath(const CString& path);
    static CString SplitFileNameWithoutExtensionFromPath(const CString& path);
    // Drive and directories with the separator at the end; empty for a bare name.
    static CString SplitPathFromFileNameWithPath(const CString& path);

    // False when `name` holds one of \ / " < > * ? | : or a character of `extraForbidden`. An empty name is valid.
    static bool IsValidFileName(const CString& name, const CString& extraForbidden);
    // Writes * + , / : ; < > ? | ~ in the name behind the last backslash as ~ and a letter. The directory is kept.
    static CString CreateFileNameForDisk(CString path);
    // The way back, over the whole text. A ~ that none of the letters follows stays.
    static CString CreateFileNameForDisplay(CString name);

    // The first removable drive, from A on, with a medium of at least 20 MiB, with that label where one is given (neither null
    // nor empty; case does not count) and, with `requireUsbBus` non-zero, on the USB. Non-zero when found: `drive` becomes its
    // root
    // ("E:\") and `label` the label of its medium; both empty otherwise.
    static int FindRemovableUsbDrive(LPCTSTR volumeLabel, CString& drive, CString& label, int requireUsbBus);
    static int FindRemovableUsbDrive(const IDriveTable& drives, LPCTSTR volumeLabel, CString& drive, CString& label,
                                     int requireUsbBus);

    // Numbered items: prefix, an index of `digits` digits, and where `suffix` is not empty a dot and the suffix. Indices form a
    // ring of 10 to the power of `digits` numbers; what was made last follows what was made before, over the end of the ring.
    // All that ends with the suffix counts: a name of another form has the index 0, and a directory counts among files.

    // Deletes the oldest files until `maxCount` are left; what cannot be deleted stays silently. A negative maximum counts as
    // 0. Nothing is deleted when `maxCount` is at least the size of the ring less 1.
    static void LimitIndexedFiles(int maxCount, const CString& dir, const CString& prefix, int digits, const CString& suffix);
    // The name (no path) for the next file. Nothing is created. With `wrap` the lowest free index follows the last of the ring,
    // unless the ring is full; without it, and then, the index grows to more digits. In an empty directory it is 0 with
    // `wrap` and 1 without.
    static CString GetNextIndexedFilename(const CString& dir, const CString& prefix, int digits, const CString& suffix,
                                          bool wrap);
    // Makes the next directory (with wrap), removes the oldest with all that is in them until `maxCount` are left, the new one
    // included, and returns its path. Throws as Make and Remove do.
    static CString MakeNextIndexedLimitedDirectory(const CString& dir, int maxCount, const CString& prefix, int digits,
                                                   const CString& suffix);

protected:
    // The index in a numbered item's name, 0 when the length of the name does not fit. `dottedSuffix` has its dot, or is empty.
    static int ParseFileIndex(const CString& name, const CString& prefix, int digits, const CString& dottedSuffix);
    static void LimitIndexedItems(bool directories, int maxCount, const CString& dir, const CString& prefix, int digits,
                                  const CString& suffix);
    static CString GetNextIndexedItem(bool directories, const CString& dir, const CString& prefix, int digits,
                                      const CString& suffix, bool wrap);
};
