#include "settings_fixture.h"
#include "support/functions.h"
#include "support/wine.h"

namespace {

using test::Settings;
using test::SettingsTest;

// The system's functions as a host finds them; null where it has none.
template <class Signature>
Signature* Find(const char* name) {
    const HMODULE module = LoadLibraryW(_T("KtmW32.dll"));
    return module != nullptr ? test::Function<Signature>(module, name) : nullptr;
}
using CreateTransactionFunction = HANDLE WINAPI(SECURITY_ATTRIBUTES*, void*, DWORD, DWORD, DWORD, DWORD, LPWSTR);
using EndTransactionFunction = BOOL WINAPI(HANDLE);

// Wine has the transactions' functions, but no registry that takes part.
TEST_F(SettingsTest, TakePartInATransactionWhereTheSystemHasThem) {
    auto* const create = Find<CreateTransactionFunction>("CreateTransaction");
    const bool transacted = create != nullptr && !test::RunsOnWine();
    Settings inside(product_);
    EXPECT_TRUE(inside.WriteDatabase(1));
    for (const char* const end : {"RollbackTransaction", "CommitTransaction"}) {
        SCOPED_TRACE(end);
        const test::Handle transaction(create != nullptr ? create(nullptr, nullptr, 0, 0, 0, 0, nullptr) : nullptr);
        inside.SetTransaction(create != nullptr ? transaction : INVALID_HANDLE_VALUE);
        EXPECT_TRUE(inside.WriteDatabase(2) && inside.WriteWindowPos(_T("w"), CRect(1, 2, 3, 4)));
        EXPECT_EQ(inside.GetDatabase(), 2);
        EXPECT_EQ(settings_.GetDatabase(), transacted ? 1 : 2);
        EXPECT_TRUE(inside.ClearWindowPos(_T("w")));
        EXPECT_TRUE(inside.GetWindowPos(_T("w"), CRect()).IsRectNull());
        if (transacted) {
            EXPECT_TRUE(Find<EndTransactionFunction>(end)(transaction));
        }
        inside.SetTransaction(nullptr);
        EXPECT_EQ(settings_.GetDatabase(), transacted && end[0] == 'R' ? 1 : 2);
    }
}

}  // namespace
