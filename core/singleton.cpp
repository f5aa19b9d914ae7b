#include <kadata/singleton.h>

namespace {
constexpr INT_PTR SINGLETON_BLOCK_SIZE = 10;
constexpr UINT MANAGER_SCHEMA = 1;
}  // namespace

CSingleton::CSingleton() = default;

CSingleton::~CSingleton() = default;

IMPLEMENT_SERIAL(CSingletonManager, CObject, MANAGER_SCHEMA)

CSingletonManager* CSingletonManager::m_Instance = nullptr;

CSingletonManager* CSingletonManager::Instance() {
    if (m_Instance == nullptr) {
        m_Instance = new CSingletonManager;
    }
    return m_Instance;
}

CSingletonManager::CSingletonManager() : m_Singletons(SINGLETON_BLOCK_SIZE) {}

// Deliberate: a manager that CreateObject made resets m_Instance too when it ends.
CSingletonManager::~CSingletonManager() {
    // Taken off one by one, so that a service that is registered by the end of another is destroyed as well.
    while (!m_Singletons.IsEmpty()) {
        delete m_Singletons.RemoveHead();
    }
    m_Instance = nullptr;
}

void CSingletonManager::Register(CSingleton* service) {
    m_Singletons.AddTail(service);
}

CString CSingletonManager::GetType() {
    return _T("Singleton Manager\n");
}

void CSingletonManager::Serialize(CArchive&) {}
