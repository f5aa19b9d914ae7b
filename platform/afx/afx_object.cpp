#include "afx_object.h"

#include "afx_exception.h"

constinit CRuntimeClass CObject::classCObject = {"CObject", static_cast<int>(sizeof(CObject)), 0xFFFF, nullptr, nullptr};

CObject* CRuntimeClass::CreateObject() const {
    return m_pfnCreateObject != nullptr ? m_pfnCreateObject() : nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const {
    const CRuntimeClass* type = this;
    while (type != pBaseClass && type->m_pfnGetBaseClass != nullptr) {
        type = type->m_pfnGetBaseClass();
    }
    return type == pBaseClass;
}

CDumpContext& CDumpContext::operator<<(LPCTSTR text) {
    m_text += text != nullptr ? text : _T("(null)");
    return *this;
}

CRuntimeClass* CObject::GetThisClass() {
    return &classCObject;
}

CRuntimeClass* CObject::GetRuntimeClass() const {
    return &classCObject;
}

void CObject::Serialize(CArchive& /*ar*/) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext& dc) const {
    dc << CString(GetRuntimeClass()->m_lpszClassName);
}

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const {
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}

BOOL CObject::IsSerializable() const {
    return GetRuntimeClass()->m_wSchema != 0xFFFF;
}
