#pragma once

// The functions of the Lua 5.1 runtime, which is loaded when it is first needed and never linked. Nothing of its headers is used;
// the shapes are those of its reference manual, chapters 3.7 and 4.1.

#include <windows.h>

#include <cstddef>

struct lua_State;

namespace kadata::lua {

using CFunction = int (*)(lua_State* state);
using Allocator = void* (*)(void* data, void* block, std::size_t oldSize, std::size_t newSize);

constexpr int GLOBALS = -10002;             // LUA_GLOBALSINDEX
constexpr int FIRST_UPVALUE = GLOBALS - 1;  // of the running C function
constexpr int MULTIPLE_RESULTS = -1;        // LUA_MULTRET
constexpr int TYPE_BOOLEAN = 1;

// clang-format off
// What the engine cannot do without, in the order in which it is looked up.
#define KADATA_LUA_FUNCTIONS(X)                                                                    \
    X(lua_State*, luaL_newstate, ())                                                               \
    X(void, lua_close, (lua_State*))                                                               \
    X(int, luaL_loadfile, (lua_State*, const char* path))                                          \
    X(void, luaL_openlibs, (lua_State*))                                                           \
    X(std::ptrdiff_t, lua_tointeger, (lua_State*, int index))                                      \
    X(double, lua_tonumber, (lua_State*, int index))                                               \
    X(int, lua_pcall, (lua_State*, int arguments, int results, int handler))                       \
    X(int, luaL_loadbuffer, (lua_State*, const char* text, std::size_t size, const char* name))    \
    X(void, lua_pushstring, (lua_State*, const char* text))                                        \
    X(void, lua_pushboolean, (lua_State*, int value))                                              \
    X(void, lua_pushinteger, (lua_State*, std::ptrdiff_t value))                                   \
    X(void, lua_pushnumber, (lua_State*, double value))                                            \
    X(double, luaL_optnumber, (lua_State*, int argument, double other))                            \
    X(int, lua_isnumber, (lua_State*, int index))                                                  \
    X(int, lua_isstring, (lua_State*, int index))                                                  \
    X(void, luaL_checkstack, (lua_State*, int slots, const char* message))                         \
    X(const char*, luaL_checklstring, (lua_State*, int argument, std::size_t* size))               \
    X(void, lua_setfield, (lua_State*, int index, const char* name))                               \
    X(void, lua_getfield, (lua_State*, int index, const char* name))                               \
    X(void, lua_pushcclosure, (lua_State*, CFunction function, int upvalues))                      \
    X(int, lua_toboolean, (lua_State*, int index))                                                 \
    X(const char*, lua_tolstring, (lua_State*, int index, std::size_t* size))                      \
    X(const char*, luaL_optlstring, (lua_State*, int argument, const char* other, std::size_t* size)) \
    X(std::ptrdiff_t, luaL_optinteger, (lua_State*, int argument, std::ptrdiff_t other))           \
    X(void, lua_settop, (lua_State*, int height))                                                  \
    X(int, luaL_error, (lua_State*, const char* format, ...))                                      \
    X(int, lua_gettop, (lua_State*))                                                               \
    X(void, lua_pushvalue, (lua_State*, int index))                                                \
    X(void, lua_call, (lua_State*, int arguments, int results))                                    \
    X(int, lua_type, (lua_State*, int index))

// What bounds the memory of scripts; a runtime without them has no bound.
#define KADATA_LUA_MEMORY_FUNCTIONS(X)                                                             \
    X(Allocator, lua_getallocf, (lua_State*, void** data))                                         \
    X(void, lua_setallocf, (lua_State*, Allocator allocator, void* data))
// clang-format on

// Which of them raise an error, and so leave the caller by a jump: all but newstate, close, pcall, loadbuffer, gettop, settop,
// pushvalue, pushboolean, pushinteger, pushnumber, type, isnumber, isstring, toboolean, tonumber, tointeger, and tolstring of a
// text. Those that raise are called by C functions that lua_pcall runs, and nothing there has a destructor.
struct SApi {
#define KADATA_LUA_MEMBER(result, name, parameters) result(*name) parameters;
    KADATA_LUA_FUNCTIONS(KADATA_LUA_MEMBER)
    KADATA_LUA_MEMORY_FUNCTIONS(KADATA_LUA_MEMBER)
#undef KADATA_LUA_MEMBER
};

// Of the library that FindFunctions has seen last; all null before.
const SApi& Api();

// False when the library lacks one of those that the engine needs.
bool FindFunctions(HMODULE library);

// The runtime, "lua5.1.dll": beside this library, else beside the program, else where the system keeps libraries; never in the
// current folder. Null when it is nowhere, or what is there is no library. Counted.
HMODULE LoadRuntime();

}  // namespace kadata::lua
