#pragma once

// Windows of a class of their own whose messages are written down.

#include <tchar.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace desktop_test {

using Names = std::vector<std::string>;

constexpr TCHAR kClass[] = _T("kadata test: messages written down");

// Separated by blanks.
std::string Joined(const Names& names);

// Windows made by it note the messages that it has names for. Use it in one thread; its windows are destroyed with it.
class MessageLog {
public:
    // In addition to those of `kCommon`, or nothing.
    MessageLog();
    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;
    ~MessageLog();

    HWND Create(DWORD style, DWORD extended_style, RECT rect, HWND parent = nullptr, const char* tag = "");

    // What has come since the last call: "CREATE", or "tag.CREATE".
    Names Take();

    // Also "1.SETFOCUS", "1.ACTIVATE0" (0: no more) and the like from now on, which TakeFocus tells apart from all else.
    void NoteFocus() { notes_focus_ = true; }
    Names TakeFocus();

    // Called before the default procedure; a value ends the message with it.
    std::function<bool(HWND window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result)> on_message;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    void Note(HWND window, UINT message, WPARAM wparam);
    const std::string& TagOf(HWND window);

    struct Tagged {
        HWND window;
        std::string tag;
    };
    std::vector<Tagged> windows_;
    std::string next_tag_;
    Names noted_;
    Names focus_;
    bool notes_focus_ = false;
};

}  // namespace desktop_test
