#include <configuration.h>
#include <gtest/gtest.h>
#include <kadata/directory.h>
#include <kadata/lua_engine.h>

#include <algorithm>

#include "support/temp_folder.h"

namespace {

using test::Narrow;

std::string ValueOf(const std::vector<SConfigValue>& values, const char* path) {
    const auto found = std::find_if(values.begin(), values.end(), [&](const SConfigValue& v) { return Narrow(v.path) == path; });
    return found == values.end() ? "none" : Narrow(found->value);
}

TEST(Configuration, IsTheDefaultsWithThePracticesOwnScriptsOverThem) {
    const CString folder = KaCLuaState::Instance()->GetConfigDirectoryName();
    CDirectory::Make(folder);
    test::WriteBytes(test::Text(CDirectory::Concat(folder, _T("own.lua")).GetString()),
                     "KaFit.Level = 2 KaFit.Own = 'Z\xC3\xA4hne'");
    test::WriteBytes(test::Text(CDirectory::Concat(folder, _T("wrong.lua")).GetString()), "KaFit.Level = ");
    const auto values = LoadConfiguration();
    CDirectory::Remove(folder);
    ASSERT_TRUE(values);
    EXPECT_EQ(ValueOf(*values, "KaFit.Level"), "2");
    EXPECT_EQ(ValueOf(*values, "KaFit.Own"), "Z\xC3\xA4hne");
    EXPECT_EQ(ValueOf(*values, "RestorationGeneration.Bio"), "true");
    EXPECT_EQ(ValueOf(*values, "KaFit.InitialPlacement.searchRadiusPrep"), "0.01");
    EXPECT_TRUE(std::is_sorted(values->begin(), values->end(),
                               [](const SConfigValue& a, const SConfigValue& b) { return Narrow(a.path) < Narrow(b.path); }));
}

}  // namespace
