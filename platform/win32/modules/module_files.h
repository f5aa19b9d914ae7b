#pragma once

// Where the files of modules are looked for.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "../base/types.h"

namespace kawin {

// What follows the last separator or the drive's colon.
std::u16string_view BaseName(std::u16string_view path) noexcept;

// The name with ".dll" when it has no extension, without a final dot when it has one.
std::u16string WithExtension(std::u16string_view name);

// The shared object that stands for a library: "liblua5.1.so.0" for "lua5.1.dll", "libNAME.so" for "NAME.dll"; empty for any
// other.
std::u16string SharedObjectName(std::u16string_view library);

struct ModuleSearch {
    std::vector<std::string> files;  // native paths, the best first
    std::string linked_name;         // for the dynamic linker, when none of the files is there; may be empty
};

// For a module as LoadLibraryW names it. A bare name and a relative path lead into the folder of the executable, never into the
// current one; only bare names go on to the linker. `as_data` leaves shared objects out.
ModuleSearch SearchFor(std::u16string_view name, bool as_data);

enum class FileKind { Missing, SharedObject, Other };

// Looks at the first bytes. Only regular files are there.
FileKind KindOfFile(const std::string& path);

// The bytes of a file of at most 256 MiB; nothing with the last error set.
std::optional<std::vector<std::byte>> ReadModuleFile(const std::string& path);

}  // namespace kawin
