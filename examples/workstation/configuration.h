#pragma once

// The configuration: the library's defaults, and over them what the scripts in the folder "LuaConfig" beside the program set.

#include <afx.h>

#include <optional>
#include <vector>

struct SConfigValue {
    CString path;   // "KaFit.Level"
    CString value;  // as Lua writes it
};

// All values, by path. Nothing without the script engine. A script of the folder that fails is logged, and changes what it had
// changed until then.
std::optional<std::vector<SConfigValue>> LoadConfiguration();

// Prints them. The program's exit status.
int PrintConfiguration();
