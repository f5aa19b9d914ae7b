#include "lua_interpreter.h"

#include <kadata/utils.h>

#include <algorithm>

#include "lua_scripts.h"

namespace kadata::lua {
namespace {

constexpr char SCRATCH_GLOBAL[] = "evalExpr";
constexpr char BYTECODE_MARK = 0x1B;

// The stack, from the bottom: the function that reads, the one that collects garbage, the compiled paths, and above them the
// values that were read and the results of scripts. C functions may have 8000 places.
constexpr int READER = 1;
constexpr int COLLECTOR = 2;
constexpr std::size_t MOST_PATHS = 2048;
constexpr int MOST_VALUES = 512;
constexpr int ROOM = COLLECTOR + static_cast<int>(MOST_PATHS) + MOST_VALUES;
constexpr int SPARE = 8;  // what a call needs beside its results

// What the C functions below are told. The interpreter calls them with numbers and texts of its own only, and to hand it a text
// would take memory, which may raise an error where none may be raised.
struct SRequest {
    const char* name;
    Interpreter::EWanted wanted;
};
constinit SRequest request = {};
constinit bool pathsAreStale = false;

// Runs its argument, if there is one, and returns the global variable.
int ReadGlobal(lua_State* state) {
    if (Api().lua_gettop(state) > 0) {
        Api().lua_call(state, 0, 0);
    }
    Api().lua_getfield(state, GLOBALS, request.name);
    if (request.wanted == Interpreter::EWanted::AS_TEXT && Api().lua_isstring(state, -1) != 0) {
        Api().lua_tolstring(state, -1, nullptr);  // becomes a text where it stands
    }
    return 1;
}

// setfenv, one level farther from its caller. A compiled path keeps the variables that were global when it was compiled; after
// this it may not be looking at those that a path compiled now would see.
int ChangeEnvironment(lua_State* state) {
    pathsAreStale = true;
    const int count = Api().lua_gettop(state);
    Api().luaL_checkstack(state, count + SPARE, "setfenv");
    Api().lua_pushvalue(state, FIRST_UPVALUE);
    for (int i = 1; i <= count; ++i) {
        const std::ptrdiff_t level = i == 1 && Api().lua_isnumber(state, i) != 0 ? Api().lua_tointeger(state, i) : 0;
        if (level >= 1) {
            Api().lua_pushinteger(state, level + 1);
        } else {
            Api().lua_pushvalue(state, i);
        }
    }
    Api().lua_call(state, count, MULTIPLE_RESULTS);
    return Api().lua_gettop(state) - count;
}

// Opens the libraries, guards them, and returns as many values as the stack is to have room for: results make room where they
// arrive, and that outside of any C function, where luaL_checkstack could not be called safely.
int SetUp(lua_State* state) {
    const std::string_view guards = Guards();
    Api().luaL_openlibs(state);
    Api().luaL_checkstack(state, ROOM, "engine");
    if (Api().luaL_loadbuffer(state, guards.data(), guards.size(), "=guards.lua") != 0) {
        return Api().luaL_error(state, "%s", Api().lua_tolstring(state, -1, nullptr));
    }
    Api().lua_getfield(state, GLOBALS, "setfenv");
    Api().lua_pushcclosure(state, &ChangeEnvironment, 1);
    Api().lua_call(state, 1, 0);
    Api().lua_pushcclosure(state, &ReadGlobal, 0);
    Api().lua_getfield(state, GLOBALS, "collectgarbage");
    Api().lua_settop(state, ROOM);
    return ROOM;
}

// Names and indices, "Test.param5.param1" or "List[3]": what calls no function of its own can be run again and again.
bool IsPlainPath(std::basic_string_view<TCHAR> path) {
    const auto isPlain = [](TCHAR unit) {
        return (unit >= _T('a') && unit <= _T('z')) || (unit >= _T('A') && unit <= _T('Z')) ||
               (unit >= _T('0') && unit <= _T('9')) || unit == _T('_') || unit == _T('.') || unit == _T('[') || unit == _T(']');
    };
    const bool callsWithText = path.find(_T("[[")) != path.npos;  // f[[text]]
    return std::all_of(path.begin(), path.end(), isPlain) && !callsWithText;
}

std::string Assignment(const CString& path) {
    return std::string(SCRATCH_GLOBAL) + "=" + CKalidoUtils::WC2MB(path);
}

}  // namespace

void Memory::Watch(lua_State* state) {
    if (Api().lua_getallocf != nullptr && Api().lua_setallocf != nullptr) {
        m_Inner = Api().lua_getallocf(state, &m_InnerData);
        Api().lua_setallocf(state, &Memory::Allocate, this);
    }
}

void* Memory::Allocate(void* data, void* block, std::size_t oldSize, std::size_t newSize) {
    Memory& memory = *static_cast<Memory*>(data);
    if (newSize > static_cast<std::size_t>(MOST)) {
        return nullptr;
    }
    const std::int64_t more = static_cast<std::int64_t>(newSize) - static_cast<std::int64_t>(oldSize);
    if (more > 0 && memory.m_Used + more > MOST) {
        return nullptr;
    }
    void* const result = memory.m_Inner(memory.m_InnerData, block, oldSize, newSize);
    if (result != nullptr || newSize == 0) {
        memory.m_Used += more;
    }
    return result;
}

std::unique_ptr<Interpreter> Interpreter::Make() {
    std::unique_ptr<Interpreter> made(new Interpreter);
    made->m_State = Api().luaL_newstate();
    if (made->m_State == nullptr) {
        return nullptr;
    }
    made->m_Memory.Watch(made->m_State);
    // The one allocation that nothing protects: 40 bytes in a state that no script has seen.
    Api().lua_pushcclosure(made->m_State, &SetUp, 0);
    if (Api().lua_pcall(made->m_State, 0, MULTIPLE_RESULTS, 0) != 0) {
        return nullptr;
    }
    Api().lua_settop(made->m_State, COLLECTOR);
    pathsAreStale = false;
    return made;
}

Interpreter::~Interpreter() {
    if (m_State != nullptr) {
        Api().lua_close(m_State);
    }
}

bool Interpreter::Run(std::string_view text) {
    MakeRoom();
    if (!text.empty() && text.front() == BYTECODE_MARK) {
        return false;
    }
    int status = Api().luaL_loadbuffer(m_State, text.data(), text.size(), nullptr);
    if (status == 0) {
        status = Api().lua_pcall(m_State, 0, MULTIPLE_RESULTS, 0);
    }
    return Settle(status);
}

bool Interpreter::PushGlobal(const char* name, EWanted wanted) {
    MakeRoom();
    Api().lua_pushvalue(m_State, READER);
    return Read(name, wanted, 0);
}

bool Interpreter::PushPath(const CString& path, EWanted wanted) {
    MakeRoom();
    if (!IsPlainPath(path.View())) {
        return Run(Assignment(path)) && PushGlobal(SCRATCH_GLOBAL, wanted);
    }
    const int place = CompiledPath(path);
    if (place == 0) {
        return false;
    }
    Api().lua_pushvalue(m_State, READER);
    Api().lua_pushvalue(m_State, place);
    return Read(SCRATCH_GLOBAL, wanted, 1);
}

// The reader and its arguments are on the stack.
bool Interpreter::Read(const char* name, EWanted wanted, int arguments) {
    request = {name, wanted};
    const int status = Api().lua_pcall(m_State, arguments, 1, 0);
    return status == 0 || Settle(status);
}

// The place of the path's chunk on the stack; 0 with the error pushed when it cannot be compiled.
int Interpreter::CompiledPath(const CString& path) {
    if (pathsAreStale || m_Paths.size() >= MOST_PATHS) {
        ForgetPaths();
    }
    const auto found = m_Paths.find(path.View());
    return found != m_Paths.end() ? found->second : Compile(path);
}

int Interpreter::Compile(const CString& path) {
    const std::string text = Assignment(path);
    Api().lua_settop(m_State, BottomOfValues());  // a chunk lies below the values
    const int status = Api().luaL_loadbuffer(m_State, text.data(), text.size(), nullptr);
    if (status != 0) {
        Settle(status);
        return 0;
    }
    const int place = BottomOfValues() + 1;
    m_Paths.emplace(path.View(), place);
    return place;
}

void Interpreter::ForgetPaths() {
    m_Paths.clear();
    Api().lua_settop(m_State, BottomOfValues());
    pathsAreStale = false;
}

int Interpreter::BottomOfValues() const {
    return COLLECTOR + static_cast<int>(m_Paths.size());
}

// Values stay until their room is needed.
void Interpreter::MakeRoom() {
    if (Api().lua_gettop(m_State) > BottomOfValues() + MOST_VALUES - SPARE) {
        Api().lua_settop(m_State, BottomOfValues());
    }
}

// After scripts ran, or something failed. Garbage is collected in small steps, and not at all by who is refused memory: what a
// script has left behind must not fail the next one.
bool Interpreter::Settle(int status) {
    if (m_Memory.IsHalfFull()) {
        Api().lua_settop(m_State, BottomOfValues());
        Api().lua_pushvalue(m_State, COLLECTOR);
        if (Api().lua_pcall(m_State, 0, 0, 0) != 0) {
            Api().lua_settop(m_State, -2);  // the error of a finalizer
        }
    }
    return status == 0;
}

}  // namespace kadata::lua
