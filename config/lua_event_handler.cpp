#include <kadata/lua_event_handler.h>

namespace {
constexpr INT_PTR BLOCK_SIZE = 10;
constexpr int WITH_SCRIPTS = -1;
constexpr int WITHOUT_SCRIPTS = 0;
}  // namespace

KALuaEventHandler* KALuaEventHandler::m_Instance = nullptr;

KALuaEventHandler* KALuaEventHandler::Instance() {
    if (m_Instance == nullptr) {
        m_Instance = new KALuaEventHandler;
        CSingletonManager::Instance()->Register(m_Instance);
    }
    return m_Instance;
}

KALuaEventHandler::KALuaEventHandler() : m_Events(BLOCK_SIZE) {}

KALuaEventHandler::~KALuaEventHandler() = default;

void KALuaEventHandler::RegisterEvent(CString& name) {
    if (m_Events.Find(name) == nullptr) {
        m_Events.AddTail(name);
    }
}

void KALuaEventHandler::UnRegisterEvent(CString& name) {
    if (const POSITION place = m_Events.Find(name)) {
        m_Events.RemoveAt(place);
    }
}

int KALuaEventHandler::FireEvent(unsigned int, int, int) {
    return m_ScriptContext != nullptr ? WITH_SCRIPTS : WITHOUT_SCRIPTS;
}

int KALuaEventHandler::FireEvent(unsigned int, const CString&, int) {
    return m_ScriptContext != nullptr ? WITH_SCRIPTS : WITHOUT_SCRIPTS;
}

CString KALuaEventHandler::GetType() {
    return _T("Lua Event Handler\n");
}
