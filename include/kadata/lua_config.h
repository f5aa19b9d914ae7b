#pragma once

// The default configuration of the design and fitting algorithms: six Lua scripts that are part of the library. They stand in
// config/lua, where comments say what each value means and its unit; hosts read them by KALua's GetConfig functions.

#include <kadata/export.h>

// One thread at a time, that of the script engine (lua_engine.h).
class KADATA_API KaCLuaConfig {
public:
    KaCLuaConfig();
    KaCLuaConfig(const KaCLuaConfig&);
    KaCLuaConfig& operator=(const KaCLuaConfig&);
    virtual ~KaCLuaConfig();

    // Runs the scripts: Biogeneric, MinimalWallThickness, RestorationGeneration, RestorationParameters, KaFit, Test. Each defines
    // a global table of its name, in place of what was there, so a second call puts back what scripts have changed since.
    // Deliberate: true in any case, without the script engine too.
    static bool Load();

    // Load, then whether every value of the table Test reads back as it stands in the script. False without the script engine.
    static bool Test();
};
