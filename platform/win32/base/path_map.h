#pragma once

// System paths to and from the native file system.
//
// C:\ is the root of the file system; further letters are removable media (see drives) or named by KADATA_DRIVES. Both separators
// are accepted. \\?\ and \\.\ prefixes are taken off; \\server\share lies under KADATA_UNC_ROOT. A path without drive is relative
// to the current directory; "C:name" is relative to the current directory when that lies on the drive, and to its root otherwise.
// "." and ".." are resolved in the text, as the system does, before any link is followed. Trailing blanks and dots of a component
// are kept: names are used as stored.

#include <optional>
#include <string>
#include <string_view>

#include "types.h"

namespace kawin {

// The native absolute path, or nothing with the last error set: ERROR_PATH_NOT_FOUND for an empty path and an unknown drive,
// ERROR_BAD_NETPATH for a network path without KADATA_UNC_ROOT, ERROR_INVALID_NAME for a character that no name can hold (one of
// < > " | ? * or a control character), ERROR_FILENAME_EXCED_RANGE for more than 32,767 characters.
std::optional<std::string> ToNativePath(LPCWSTR path);

// The system path of a native absolute one; the letter is that of the longest mount point that holds it, else C.
std::u16string ToSystemPath(std::string_view native);

// Absolute system path with "." and ".." resolved and backslashes only, without looking at the disk. Empty with the last error
// set when the path is none.
std::u16string ToFullSystemPath(LPCWSTR path);

}  // namespace kawin
