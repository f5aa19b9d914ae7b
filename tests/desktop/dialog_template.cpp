#include "dialog_template.h"

#include <cstddef>

namespace desktop_test {
namespace {

DialogTest* the_test = nullptr;

class Words {
public:
    void Word(unsigned value) { words_.push_back(static_cast<WORD>(value)); }
    void Dword(DWORD value) {
        Word(value & 0xFFFF);
        Word(value >> 16);
    }
    void Text(LPCTSTR text) {
        do {
            Word(static_cast<WORD>(*text));
        } while (*text++ != 0);
    }
    void TextOrNumber(LPCTSTR text, WORD number) {
        if (text != nullptr) {
            Text(text);
        } else {
            Word(number == 0 ? 0 : 0xFFFF);
            if (number != 0) {
                Word(number);
            }
        }
    }
    void Rect(const RECT& rect) {
        for (const LONG side : {rect.left, rect.top, rect.right, rect.bottom}) {
            Word(static_cast<unsigned>(side));
        }
    }
    void Align() { words_.resize((words_.size() + 1) / 2 * 2); }
    std::vector<WORD> Take() { return std::move(words_); }

private:
    std::vector<WORD> words_;
};

void AddHead(Words& words, const DialogSpec& spec) {
    if (spec.extended) {
        words.Dword(0xFFFF0001);
        words.Dword(0);  // help
        words.Dword(spec.extended_style);
        words.Dword(spec.style);
    } else {
        words.Dword(spec.style);
        words.Dword(spec.extended_style);
    }
    words.Word(static_cast<unsigned>(spec.items.size()));
    words.Rect(spec.rect);
    words.Word(0);  // menu
    words.TextOrNumber(spec.class_name, 0);
    words.Text(_T("Title"));
    if ((spec.style & DS_SETFONT) != 0) {
        words.Word(8);
        if (spec.extended) {
            words.Word(FW_NORMAL);
            words.Word(MAKEWORD(0, DEFAULT_CHARSET));
        }
        words.Text(_T("MS Shell Dlg"));
    }
}

void AddItem(Words& words, const ItemSpec& item, bool extended) {
    words.Align();
    if (extended) {
        words.Dword(0);  // help
        words.Dword(0);
        words.Dword(item.style);
        words.Rect(item.rect);
        words.Dword(item.id);
    } else {
        words.Dword(item.style);
        words.Dword(0);
        words.Rect(item.rect);
        words.Word(item.id);
    }
    words.TextOrNumber(item.class_name, item.atom);
    words.TextOrNumber(item.resource != 0 ? nullptr : item.text, item.resource);
    // The simple form's size counts itself.
    words.Word(item.data.empty() ? 0 : static_cast<unsigned>((item.data.size() + (extended ? 0 : 1)) * sizeof(WORD)));
    for (const WORD word : item.data) {
        words.Word(word);
    }
}

}  // namespace

std::vector<WORD> MakeTemplate(const DialogSpec& spec) {
    Words words;
    AddHead(words, spec);
    for (const ItemSpec& item : spec.items) {
        AddItem(words, item, spec.extended);
    }
    return words.Take();
}

DialogTest::DialogTest() {
    the_test = this;
}

DialogTest::~DialogTest() {
    on_message = nullptr;
    for (const HWND window : windows_) {
        DestroyWindow(window);
    }
    Serve();
    the_test = nullptr;
}

HWND DialogTest::Create(const DialogSpec& spec, HWND owner, LPARAM parameter) {
    const std::vector<WORD> words = MakeTemplate(spec);
    const HWND made = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), reinterpret_cast<LPCDLGTEMPLATE>(words.data()), owner,
                                                 Procedure, parameter);
    if (made != nullptr) {
        windows_.push_back(made);
    }
    return made;
}

INT_PTR DialogTest::Run(const DialogSpec& spec, HWND owner, LPARAM parameter) {
    const std::vector<WORD> words = MakeTemplate(spec);
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), reinterpret_cast<LPCDLGTEMPLATE>(words.data()), owner, Procedure,
                                   parameter);
}

HWND DialogTest::MakeOwner(DWORD style) {
    windows_.push_back(
        CreateWindowExW(0, _T("Static"), _T("owner"), style, 300, 200, 400, 300, nullptr, nullptr, nullptr, nullptr));
    return windows_.back();
}

void DialogTest::Press(UINT key, UINT message) {
    MSG press = {};
    press.hwnd = GetFocus() != nullptr ? GetFocus() : dialog;
    press.message = message;
    press.wParam = key;
    press.lParam = message == WM_SYSCHAR ? 0x20000001 : 1;
    EXPECT_TRUE(IsDialogMessageW(dialog, &press));
    EXPECT_TRUE(Serve());
}

bool DialogTest::Serve() {
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            return false;
        }
        DispatchMessageW(&message);
    }
    return true;
}

std::string DialogTest::TakeCommands() {
    return std::exchange(commands_, {});
}

INT_PTR CALLBACK DialogTest::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (the_test == nullptr) {
        return FALSE;
    }
    if (message == WM_SETFONT || message == WM_INITDIALOG) {
        the_test->dialog = window;
    }
    if (message == WM_COMMAND) {
        the_test->commands_ += std::to_string(LOWORD(wparam)) + ":" + std::to_string(HIWORD(wparam)) + " ";
    }
    return the_test->on_message ? the_test->on_message(window, message, wparam, lparam) : FALSE;
}

}  // namespace desktop_test
