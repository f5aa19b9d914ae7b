#pragma once

// The one skin of the process.
//
//     SkinInfo skin;
//     ...                                            // fill all of it
//     CSkinManager::GetInstance()->Init(skin);       // at start-up, before the first skinned window
//
// Every skinned window copies what it needs when it is made. GetInstance may be called by any thread; everything else belongs to
// the thread of the user interface.

#include <kadata/skin_info.h>

class KADATA_API CSkinManager {
public:
    // Made by the first call, and deleted when the process ends (on Windows: when the library is unloaded).
    static CSkinManager* GetInstance();

    // These copy the skin only; a copy belongs to whoever made it.
    CSkinManager(const CSkinManager& other) = default;
    CSkinManager& operator=(const CSkinManager& other) = default;
    virtual ~CSkinManager();

    // Takes the skin once: FALSE, and nothing is changed, when `info` is not complete or a complete skin is there already.
    BOOL Init(const SkinInfo& info);

    // Incomplete, and all 0 but for the colour keys, until Init has succeeded.
    const SkinInfo& GetSkinInfo() const { return m_SkinInfo; }

protected:
    CSkinManager();

    // Deletes the instance. GetInstance makes a new one after that.
    static void Destroy();

private:
    static CSkinManager* m_Instance;  // null until the first use; guarded by the lock in skin_manager.cpp

    SkinInfo m_SkinInfo;
};
