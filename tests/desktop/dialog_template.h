#pragma once

// Dialog templates made at run time, and a dialog whose messages a test follows.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace desktop_test {

using Text = std::basic_string<TCHAR>;

constexpr WORD kButton = 0x0080;
constexpr WORD kStatic = 0x0082;
constexpr DWORD kControl = WS_CHILD | WS_VISIBLE;
constexpr DWORD kStop = kControl | WS_TABSTOP;

struct ItemSpec {
    WORD atom = kButton;
    LPCTSTR text = _T("");
    DWORD style = kStop;
    DWORD id = 0;
    RECT rect = {0, 0, 40, 14};  // position and size
    LPCTSTR class_name = nullptr;
    std::vector<WORD> data = {};
    WORD resource = 0;  // in place of the text
};

struct DialogSpec {
    DWORD style = WS_POPUP;
    std::vector<ItemSpec> items = {};
    bool extended = false;
    RECT rect = {10, 10, 200, 100};
    DWORD extended_style = 0;
    LPCTSTR class_name = nullptr;
};

// "MS Shell Dlg" of 8 points where the style has DS_SETFONT. In words, so that it is aligned as templates are.
std::vector<WORD> MakeTemplate(const DialogSpec& spec);

class DialogTest : public ::testing::Test {
protected:
    DialogTest();
    ~DialogTest() override;

    HWND Create(const DialogSpec& spec, HWND owner = nullptr, LPARAM parameter = 0);
    INT_PTR Run(const DialogSpec& spec, HWND owner = nullptr, LPARAM parameter = 0);
    HWND Item(int id) const { return GetDlgItem(dialog, id); }
    HWND MakeOwner(DWORD style = WS_POPUP);  // its client area at 300,200

    // Sends a key message through IsDialogMessageW to the focus, and serves what is posted then.
    void Press(UINT key, UINT message = WM_KEYDOWN);
    // Serves what is in the queue; false when WM_QUIT was among it.
    bool Serve();

    // "id:code" of each WM_COMMAND since the last call.
    std::string TakeCommands();

    HWND dialog = nullptr;  // the last that began
    std::function<INT_PTR(HWND, UINT, WPARAM, LPARAM)> on_message;

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

    std::vector<HWND> windows_;
    std::string commands_;
};

}  // namespace desktop_test
