#pragma once

// The scripts of config/lua, which the build makes part of the library (cmake/EmbedScripts.cmake).

#include <tchar.h>
#include <windows.h>

#include <span>
#include <string_view>

namespace kadata::lua {

// The six default scripts, in the order in which they are run.
std::span<const LPCTSTR> DefaultScripts();

// guards.lua
std::string_view Guards();

}  // namespace kadata::lua
