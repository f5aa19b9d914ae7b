#pragma once

// Drives and the volumes in them. C: is the root of the file system; see files/drive_table.h for the other letters.

#include "../base/error.h"

constexpr UINT DRIVE_UNKNOWN = 0;
constexpr UINT DRIVE_NO_ROOT_DIR = 1;
constexpr UINT DRIVE_REMOVABLE = 2;
constexpr UINT DRIVE_FIXED = 3;
constexpr UINT DRIVE_REMOTE = 4;
constexpr UINT DRIVE_CDROM = 5;
constexpr UINT DRIVE_RAMDISK = 6;

constexpr DWORD FILE_CASE_SENSITIVE_SEARCH = 0x00000001;
constexpr DWORD FILE_CASE_PRESERVED_NAMES = 0x00000002;
constexpr DWORD FILE_UNICODE_ON_DISK = 0x00000004;
constexpr DWORD FILE_READ_ONLY_VOLUME = 0x00080000;

// Bit 0 is A:.
KADATA_API DWORD GetLogicalDrives() noexcept;

// "C:\", "D:\" ..., each with its terminator, and one more at the end. Returns the length without that last one when `size`
// characters hold it all, else the size that is needed; then nothing is written.
KADATA_API DWORD GetLogicalDriveStringsW(DWORD size, LPWSTR buffer) noexcept;

// `root` is "X:\" (the backslash may be missing); null is the current directory's drive. DRIVE_NO_ROOT_DIR for everything else.
KADATA_API UINT GetDriveTypeW(LPCWSTR root) noexcept;

// `folder` is any folder of the volume, null the current one; null outputs are left out. Bytes. ERROR_FILE_NOT_FOUND when it
// is missing, ERROR_PATH_NOT_FOUND when a folder on the way is, ERROR_DIRECTORY when it is a file.
KADATA_API BOOL GetDiskFreeSpaceExW(LPCWSTR folder, PULARGE_INTEGER free_to_caller, PULARGE_INTEGER total,
                                    PULARGE_INTEGER free) noexcept;

// The same in clusters. Clusters are told larger than they are where their number would not fit.
KADATA_API BOOL GetDiskFreeSpaceW(LPCWSTR root, LPDWORD sectors_per_cluster, LPDWORD bytes_per_sector, LPDWORD free_clusters,
                                  LPDWORD clusters) noexcept;

// Label, serial number (that of FAT and NTFS is what Windows shows; for others made from the volume's identifier), file system's
// name
// ("FAT32", "NTFS", "ext4"). `root` ends in a backslash; null is the current drive. Sizes count characters; null outputs
// are left out. ERROR_INVALID_NAME without backslash, ERROR_PATH_NOT_FOUND for no such drive, ERROR_DIR_NOT_ROOT for a
// folder that is no root, ERROR_MORE_DATA when a buffer is too small.
KADATA_API BOOL GetVolumeInformationW(LPCWSTR root, LPWSTR label, DWORD label_size, LPDWORD serial, LPDWORD longest_name,
                                      LPDWORD flags, LPWSTR file_system, DWORD file_system_size) noexcept;
