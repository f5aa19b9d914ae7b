#include <kadata/ref_count.h>

CRefCount::CRefCount() = default;

CRefCount::~CRefCount() = default;

CRefCount* CRefCount::AddRef() {
    m_Lock.Lock();
    ++m_Count;
    m_Lock.Unlock();
    return this;
}

void CRefCount::Release() {
    m_Lock.Lock();
    const LONG before = m_Count--;
    m_Lock.Unlock();
    if (before == 1) {
        delete this;
    }
}

CAutoReleaser::CAutoReleaser(CRefCount* object) : m_Object(object) {}

CAutoReleaser::~CAutoReleaser() {
    if (m_Object != nullptr) {
        m_Object->Release();
        m_Object = nullptr;
    }
}

CAutoReleaser& CAutoReleaser::operator=(const CAutoReleaser& other) {
    m_Object = other.m_Object;
    return *this;
}
