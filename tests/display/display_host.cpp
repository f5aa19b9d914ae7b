// display_host PICTURE: a window on a display that says on its output what happens to it, for scripts/test-display. The key P
// saves its picture as a bitmap file, D opens a second window that belongs to it, M a message box, V tells what the clipboard
// holds, and closing ends the program.

#include <kadata/skin_message_box.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "../desktop/picture.h"

namespace {

std::string picture_path;

void Say(const char* what, long first = 0, long second = 0) {
    std::printf("%s %ld %ld\n", what, first, second);
    std::fflush(stdout);
}

template <class Value>
void Put(std::ofstream& file, Value value) {
    for (std::size_t byte = 0; byte < sizeof value; ++byte) {
        file.put(static_cast<char>((static_cast<unsigned long long>(value) >> (8 * byte)) & 0xFF));
    }
}

// A bitmap file of 32 bits a pixel, its rows from the top.
void Save(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    const desktop_test::Picture picture(width, height, 0);
    PrintWindow(window, picture.Context(), 0);
    std::ofstream file(picture_path, std::ios::binary);
    constexpr DWORD header = 54;
    const DWORD bytes = static_cast<DWORD>(width * height) * 4;
    Put(file, WORD{0x4D42});
    Put(file, header + bytes);
    Put(file, DWORD{0});
    Put(file, header);
    Put(file, DWORD{40});
    Put(file, static_cast<DWORD>(width));
    Put(file, static_cast<DWORD>(-height));
    Put(file, WORD{1});
    Put(file, WORD{32});
    for (const DWORD each : {BI_RGB, bytes, DWORD{2835}, DWORD{2835}, DWORD{0}, DWORD{0}}) {
        Put(file, each);
    }
    for (int pixel = 0; pixel < width * height; ++pixel) {
        Put(file, picture.Pixels()[pixel]);
    }
    file.close();
    Say("saved", width, height);
}

// Stripes whose colours tell the place.
void Paint(HWND window) {
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(window, &paint);
    RECT client = {};
    GetClientRect(window, &client);
    for (LONG x = 0; x < client.right; x += 16) {
        const RECT stripe = {x, 0, x + 16, client.bottom};
        const HBRUSH brush = CreateSolidBrush(RGB(x & 0xFF, 128, 255 - (x & 0xFF)));
        FillRect(context, &stripe, brush);
        DeleteObject(brush);
    }
    EndPaint(window, &paint);
}

void OpenOwned(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    CreateWindowExW(WS_EX_DLGMODALFRAME, u"display_host", u"Owned", WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE,
                    rect.left + 60, rect.top + 80, 200, 120, window, nullptr, nullptr, nullptr);
}

// Says where its button Yes is.
class Box : public CSkinMessageBox {
public:
    using CSkinMessageBox::CSkinMessageBox;

    BOOL OnInitDialog() override {
        const BOOL result = CSkinMessageBox::OnInitDialog();
        CRect yes;
        GetDlgItem(IDYES)->GetWindowRect(yes);
        Say("box-open", yes.CenterPoint().x, yes.CenterPoint().y);
        return result;
    }
};

void OpenBox(HWND window) {
    Box box(CWnd::FromHandle(window), u"Is this above?", u"Box", MB_YESNOCANCEL | MB_ICONQUESTION);
    Say("box", static_cast<long>(box.DoModal()));
}

void TellClipboard(HWND window) {
    if (OpenClipboard(window)) {
        const HANDLE data = GetClipboardData(CF_UNICODETEXT);
        Say("clipboard", data != nullptr ? static_cast<long>(lstrlenW(static_cast<LPCWSTR>(GlobalLock(data)))) : -1);
        GlobalUnlock(data);
        CloseClipboard();
    }
}

void Typed(HWND window, WPARAM character) {
    Say("char", static_cast<long>(character));
    if (character == 'p') {
        Save(window);
    } else if (character == 'd') {
        OpenOwned(window);
    } else if (character == 'm') {
        OpenBox(window);
    } else if (character == 'v') {
        TellClipboard(window);
    }
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const bool owned = GetWindow(window, GW_OWNER) != nullptr;
    switch (message) {
        case WM_PAINT:
            Paint(window);
            return 0;
        case WM_LBUTTONDOWN:
            Say(owned ? "owned-click" : "click", GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam));
            return 0;
        case WM_MOUSEWHEEL:
            Say("wheel", GET_WHEEL_DELTA_WPARAM(wparam));
            return 0;
        case WM_KEYDOWN:
            Say(owned ? "owned-key" : "key", static_cast<long>(wparam));
            return 0;
        case WM_CHAR:
            Typed(window, wparam);
            return 0;
        case WM_ACTIVATE:
            Say(owned ? "owned-active" : "active", LOWORD(wparam) != WA_INACTIVE);
            break;
        case WM_ENABLE:
            Say("enabled", wparam != FALSE);
            return 0;
        case WM_EXITSIZEMOVE: {
            RECT rect = {};
            GetWindowRect(window, &rect);
            Say("place", rect.left, rect.top);
            Say("size", rect.right - rect.left, rect.bottom - rect.top);
            return 0;
        }
        case WM_DESTROY:
            Say(owned ? "owned-closed" : "closed");
            if (!owned) {
                PostQuitMessage(0);
            }
            return 0;
        default:
            break;
    }
    return DefWindowProcW(window, message, wparam, lparam);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: display_host PICTURE\n", stderr);
        return 2;
    }
    picture_path = argv[1];
    WNDCLASSEXW description = {};
    description.cbSize = sizeof description;
    description.lpfnWndProc = Procedure;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = u"display_host";
    RegisterClassExW(&description);
    const HWND window = CreateWindowExW(0, u"display_host", u"Display host: \u00DCberblick", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                        100, 80, 400, 300, nullptr, nullptr, nullptr, nullptr);
    if (window == nullptr) {
        return 1;
    }
    Say("screen", GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
