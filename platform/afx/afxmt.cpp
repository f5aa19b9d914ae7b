#include "afxmt.h"

IMPLEMENT_DYNAMIC(CSyncObject, CObject)
IMPLEMENT_DYNAMIC(CCriticalSection, CSyncObject)
IMPLEMENT_DYNAMIC(CMutex, CSyncObject)
IMPLEMENT_DYNAMIC(CEvent, CSyncObject)

CSyncObject::~CSyncObject() {
    if (m_hObject != nullptr) {
        CloseHandle(m_hObject);
    }
}

BOOL CSyncObject::Lock(DWORD milliseconds) {
    const DWORD result = WaitForSingleObject(m_hObject, milliseconds);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

CCriticalSection::CCriticalSection() {
    if (!InitializeCriticalSectionAndSpinCount(&m_sect, 0)) {
        AtlThrow(HRESULT_FROM_WIN32(GetLastError()));
    }
}

CCriticalSection::~CCriticalSection() {
    DeleteCriticalSection(&m_sect);
}

CMutex::CMutex(BOOL initiallyOwned, LPCTSTR name, LPSECURITY_ATTRIBUTES security) {
    m_hObject = CreateMutexW(security, initiallyOwned, name);
    if (m_hObject == nullptr) {
        AfxThrowResourceException();
    }
}

BOOL CMutex::Unlock() {
    return ReleaseMutex(m_hObject);
}

CEvent::CEvent(BOOL initiallySet, BOOL manualReset, LPCTSTR name, LPSECURITY_ATTRIBUTES security) {
    m_hObject = CreateEventW(security, manualReset, initiallySet, name);
    if (m_hObject == nullptr) {
        AfxThrowResourceException();
    }
}

CSingleLock::CSingleLock(CSyncObject* object, BOOL lockNow) : m_object(object) {
    if (lockNow) {
        Lock();
    }
}

BOOL CSingleLock::Lock(DWORD milliseconds) {
    m_locked = m_locked || m_object->Lock(milliseconds);
    return m_locked;
}

BOOL CSingleLock::Unlock() {
    if (m_locked) {
        m_locked = !m_object->Unlock();
    }
    return !m_locked;
}
