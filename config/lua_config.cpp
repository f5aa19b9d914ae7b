#include <kadata/lua_config.h>
#include <kadata/lua_engine.h>

#include "lua_scripts.h"

KaCLuaConfig::KaCLuaConfig() = default;

KaCLuaConfig::KaCLuaConfig(const KaCLuaConfig&) = default;

KaCLuaConfig& KaCLuaConfig::operator=(const KaCLuaConfig&) = default;

KaCLuaConfig::~KaCLuaConfig() = default;

bool KaCLuaConfig::Load() {
    KALua* const engine = KALua::Instance();
    if (engine != nullptr) {
        for (const LPCTSTR script : kadata::lua::DefaultScripts()) {
            engine->RunString(script);
        }
    }
    return true;
}

bool KaCLuaConfig::Test() {
    Load();
    KALua* const engine = KALua::Instance();
    if (engine == nullptr) {
        return false;
    }
    try {
        return engine->GetConfigFloat(_T("Test.param1")) == 0.25F && engine->GetConfigString(_T("Test.param2")) == _T("test1") &&
               engine->GetConfigInt(_T("Test.param3")) == 1000 && engine->GetConfigBool(_T("Test.param4")) &&
               engine->GetConfigInt(_T("Test.param5.param1")) == 22 && engine->GetConfigFloat(_T("Test.param5.param2")) == 1.5F &&
               engine->GetConfigString(_T("Test.param5.param3")) == _T("test2") &&
               !engine->GetConfigBool(_T("Test.param5.param4"));
    } catch (int) {
        return false;
    }
}
