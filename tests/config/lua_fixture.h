#pragma once

// A script engine of the test's own.

#include <gtest/gtest.h>
#include <kadata/lua_config.h>
#include <kadata/lua_engine.h>
#include <kadata/lua_event_handler.h>

#include <string>

#include "support/temp_folder.h"

namespace test {

class LuaTest : public testing::Test {
protected:
    ~LuaTest() override { EndServices(); }

    void SetUp() override { Restart(); }

    // An engine that no script has seen.
    void Restart() {
        EndServices();
        lua_ = KALua::Instance();
        ASSERT_NE(lua_, nullptr) << "the Lua runtime is missing";
    }
    bool Run(std::string_view script) { return lua_->RunString(Widen(script).c_str()); }

    // Whether the read throws the int 0; anything else that it throws fails the test.
    template <class Reader>
    static bool Throws(Reader&& reader) {
        try {
            reader();
        } catch (int value) {
            EXPECT_EQ(value, 0);
            return true;
        }
        return false;
    }

    KALua* lua_ = nullptr;

private:
    static void EndServices() {
        delete CSingletonManager::Instance();
        KALua::m_Instance = nullptr;
        KaCLuaState::m_Instance = nullptr;
        KALuaEventHandler::m_Instance = nullptr;
    }
};

}  // namespace test
