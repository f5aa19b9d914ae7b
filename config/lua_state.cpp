#include <kadata/directory.h>
#include <kadata/lua_engine.h>

KaCLuaState* KaCLuaState::m_Instance = nullptr;

KaCLuaState* KaCLuaState::Instance() {
    if (m_Instance == nullptr) {
        m_Instance = new KaCLuaState;
        CSingletonManager::Instance()->Register(m_Instance);
    }
    return m_Instance;
}

KaCLuaState::KaCLuaState() : m_TestScriptPath(CDirectory::FullPath(CDirectory::Concat(CDirectory::GetExePath(), TEST_FOLDER))) {}

KaCLuaState::~KaCLuaState() = default;

void KaCLuaState::SetTestScriptPathName(const CString& path) {
    m_TestScriptPath = path;
}

CString KaCLuaState::GetTestScriptPathName() {
    return m_TestScriptPath;
}

CString KaCLuaState::GetTestConfigFileName() {
    return m_TestScriptPath + TEST_CONFIG_FILE;
}

CString KaCLuaState::GetConfigDirectoryName() {
    return CDirectory::Concat(CDirectory::GetExePath(), CONFIG_FOLDER);
}

void KaCLuaState::SetLuaActive(bool active) {
    m_LuaActive = active;
}

bool KaCLuaState::IsLuaActive() {
    return false;
}

CString KaCLuaState::GetType() {
    return _T("Lua State Handler\n");
}
