#include "lua_fixture.h"

namespace {

using test::LuaTest;

// Scripts that want all the memory there is, and fail.
constexpr const char* kGreedy[] = {
    "local s = 'x' while true do s = s .. s end",
    "return string.rep(('x'):rep(1e6), 1e6)",
    "local t = {} while true do t[#t + 1] = {} end",
    "local big = ('x'):rep(1e6) t = {} while pcall(table.insert, t, big .. #t) do end t = nil error()",
    "local big = ('x'):rep(1e6) collectgarbage('stop') for i = 1, 2000 do local s = big .. i end",
    "return ('x'):rep(1e5):gsub('x', ('y'):rep(1e6))",
};

// Other scripts that mean harm. Each is run as it stands, under pcall, in a coroutine, and while a path is read.
const struct {
    const char* script;
    bool succeeds;
    bool spoils = false;  // the globals cannot be written or read afterwards
} kHostile[] = {
    // depth
    {"local function f() return 1 + f() end f()", false},
    {"local function f() f() end f()", false},
    {"local function f(s) return s:gsub('.', f) end f('x')", false},
    {"local function f() coroutine.wrap(f)() end f()", false},
    {"local function f() return pcall(f) end f() error()", false},
    {"assert(loadstring(string.rep('(', 1e5) .. '1' .. string.rep(')', 1e5)))", false},
    {"assert(loadstring('return ' .. string.rep('{', 1e5)))", false},
    {"assert(loadstring('return ' .. string.rep('not ', 1e5) .. '1'))", false},
    {"assert(loadstring(string.rep('do ', 1e5)))", false},
    {"return string.find(string.rep('a', 3e5), string.rep('a?', 3e5) .. 'b')", false},
    {"return string.match(string.rep('a', 3e5), string.rep('.-', 3e5) .. 'b')", false},
    {"return string.gsub(string.rep('a', 3e5), string.rep('a*', 3e5), '')", false},
    {"for _ in string.gmatch(string.rep('a', 3e5), string.rep('(a?)', 3e5)) do end", false},
    {"return string.find(string.rep('a', 2e3), string.rep('a?', 1e3))", true},
    {"return string.gsub('x', string.rep('(', 40), '')", false},
    {"local t = {} for i = 1, 300 do t = setmetatable({}, { __index = t }) end return t.x", false},
    {"xpcall(error, function() error() end) xpcall(error, function() xpcall(error, error) end)", true},
    // metatables on everything
    {"setmetatable(_G, { __index = function(t, k) error({}) end }) return x", false},
    {"setmetatable(_G, { __index = function(t, k) return t[k] end }) return x", false},
    {"setmetatable(_G, { __newindex = function() error(coroutine.create(print)) end }) x = 1", false, true},
    {"local m = {} setmetatable(_G, m) m.__index = m m.__metatable = 1 setmetatable(m, m) return x", false},
    {"getmetatable('').__index = error string.find = error return ('x').y", false},
    {"getmetatable('').__add = getmetatable getmetatable('').__concat = error return 'x' .. {}", false},
    {"local t = setmetatable({}, { __eq = error, __lt = error, __le = error, __len = error, __call = error }) return t()", false},
    {"local t = setmetatable({}, { __tostring = function() return {} end }) print(t)", false},
    {"getmetatable(newproxy(true)).__gc = error", false},
    {"getmetatable(io.stdout).__gc = error", false},
    {"io.stdout.__index.__gc = error", false},
    {"io.stdout.__gc(newproxy())", false},
    {"setmetatable(io.stdout, {})", false},
    {"debug.setmetatable(newproxy(), getmetatable(io.stdout))", false},
    {"debug.setmetatable(nil, { __index = error })", false},
    // globals gone or others
    {"local all = _G for k in pairs(all) do all[k] = nil end", true},
    {"for k in pairs(package.loaded) do package.loaded[k] = nil end require = nil", true},
    {"_G = nil string = 1 table = print pairs = {} error = nil collectgarbage = error", true},
    {"setfenv(0, {})", true},
    {"setfenv(0, setmetatable({}, { __index = error, __newindex = error }))", true, true},
    {"setfenv(print, {})", false},
    {"setfenv(-1, {})", false},
    {"setfenv()", false},
    {"setfenv(2^40, {})", false},
    // what would end the host
    {"os.exit(3)", false},
    {"os.exit = nil os.exit()", false},
    {"return assert(package.loadlib('libc.so.6', 'abort'))()", false},
    {"return assert(loadstring('\\27Lua\\81\\0\\1\\4\\4\\4\\8\\0'))()", false},
    {"return assert(loadstring(string.dump(function() end)))()", false},
    {"debug.getregistry()[1] = nil", false},
    {"debug.sethook(error, 'crl', 1)", false},
    {"debug.setlocal(1, 1, 1)", false},
    {"debug.setfenv(io.read, {}) io.read()", false},
    {"return debug.getupvalue(string.find, 1)", false},
    {"io.stderr:setvbuf('full', 2^40) io.stderr:seek('set', -1) io.stderr:read(-1)", true},
    {"os.date(string.rep('%', 1e4))", true},
    {"collectgarbage('setpause', -1) collectgarbage('setstepmul', -1) collectgarbage('step', 2^31)", true},
    {"pcall(table.sort, { 3, 1, 2, 5, 4, 7, 6 }, function() return true end)", true},
    // too much at once
    {"return table.concat(setmetatable({}, {}), 'x', 1, 2^31 - 1)", false},
    {"return unpack({}, 1, 2^31 - 2)", false},
    {"return string.byte(string.rep('x', 1e6), 1, -1)", false},
    {"return string.format('%99999d', 1)", false},
    {"return string.char(unpack({}, 1, 7990))", false},
    // errors of every kind
    {"error({})", false},
    {"error(nil)", false},
    {"error(setmetatable({}, { __tostring = error }))", false},
    {"error(string.rep('x', 1e6))", false},
    {"coroutine.yield()", false},
    {"local c c = coroutine.wrap(function() c() end) c()", false},
    {"coroutine.resume(coroutine.running() or coroutine.create(function() end), ('x'):rep(1e6))", true},
};

TEST_F(LuaTest, RefusesScriptsTooMuchMemory) {
    for (const std::string script : kGreedy) {
        SCOPED_TRACE(script);
        Restart();
        EXPECT_FALSE(Run(script));
        EXPECT_TRUE(Run("pcall(function() " + script + " end)"));
        EXPECT_TRUE(Run("probe = { v = 7 }"));
        EXPECT_EQ(lua_->GetConfigInt(_T("probe.v")), 7);
    }
}

TEST_F(LuaTest, IsNotTakenDownByItsScripts) {
    for (const auto& [script, succeeds, spoils] : kHostile) {
        SCOPED_TRACE(script);
        Restart();
        EXPECT_EQ(Run(script), succeeds);
        EXPECT_EQ(Run("probe = { v = 7 }"), !spoils);
        if (spoils)
            EXPECT_TRUE(Throws([&] { lua_->GetConfigInt(_T("probe.v")); }));
        else
            EXPECT_EQ(lua_->GetConfigInt(_T("probe.v")), 7);
    }
}

TEST_F(LuaTest, IsNotTakenDownByScriptsInOtherPlaces) {
    Restart();
    const std::pair<const char*, const char*> places[] = {
        {"pcall(function() ", " end)"},
        {"coroutine.resume(coroutine.create(function() ", " end))"},
        {"local f = function() ", " end rawset(_G, 'T', setmetatable({}, { __index = f })) return T.x"},
    };
    for (const auto& [before, after] : places) {
        for (const auto& [script, succeeds, spoils] : kHostile) {
            SCOPED_TRACE(script);
            Restart();
            Run(before + std::string(script) + after);
            lua_->GetConfigString(_T("T.x"));
            lua_->GetConfigString(_T("1 + 1"));
            EXPECT_EQ(lua_->RunString(_T("return 1")), true);
        }
    }
}

}  // namespace
