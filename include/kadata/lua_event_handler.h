#pragma once

// Where events of the host and handlers written in Lua meet. In this version the names of events are kept, and firing one tells
// whether there are scripts; no handler is called yet.

#include <afxtempl.h>
#include <kadata/singleton.h>

struct lua_State;

// One thread at a time, that of the script engine (lua_engine.h).
class KADATA_API KALuaEventHandler : public CSingleton {
public:
    static KALuaEventHandler* Instance();

    // The interpreter; the script engine tells it when it is made.
    void SetScriptContext(lua_State* context) { m_ScriptContext = context; }

    // Adds the name at the end, unless it is there already. Case counts.
    void RegisterEvent(CString& name);
    // An unknown name is ignored.
    void UnRegisterEvent(CString& name);

    // -1 when there is an interpreter, 0 when there is none, whatever the event is.
    int FireEvent(unsigned int id, int a, int b);
    int FireEvent(unsigned int id, const CString& text, int b);

    CString GetType() override;

    static KALuaEventHandler* m_Instance;

protected:
    KALuaEventHandler();
    ~KALuaEventHandler() override;

    DWORD m_Reserved = 0;
    lua_State* m_ScriptContext = nullptr;
    CList<CString, const CString&> m_Events;  // in the order of registration, each once
};
