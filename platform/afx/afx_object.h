#pragma once

// The common base with run-time class records.

#include <windows.h>

#include <string>

#include "../kadata_export.h"

class CArchive;
class CObject;

// What is known of a class at run time. Records are constants of their classes; nothing is registered when the library is
// loaded.
struct KADATA_API CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize;
    UINT m_wSchema;                         // 0xFFFF when the class is not serialisable
    CObject* (*m_pfnCreateObject)();        // null when objects cannot be made by name
    CRuntimeClass* (*m_pfnGetBaseClass)();  // null for CObject

    // A new object, owned by the caller; null when the class cannot be made so.
    CObject* CreateObject() const;
    // True for the class itself too.
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;
};

// Collects what objects tell of themselves.
class KADATA_API CDumpContext {
public:
    CDumpContext& operator<<(LPCTSTR text);
    const std::basic_string<TCHAR>& GetText() const { return m_text; }

private:
    std::basic_string<TCHAR> m_text;
};

class KADATA_API CObject {
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = default;
    virtual void Serialize(CArchive& ar);
    virtual void AssertValid() const;
    virtual void Dump(CDumpContext& dc) const;

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    BOOL IsKindOf(const CRuntimeClass* pClass) const;
    BOOL IsSerializable() const;

    static CRuntimeClass* GetThisClass();
    static CRuntimeClass classCObject;

protected:
    CObject() = default;
};

#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())

#define DECLARE_DYNAMIC(class_name)         \
public:                                     \
    static CRuntimeClass class##class_name; \
    static CRuntimeClass* GetThisClass();   \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name) \
    DECLARE_DYNAMIC(class_name)       \
    static CObject* CreateObject();

#define DECLARE_SERIAL(class_name) DECLARE_DYNCREATE(class_name)

#define IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, schema, create)                                                     \
    constinit CRuntimeClass class_name::class##class_name = {#class_name, static_cast<int>(sizeof(class_name)), schema, create, \
                                                             &base_class_name::GetThisClass};                                   \
    CRuntimeClass* class_name::GetThisClass() {                                                                                 \
        return &class_name::class##class_name;                                                                                  \
    }                                                                                                                           \
    CRuntimeClass* class_name::GetRuntimeClass() const {                                                                        \
        return &class_name::class##class_name;                                                                                  \
    }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name) IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name) \
    CObject* class_name::CreateObject() {                \
        return new class_name;                           \
    }                                                    \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, &class_name::CreateObject)

#define IMPLEMENT_SERIAL(class_name, base_class_name, schema) \
    CObject* class_name::CreateObject() {                     \
        return new class_name;                                \
    }                                                         \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, schema, &class_name::CreateObject)
