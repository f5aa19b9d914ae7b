#pragma once

// One Lua interpreter that no script can take the host down with: every error stays inside it, its memory and its stack are
// bounded, and it takes source text only (lua/guards.lua).
//
// Belongs to one thread. FindFunctions must have succeeded before, and the runtime stays loaded as long as an object lives.

#include <afx.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "lua_api.h"

namespace kadata::lua {

// Counts what scripts hold, and refuses what would be too much. Their errors are then "not enough memory".
class Memory {
public:
    static constexpr std::int64_t MOST = 256 << 20;  // bytes

    // From the next allocation of `state` on, which must not outlive this object.
    void Watch(lua_State* state);
    bool IsHalfFull() const { return m_Used > MOST / 2; }

private:
    static void* Allocate(void* memory, void* block, std::size_t oldSize, std::size_t newSize);

    Allocator m_Inner = nullptr;  // the runtime's own, which alone may free what it has allocated
    void* m_InnerData = nullptr;
    std::int64_t m_Used = 0;  // bytes, less the few from before
};

class Interpreter {
public:
    // With the standard libraries. Null when memory runs out.
    static std::unique_ptr<Interpreter> Make();

    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;
    ~Interpreter();

    lua_State* State() const { return m_State; }

    // Runs UTF-8 source text and leaves its results on the stack, or the error. False when it fails, bytecode included.
    bool Run(std::string_view text);

    // Whether the value is to be made a text, as a number can be.
    enum class EWanted { AS_IT_IS, AS_TEXT };

    // Pushes a global variable's value, or the error.
    bool PushGlobal(const char* name, EWanted wanted);
    // Sets the global "evalExpr" to the value of the path, and pushes that. `path` is any expression; where it is made of names
    // and indices it is compiled once.
    bool PushPath(const CString& path, EWanted wanted);

private:
    Interpreter() = default;

    bool Read(const char* name, EWanted wanted, int arguments);
    int CompiledPath(const CString& path);
    int Compile(const CString& path);
    void ForgetPaths();
    int BottomOfValues() const;
    void MakeRoom();
    bool Settle(int status);

    using Text = std::basic_string<TCHAR>;
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::basic_string_view<TCHAR> text) const noexcept { return std::hash<decltype(text)>()(text); }
    };

    Memory m_Memory;
    lua_State* m_State = nullptr;
    std::unordered_map<Text, int, Hash, std::equal_to<>> m_Paths;  // to the places of their chunks on the stack
};

}  // namespace kadata::lua
