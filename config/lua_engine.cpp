#include <kadata/lua_engine.h>
#include <kadata/lua_event_handler.h>
#include <kadata/utils.h>

#include "lua_interpreter.h"

using kadata::lua::Api;
using kadata::lua::Interpreter;
using enum Interpreter::EWanted;

namespace {

constexpr INT_PTR BLOCK_SIZE = 10;
constexpr int TOP = -1;
constexpr int NO_VALUE = 0;  // what readers throw

void Demand(bool good) {
    if (!good) {
        throw NO_VALUE;
    }
}

int TopAsInt(lua_State* state) {
    Demand(Api().lua_isnumber(state, TOP) != 0);
    return static_cast<int>(Api().lua_tointeger(state, TOP));
}

float TopAsFloat(lua_State* state) {
    Demand(Api().lua_isnumber(state, TOP) != 0);
    return static_cast<float>(Api().lua_tonumber(state, TOP));
}

bool TopAsBool(lua_State* state) {
    Demand(Api().lua_type(state, TOP) == kadata::lua::TYPE_BOOLEAN);
    return Api().lua_toboolean(state, TOP) != 0;
}

// Of a value that was read as text.
CString TopAsText(lua_State* state) {
    Demand(Api().lua_isstring(state, TOP) != 0);
    std::size_t size = 0;
    const char* const text = Api().lua_tolstring(state, TOP, &size);
    return CKalidoUtils::MB2WC({text, size});
}

}  // namespace

KALua* KALua::m_Instance = nullptr;
HMODULE KALua::m_hLuaDllInstance = nullptr;

KALua* KALua::Instance() {
    if (m_Instance == nullptr) {
        m_hLuaDllInstance = kadata::lua::LoadRuntime();
        if (m_hLuaDllInstance == nullptr) {
            return nullptr;
        }
        KALua* const engine = new KALua;
        if (engine->m_State == nullptr) {
            delete engine;
            return nullptr;
        }
        m_Instance = engine;
        CSingletonManager::Instance()->Register(m_Instance);
    }
    return m_Instance;
}

bool KALua::InitFunctionAddresses() {
    return kadata::lua::FindFunctions(m_hLuaDllInstance);
}

KALua::KALua() : m_Errors(BLOCK_SIZE), m_Information(BLOCK_SIZE) {
    if (InitFunctionAddresses()) {
        m_Interpreter = Interpreter::Make();
    }
    if (m_Interpreter != nullptr) {
        m_State = m_Interpreter->State();
        KALuaEventHandler::Instance()->SetScriptContext(m_State);
    }
}

KALua::~KALua() {
    m_Interpreter.reset();
    FreeLibrary(m_hLuaDllInstance);
    m_hLuaDllInstance = nullptr;
}

bool KALua::InitTARVOEnvironment() {
    return true;
}

bool KALua::RunString(const CString& code) {
    return m_Interpreter->Run(CKalidoUtils::WC2MB(code));
}

int KALua::GetIntGlobal(const CString& name) {
    Demand(m_Interpreter->PushGlobal(CKalidoUtils::WC2MB(name).c_str(), AS_IT_IS));
    return TopAsInt(m_State);
}

float KALua::GetFloatGlobal(const CString& name) {
    Demand(m_Interpreter->PushGlobal(CKalidoUtils::WC2MB(name).c_str(), AS_IT_IS));
    return TopAsFloat(m_State);
}

bool KALua::GetBooleanGlobal(const CString& name) {
    Demand(m_Interpreter->PushGlobal(CKalidoUtils::WC2MB(name).c_str(), AS_IT_IS));
    return TopAsBool(m_State);
}

CString KALua::GetCStringGlobal(const CString& name) {
    Demand(m_Interpreter->PushGlobal(CKalidoUtils::WC2MB(name).c_str(), AS_TEXT));
    return TopAsText(m_State);
}

int KALua::GetConfigInt(const CString& path) {
    Demand(m_Interpreter->PushPath(path, AS_IT_IS));
    return TopAsInt(m_State);
}

float KALua::GetConfigFloat(const CString& path) {
    Demand(m_Interpreter->PushPath(path, AS_IT_IS));
    return TopAsFloat(m_State);
}

bool KALua::GetConfigBool(const CString& path) {
    Demand(m_Interpreter->PushPath(path, AS_IT_IS));
    return TopAsBool(m_State);
}

CString KALua::GetConfigString(const CString& path) {
    try {
        Demand(m_Interpreter->PushPath(path, AS_TEXT));
        return TopAsText(m_State);
    } catch (int) {
        return {};
    } catch (const std::bad_alloc&) {
        return {};
    }
}

CString KALua::GetType() {
    return _T("Lua Script Engine\n");
}
