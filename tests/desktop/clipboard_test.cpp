// The clipboard, and the blocks that data goes to it in.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <thread>

#include "message_log.h"
#include "support/last_error.h"

namespace {

using test::ErrorOf;
using Text = std::basic_string<TCHAR>;

HGLOBAL BlockOf(const Text& text) {
    const std::size_t size = (text.size() + 1) * sizeof(TCHAR);
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
    std::memcpy(GlobalLock(block), text.c_str(), size);
    GlobalUnlock(block);
    return block;
}

Text TextOf(HANDLE block) {
    Text text = static_cast<const TCHAR*>(GlobalLock(block));
    GlobalUnlock(block);
    return text;
}

TEST(GlobalMemory, IsFixedOrLocked) {
    for (const UINT flags : {GMEM_FIXED, GPTR, GMEM_MOVEABLE, GHND}) {
        const HGLOBAL block = GlobalAlloc(flags, 100);
        ASSERT_NE(block, nullptr);
        EXPECT_GE(GlobalSize(block), 100U);
        auto* const bytes = static_cast<char*>(GlobalLock(block));
        ASSERT_NE(bytes, nullptr);
        EXPECT_EQ(bytes == block, (flags & GMEM_MOVEABLE) == 0);
        if ((flags & GMEM_ZEROINIT) != 0) {
            EXPECT_EQ(Text(bytes, bytes + 100), Text(100, 0));
        }
        if ((flags & GMEM_MOVEABLE) != 0) {
            EXPECT_EQ(GlobalLock(block), bytes);
            EXPECT_TRUE(GlobalUnlock(block));
            SetLastError(77);
            EXPECT_EQ(ErrorOf(GlobalUnlock(block)), static_cast<DWORD>(NO_ERROR));
            EXPECT_EQ(ErrorOf(GlobalUnlock(block)), static_cast<DWORD>(ERROR_NOT_LOCKED));
        } else {
            EXPECT_TRUE(GlobalUnlock(block) && GlobalUnlock(block));
        }
        EXPECT_EQ(GlobalFree(block), nullptr);
    }
    EXPECT_EQ(GlobalAlloc(GMEM_MOVEABLE, static_cast<std::size_t>(-1) / 2 + 1), nullptr);
    EXPECT_EQ(GlobalFree(nullptr), nullptr);
}

class Clipboard : public testing::Test {
protected:
    Clipboard() : window_(log_.Create(WS_POPUP, 0, {0, 0, 10, 10}, nullptr, "one")) {}

    desktop_test::MessageLog log_;
    HWND window_;
};

TEST_F(Clipboard, KeepsTextUntilItIsEmptied) {
    const HWND other = log_.Create(WS_POPUP, 0, {0, 0, 10, 10}, nullptr, "other");
    ASSERT_TRUE(OpenClipboard(window_) && EmptyClipboard());
    EXPECT_EQ(GetClipboardOwner(), window_);
    EXPECT_EQ(GetClipboardData(CF_UNICODETEXT), nullptr);
    const HGLOBAL block = BlockOf(_T("Kr\x00F6ne\r\n\x20AC"));
    EXPECT_EQ(SetClipboardData(CF_UNICODETEXT, block), block);
    EXPECT_TRUE(CloseClipboard());
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    ASSERT_TRUE(OpenClipboard(other));
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(TextOf(data), _T("Kr\x00F6ne\r\n\x20AC"));
    EXPECT_TRUE(EmptyClipboard() && !IsClipboardFormatAvailable(CF_UNICODETEXT));
    EXPECT_EQ(GetClipboardOwner(), other);
    EXPECT_TRUE(CloseClipboard());
    DestroyWindow(other);
    EXPECT_EQ(GetClipboardOwner(), nullptr);
}

TEST_F(Clipboard, BelongsToWhoHasOpenedIt) {
    const std::initializer_list<BOOL (*)()> needs = {[] { return EmptyClipboard(); }, [] { return CloseClipboard(); },
                                                     [] { return BOOL{GetClipboardData(CF_UNICODETEXT) != nullptr}; },
                                                     [] { return BOOL{SetClipboardData(CF_UNICODETEXT, nullptr) != nullptr}; }};
    for (const auto call : needs) {
        EXPECT_EQ(ErrorOf(call()), static_cast<DWORD>(ERROR_CLIPBOARD_NOT_OPEN));
    }
    ASSERT_TRUE(OpenClipboard(window_));
    BOOL opened = TRUE;
    DWORD error = 0;
    std::thread([&] {
        opened = OpenClipboard(nullptr);
        error = GetLastError();
    }).join();
    EXPECT_TRUE(!opened && error == ERROR_ACCESS_DENIED);
    EXPECT_TRUE(CloseClipboard());
    std::thread([&] { opened = OpenClipboard(nullptr) && CloseClipboard(); }).join();
    EXPECT_TRUE(opened);
}

}  // namespace
