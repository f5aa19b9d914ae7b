#include <kadata/directory.h>

#include <cmath>
#include <functional>

#include "lua_fixture.h"
#include "support/child_process.h"

namespace {

using test::LuaTest;
using test::Narrow;
using test::Text;

// The current folder, for a scope.
class InFolder {
public:
    explicit InFolder(const Text& folder) : before_(4 * MAX_PATH, 0) {
        before_.resize(GetCurrentDirectoryW(4 * MAX_PATH, before_.data()));
        EXPECT_TRUE(SetCurrentDirectoryW(folder.c_str()));
    }
    InFolder(const InFolder&) = delete;
    InFolder& operator=(const InFolder&) = delete;
    ~InFolder() { EXPECT_TRUE(SetCurrentDirectoryW(before_.c_str())); }

private:
    Text before_;
};

TEST_F(LuaTest, ReadsValuesAsTheirTypesOnly) {
    const struct {
        const char* value;  // in Lua
        const char* as_int;
        const char* as_float;
        const char* as_bool;
        const char* as_text;  // "-" for all: throws
    } rows[] = {
        {"7", "7", "7.000000", "-", "7"},
        {"-2.75", "-2", "-2.750000", "-", "-2.75"},
        {"'5'", "5", "5.000000", "-", "5"},
        {"' 0x10 '", "16", "16.000000", "-", " 0x10 "},
        {"'5x'", "-", "-", "-", "5x"},
        {"''", "-", "-", "-", ""},
        {"'a\\0b'", "-", "-", "-", "a"},
        {"true", "-", "-", "1", "-"},
        {"false", "-", "-", "0", "-"},
        {"nil", "-", "-", "-", "-"},
        {"{}", "-", "-", "-", "-"},
        {"print", "-", "-", "-", "-"},
        {"1e300", nullptr, "inf", "-", "1e+300"},
    };
    const auto said = [](const std::function<std::string()>& read) {
        std::string result = "-";
        return Throws([&] { result = read(); }) ? std::string("-") : result;
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        ASSERT_TRUE(Run(std::string("T = { v = ") + row.value + " } v = T.v"));
        for (const LPCTSTR path : {_T("T.v"), _T("T.v"), _T("T[\"v\"]"), _T(" T.v --")}) {
            if (row.as_int != nullptr) {
                EXPECT_EQ(said([&] { return std::to_string(lua_->GetConfigInt(path)); }), row.as_int);
            }
            EXPECT_EQ(said([&] { return std::to_string(lua_->GetConfigFloat(path)); }), row.as_float);
            EXPECT_EQ(said([&] { return std::to_string(lua_->GetConfigBool(path)); }), row.as_bool);
            const std::string text = Narrow(lua_->GetConfigString(path));
            EXPECT_EQ(text.c_str(), std::string(row.as_text) == "-" ? std::string() : row.as_text);
        }
        if (row.as_int != nullptr) {
            EXPECT_EQ(said([&] { return std::to_string(lua_->GetIntGlobal(_T("v"))); }), row.as_int);
        }
        EXPECT_EQ(said([&] { return std::to_string(lua_->GetFloatGlobal(_T("v"))); }), row.as_float);
        EXPECT_EQ(said([&] { return std::to_string(lua_->GetBooleanGlobal(_T("v"))); }), row.as_bool);
        EXPECT_EQ(said([&] { return std::string(Narrow(lua_->GetCStringGlobal(_T("v"))).c_str()); }), row.as_text);
    }
    EXPECT_EQ(lua_->GetConfigString(_T("'a\\0b'")).GetLength(), 3);
    EXPECT_EQ(lua_->GetConfigInt(_T("#'four' + 1")), 5);
    EXPECT_EQ(lua_->GetIntGlobal(_T("evalExpr")), 5);
    for (const LPCTSTR path : {_T(""), _T("no.such.table"), _T("T."), _T("T.v.v.v"), _T("error({})"), _T("1e"), _T("\x1B")}) {
        EXPECT_TRUE(Throws([&] { lua_->GetConfigInt(path); })) << Narrow(CString(path));
        EXPECT_EQ(lua_->GetConfigString(path), CString());
    }
}

TEST_F(LuaTest, TellsWhetherAScriptRan) {
    EXPECT_TRUE(Run("") && Run("-- nothing") && Run("return 1, 2, 3") && Run("#!/a/program\n") == false);
    EXPECT_TRUE(lua_->InitTARVOEnvironment());
    for (const char* const script : {"x = ", "error('x')", "error({})", "error()", "nothing()", "\x1BLuaQ", "return @"})
        EXPECT_FALSE(Run(script)) << script;
    EXPECT_FALSE(Run("before = 1 error('x')"));
    EXPECT_EQ(lua_->GetIntGlobal(_T("before")), 1);  // what had been done stays
    const auto chunk = [](const char* text) { return std::string("return assert(") + text + ")"; };
    EXPECT_TRUE(Run(chunk("loadstring('return 1')")) && Run(chunk("load(function() end)")));
    for (const char* const text : {"loadstring(string.dump(function() end))", "loadstring('\\27Lua')",
                                   "load(coroutine.wrap(function() coroutine.yield('\\27') coroutine.yield('Lua') end))"})
        EXPECT_FALSE(Run(chunk(text))) << text;
}

TEST_F(LuaTest, RunsTenMegabytes) {
    constexpr std::size_t kSize = 10 << 20;
    std::string script = "big = '" + std::string(kSize, 'x') + "'";
    EXPECT_TRUE(Run(script));
    EXPECT_EQ(lua_->GetCStringGlobal(_T("big")).GetLength(), static_cast<int>(kSize));
    script = "list = {";
    while (script.size() < kSize)
        script += "1,\n";
    EXPECT_TRUE(Run(script + "} size = #list"));
    EXPECT_EQ(lua_->GetIntGlobal(_T("size")), static_cast<int>((kSize - 8 + 2) / 3));
}

TEST_F(LuaTest, HasAStackThatDoesNotGrow) {
    ASSERT_TRUE(Run("T = { text = 'x', [3] = 4 } function many() return unpack({}, 1, 7000) end"));
    for (int i = 0; i < 1000000; ++i)
        ASSERT_EQ(lua_->GetConfigInt(_T("T[3]")), 4);
    for (int i = 0; i < 20000; ++i) {
        ASSERT_TRUE(lua_->GetConfigString(_T("T.text")) == _T("x") && lua_->GetConfigInt(_T("T[1 + 2]")) == 4);
        ASSERT_TRUE(Throws([&] { lua_->GetIntGlobal(_T("T")); }) && Throws([&] { lua_->GetConfigInt(_T("T.x.x")); }));
        ASSERT_TRUE(i % 100 != 0 || (Run("return many()") && !Run("error(many())")));
    }
}

TEST_F(LuaTest, SeesChangesBehindCompiledPaths) {
    const auto Int = [this](const CString& path) { return lua_->GetConfigInt(path); };
    constexpr int kPaths = 5000;  // more than are kept
    ASSERT_TRUE(Run("T = { a = 1 } for i = 1, 5000 do T['k' .. i] = i end old = getfenv(0)"));
    for (int round = 0; round < 2; ++round) {
        for (int i = 1; i <= kPaths; ++i) {
            CString path;
            path.Format(_T("T.k%d"), i);
            ASSERT_EQ(Int(path), i);
        }
    }
    EXPECT_EQ(Int(_T("T.a")), 1);
    ASSERT_TRUE(Run("T = { a = 2 }"));
    EXPECT_EQ(Int(_T("T.a")), 2);
    // Other globals, for all that is compiled from then on.
    ASSERT_TRUE(Run("setfenv(0, { T = { a = 3 }, setfenv = setfenv, old = old })"));
    EXPECT_EQ(Int(_T("T.a")), 3);
    ASSERT_TRUE(Run("setfenv(0, old)"));
    EXPECT_EQ(Int(_T("T.a")), 2);
    // A path whose own variables are changed while it is read.
    ASSERT_TRUE(Run("U = setmetatable({}, { __index = function() setfenv(2, {}) return 9 end })"));
    EXPECT_EQ(Int(_T("T.a")), 2);
    EXPECT_EQ(Int(_T("U.a")), 2);  // it set another table's evalExpr
    EXPECT_EQ(Int(_T("T.a")), 2);
    ASSERT_TRUE(Run("function level() local f = function() return setfenv(2, { x = 5 }) end f() return x end y = level()"));
    EXPECT_EQ(Int(_T("y")), 5);  // levels count from the caller
}

TEST_F(LuaTest, KeepsEveryCharacter) {
    const CString umlauts = _T("\u00C4rger mit \u00DF, \u20AC und \u4E2D ") + CString(test::Widen("\xF0\x9D\x84\x9E").c_str());
    EXPECT_TRUE(lua_->RunString(_T("s = '") + umlauts + _T("' length = #s T = { ['") + umlauts + _T("'] = 6 }")));
    EXPECT_EQ(Narrow(lua_->GetCStringGlobal(_T("s"))), Narrow(umlauts));
    EXPECT_EQ(lua_->GetIntGlobal(_T("length")), static_cast<int>(Narrow(umlauts).size()));  // UTF-8
    EXPECT_EQ(lua_->GetConfigInt(_T("T['") + umlauts + _T("']")), 6);
    EXPECT_TRUE(Run("old = 'Z\\228hne'"));  // of a file in the ANSI code page
    EXPECT_EQ(Narrow(lua_->GetConfigString(_T("old"))), "Z\xC3\xA4hne");
}

TEST_F(LuaTest, LoadsFilesAndModulesOfSourceText) {
    const test::TempFolder folder;
    const InFolder current(folder.Path());
    folder.Write(_T("good.lua"), "#!/a/program\nreturn 5, ...");
    folder.Write(_T("bad.lua"), "return return");
    folder.Write(_T("code.lua"), "\x1BLuaQ");
    folder.MakeFolder(_T("sub"));
    EXPECT_TRUE(Run("assert(dofile('good.lua') == 5 and require('good') == 5 and package.loaded.good == 5)"));
    for (const char* const script :
         {"assert(loadfile('code.lua'))", "require('code')", "dofile('code.lua')", "require('bad')", "require('missing')",
          "assert(loadfile('missing.lua'))", "dofile('sub')", "assert(package.loadlib('good.lua', '*'))"})
        EXPECT_FALSE(Run(script)) << script;
}

// Events.

class Events : public KALuaEventHandler {
public:
    std::string Names() const {
        std::string all;
        for (POSITION at = m_Events.GetHeadPosition(); at != nullptr;)
            all += Narrow(m_Events.GetNext(at)) + " ";
        return all;
    }
};

TEST_F(LuaTest, HasEventsOnceEachInTheirOrder) {
    Events events;
    const auto step = [&](LPCTSTR name, bool in) {
        CString text = name;
        in ? events.RegisterEvent(text) : events.UnRegisterEvent(text);
    };
    for (const LPCTSTR name : {_T("b"), _T("a"), _T("b"), _T("B"), _T("")})
        step(name, true);
    EXPECT_EQ(events.Names(), "b a B  ");
    for (const LPCTSTR name : {_T("b"), _T("c"), _T("b")})
        step(name, false);
    EXPECT_EQ(events.Names(), "a B  ");
    EXPECT_EQ(events.FireEvent(1, 2, 3) + events.FireEvent(1, CString(_T("t")), 3), 0);
    KALuaEventHandler& shared = *KALuaEventHandler::Instance();
    EXPECT_TRUE(shared.FireEvent(0, 0, 0) == -1 && shared.FireEvent(99, CString(), 0) == -1);
}

TEST_F(LuaTest, KnowsWhereScriptsLie) {
    KaCLuaState& state = *KaCLuaState::Instance();
    const CString program = CDirectory::GetExePath();
    const CString above = CDirectory::SplitPathFromFileNameWithPath(program.Left(program.GetLength() - 1));
    EXPECT_EQ(Narrow(state.GetTestScriptPathName()), Narrow(above + _T("2_Test\\")));
    EXPECT_EQ(Narrow(state.GetTestConfigFileName()), Narrow(above + _T("2_Test\\TestConf.lua")));
    EXPECT_EQ(Narrow(state.GetConfigDirectoryName()), Narrow(program + _T("LuaConfig")));
    state.SetTestScriptPathName(_T("x"));
    state.SetLuaActive(true);
    EXPECT_TRUE(state.GetTestConfigFileName() == _T("xTestConf.lua") && !state.IsLuaActive());
    EXPECT_TRUE(state.GetType() == _T("Lua State Handler\n") && lua_->GetType() == _T("Lua Script Engine\n") &&
                KALuaEventHandler::Instance()->GetType() == _T("Lua Event Handler\n"));
}

// The runtime. It stands beside the program: first a file that is no library, then one that is another, then none in the current
// folder, at last the right one.

bool IsAbsent() {
    return KALua::Instance() == nullptr && KALua::Instance() == nullptr && KALua::m_hLuaDllInstance == nullptr &&
           KaCLuaConfig::Load() && !KaCLuaConfig::Test() && KALuaEventHandler::Instance()->FireEvent(1, 2, 3) == 0;
}

int MissTheRuntime(const test::ChildArgs& args) {
    const Text beside = args[0], foreign = args[1], runtime = args[2];
    test::WriteBytes(beside, "no library");
    if (!IsAbsent())
        return 1;
    if (!CopyFileW(foreign.c_str(), beside.c_str(), FALSE) || !IsAbsent())
        return 2;
    test::WriteBytes(beside, "no library again");
    if (!CopyFileW(runtime.c_str(), _T("lua5.1.dll"), FALSE) || !IsAbsent())
        return 3;
    if (!CopyFileW(runtime.c_str(), beside.c_str(), FALSE) || KALua::Instance() == nullptr || !KaCLuaConfig::Test())
        return 4;
    return KALuaEventHandler::Instance()->FireEvent(1, 2, 3) == -1 ? 0 : 5;
}
REGISTER_CHILD(MissTheRuntime)

Text FileOf(HMODULE module) {
    TCHAR path[4 * MAX_PATH];
    return Text(path, GetModuleFileNameW(module, path, 4 * MAX_PATH));
}

TEST_F(LuaTest, IsNullWithoutTheRuntimeUntilItIsThere) {
    const test::TempFolder folder;
    const Text program = folder.MakeFolder(_T("program"));
    Text foreign;
    for (const LPCTSTR name : {_T("KaData.dll"), _T("libstdc++-6.dll"), _T("libgcc_s_seh-1.dll"), _T("libwinpthread-1.dll")}) {
        if (const HMODULE module = GetModuleHandleW(name)) {  // the system looks for them beside the program
            foreign = FileOf(module);
            ASSERT_TRUE(CopyFileW(foreign.c_str(), (program + _T("\\") + name).c_str(), TRUE));
        }
    }
    if (foreign.empty())
        foreign = FileOf(LoadLibraryW(_T("libz.so.1")));
    ASSERT_TRUE(CopyFileW(test::OwnPath().c_str(), (program + _T("\\host.exe")).c_str(), TRUE));
    const InFolder current(folder.Path());
    const test::ChildProcess child(
        {_T("MissTheRuntime"), program + _T("\\lua5.1.dll"), foreign, FileOf(KALua::m_hLuaDllInstance)},
        program + _T("\\host.exe"));
    EXPECT_EQ(child.Wait(60000), 0u);
}

}  // namespace
