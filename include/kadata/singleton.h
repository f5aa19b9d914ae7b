#pragma once

// The process-wide services and their one owner.
//
// A service is made when it is first asked for, and lives until the host deletes the manager at shutdown:
//
//     CMyService* CMyService::Instance() {
//         if (m_Instance == nullptr) {
//             m_Instance = new CMyService;
//             CSingletonManager::Instance()->Register(m_Instance);
//         }
//         return m_Instance;
//     }
//
// No lock is taken: the first use of each service, Register and the end belong to one thread, before others are started and after
// they have ended.

#include <afx.h>
#include <afxcoll.h>
#include <kadata/export.h>

// Base of the services. Each keeps a public static m_Instance, which still holds the old address after the manager has gone:
// no service may be asked for after that, and none comes back to life.
class KADATA_API CSingleton : public CObject {
public:
    ~CSingleton() override;

    // The name of the service, ended by a line feed.
    virtual CString GetType() = 0;

protected:
    CSingleton();
};

// Owns the registered services. The host ends them all with `delete CSingletonManager::Instance()`; a call of Instance after that
// makes a new manager, which owns nothing.
class KADATA_API CSingletonManager : public CSingleton {
    DECLARE_SERIAL(CSingletonManager)

public:
    // The manager, made by the first call.
    static CSingletonManager* Instance();

    // Destroys the services in the order of their registration, then sets m_Instance to null.
    ~CSingletonManager() override;

    // Takes ownership of `service`. An object that is registered twice is destroyed twice: nothing is checked.
    void Register(CSingleton* service);

    CString GetType() override;

    // Does nothing: a manager has no contents to store.
    void Serialize(CArchive& archive) override;

    static CSingletonManager* m_Instance;  // null until the first use, and again after the manager has gone

private:
    CSingletonManager();

    CObList m_Singletons;  // of CSingleton, in the order of registration
};
