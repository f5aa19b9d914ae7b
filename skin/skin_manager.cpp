#include <afxmt.h>
#include <kadata/skin_manager.h>

#include <cstdlib>

namespace {

// Guards CSkinManager::m_Instance. Made before the instance, so it outlives it when the process ends.
CCriticalSection& InstanceLock() {
    static CCriticalSection lock;
    return lock;
}

}  // namespace

CSkinManager* CSkinManager::m_Instance = nullptr;

CSkinManager* CSkinManager::GetInstance() {
    CSingleLock guard(&InstanceLock(), TRUE);
    if (m_Instance == nullptr) {
        m_Instance = new CSkinManager;
        std::atexit(&CSkinManager::Destroy);
    }
    return m_Instance;
}

void CSkinManager::Destroy() {
    CSingleLock guard(&InstanceLock(), TRUE);
    delete m_Instance;
    m_Instance = nullptr;
}

CSkinManager::CSkinManager() = default;

// Waits until no one is in GetInstance.
CSkinManager::~CSkinManager() {
    CSingleLock guard(&InstanceLock(), TRUE);
}

BOOL CSkinManager::Init(const SkinInfo& info) {
    if (!info.IsComplete() || m_SkinInfo.IsComplete()) {
        return FALSE;
    }
    m_SkinInfo = info;
    return TRUE;
}
