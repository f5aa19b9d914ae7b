#pragma once

// Configuration scripts in Lua 5.1.
//
//     KALua* const lua = KALua::Instance();              // null: this machine has no Lua
//     KaCLuaConfig::Load();                              // the defaults (lua_config.h)
//     lua->RunString(_T("KaFit.Level = 2"));
//     int level = lua->GetConfigInt(_T("KaFit.Level"));  // 2
//
// Nothing here takes a lock: state and engine belong to one thread, the host's main thread.
//
// Texts are UTF-8 inside of Lua, so every character survives the way there and back; a text that is not UTF-8 is read in the ANSI
// code page (utils.h, WC2MB and MB2WC).

#include <afxtempl.h>
#include <kadata/singleton.h>

#include <memory>

struct lua_State;

namespace kadata::lua {
class Interpreter;
}

// Where scripts and their test data lie.
class KADATA_API KaCLuaState : public CSingleton {
public:
    static constexpr LPCTSTR TEST_FOLDER = _T("..\\2_Test\\");  // from the program's folder
    static constexpr LPCTSTR DEBUG_FOLDER = _T("Debug\\");
    static constexpr LPCTSTR OUTPUT_FOLDER = _T("Output\\");
    static constexpr LPCTSTR SCRIPTS_FOLDER = _T("Scripts\\");
    static constexpr LPCTSTR TESTS_FOLDER = _T("Tests\\");
    static constexpr LPCTSTR TEST_CONFIG_FILE = _T("TestConf.lua");
    static constexpr LPCTSTR CONFIG_FOLDER = _T("LuaConfig");

    static KaCLuaState* Instance();

    // At first the full path of TEST_FOLDER. A path that is set is kept as it stands.
    void SetTestScriptPathName(const CString& path);
    CString GetTestScriptPathName();
    // The test script path directly followed by TEST_CONFIG_FILE: the path has to end with a backslash.
    CString GetTestConfigFileName();
    // CONFIG_FOLDER in the program's folder, without a backslash at its end.
    CString GetConfigDirectoryName();

    void SetLuaActive(bool active);
    // Deliberate: false, whatever was set. Scripting is switched off for those who ask.
    bool IsLuaActive();

    CString GetType() override;

    static KaCLuaState* m_Instance;

protected:
    KaCLuaState();
    ~KaCLuaState() override;

    CString m_TestScriptPath;
    bool m_LuaActive = false;
};

// The script engine: one interpreter, whose global variables live as long as the engine.
//
// No script takes the host down. An error stays inside the interpreter, whatever it is; the memory of scripts is bounded by 256
// MiB (where the runtime lets it be bounded: every stock one does); only source text is run, never bytecode; and of the standard
// libraries this is missing or different: os.exit, package.loadlib and modules in native code, newproxy, the metatable of files,
// all of `debug` but traceback, and patterns of over 2000 characters raise an error or are absent. Files and programs are within
// a script's reach, with the host's rights. A script that does not end is not stopped: endless loops are the host's own affair.
//
// The values that are read, and the results of scripts, stay on the interpreter's stack until their room is needed.
class KADATA_API KALua : public CSingleton {
public:
    // What the lines that scripts write begin with, padded to 18 characters.
    static constexpr LPCTSTR COMPILER_INFO = _T("[Compiler Info]   ");
    static constexpr LPCTSTR COMPILER_ERROR = _T("[Compiler Error]  ");
    static constexpr LPCTSTR SCRIPT_INFO = _T("[Script Info]     ");
    static constexpr LPCTSTR SCRIPT_ERROR = _T("[Script Error]    ");
    static constexpr LPCTSTR TARVO_INFO = _T("[TARVO Info]      ");
    static constexpr LPCTSTR TARVO_ERROR = _T("[TARVO Error]     ");

    // The engine, made by the first call that finds the runtime library "lua5.1.dll" (liblua5.1.so.0 on Linux): beside this
    // library, else beside the program, else where the system keeps libraries; never in the current folder. Null when it is not
    // there, or lacks a function that is needed; the next call looks again.
    static KALua* Instance();

    // Does nothing in this version, and returns true.
    bool InitTARVOEnvironment();

    // Runs a piece of Lua. False when it cannot be compiled or ends with an error, of which nothing is told, and for bytecode.
    bool RunString(const CString& code);

    // A global variable. A value that is missing or of another type throws 0, an int: numbers are numbers and texts that Lua
    // takes for one, texts are texts and numbers, a bool is only a bool. A fraction is cut off an int; of what is beyond the
    // range of int the low 32 bits remain.
    int GetIntGlobal(const CString& name);
    float GetFloatGlobal(const CString& name);
    bool GetBooleanGlobal(const CString& name);
    CString GetCStringGlobal(const CString& name);

    // The value of a dotted path such as Test.param5.param1, or of any expression, by way of the global variable evalExpr. They
    // throw as those above do, and also when the expression fails. A path of names and indices is compiled once: the 2048 that
    // were used first are kept, then all are forgotten and it begins anew.
    int GetConfigInt(const CString& path);
    float GetConfigFloat(const CString& path);
    bool GetConfigBool(const CString& path);
    // Throws nothing: empty on every failure.
    CString GetConfigString(const CString& path);

    CString GetType() override;

    static KALua* m_Instance;
    static HMODULE m_hLuaDllInstance;  // the runtime, as long as there is an engine

protected:
    KALua();
    // Ends the interpreter, then unloads the runtime.
    ~KALua() override;

    // False when the runtime lacks one.
    static bool InitFunctionAddresses();

    lua_State* m_State = nullptr;  // null when it could not be made
    // For messages of scripts; nothing is put there in this version.
    CList<CString, const CString&> m_Errors;
    CList<CString, const CString&> m_Information;

private:
    std::unique_ptr<kadata::lua::Interpreter> m_Interpreter;
};
