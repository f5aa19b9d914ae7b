#include "display_keys.h"

#include <algorithm>
#include <iterator>

#include "virtual_keys.h"

namespace kawin {
namespace {

struct Place {
    SDL_Scancode place;
    int key;
    int scan;
};

constexpr Place kPlaces[] = {
    {SDL_SCANCODE_A, 'A', 0x1E},
    {SDL_SCANCODE_B, 'B', 0x30},
    {SDL_SCANCODE_C, 'C', 0x2E},
    {SDL_SCANCODE_D, 'D', 0x20},
    {SDL_SCANCODE_E, 'E', 0x12},
    {SDL_SCANCODE_F, 'F', 0x21},
    {SDL_SCANCODE_G, 'G', 0x22},
    {SDL_SCANCODE_H, 'H', 0x23},
    {SDL_SCANCODE_I, 'I', 0x17},
    {SDL_SCANCODE_J, 'J', 0x24},
    {SDL_SCANCODE_K, 'K', 0x25},
    {SDL_SCANCODE_L, 'L', 0x26},
    {SDL_SCANCODE_M, 'M', 0x32},
    {SDL_SCANCODE_N, 'N', 0x31},
    {SDL_SCANCODE_O, 'O', 0x18},
    {SDL_SCANCODE_P, 'P', 0x19},
    {SDL_SCANCODE_Q, 'Q', 0x10},
    {SDL_SCANCODE_R, 'R', 0x13},
    {SDL_SCANCODE_S, 'S', 0x1F},
    {SDL_SCANCODE_T, 'T', 0x14},
    {SDL_SCANCODE_U, 'U', 0x16},
    {SDL_SCANCODE_V, 'V', 0x2F},
    {SDL_SCANCODE_W, 'W', 0x11},
    {SDL_SCANCODE_X, 'X', 0x2D},
    {SDL_SCANCODE_Y, 'Y', 0x15},
    {SDL_SCANCODE_Z, 'Z', 0x2C},
    {SDL_SCANCODE_1, '1', 0x02},
    {SDL_SCANCODE_2, '2', 0x03},
    {SDL_SCANCODE_3, '3', 0x04},
    {SDL_SCANCODE_4, '4', 0x05},
    {SDL_SCANCODE_5, '5', 0x06},
    {SDL_SCANCODE_6, '6', 0x07},
    {SDL_SCANCODE_7, '7', 0x08},
    {SDL_SCANCODE_8, '8', 0x09},
    {SDL_SCANCODE_9, '9', 0x0A},
    {SDL_SCANCODE_0, '0', 0x0B},
    {SDL_SCANCODE_RETURN, VK_RETURN, 0x1C},
    {SDL_SCANCODE_ESCAPE, VK_ESCAPE, 0x01},
    {SDL_SCANCODE_BACKSPACE, VK_BACK, 0x0E},
    {SDL_SCANCODE_TAB, VK_TAB, 0x0F},
    {SDL_SCANCODE_SPACE, VK_SPACE, 0x39},
    {SDL_SCANCODE_MINUS, VK_OEM_MINUS, 0x0C},
    {SDL_SCANCODE_EQUALS, VK_OEM_PLUS, 0x0D},
    {SDL_SCANCODE_LEFTBRACKET, VK_OEM_4, 0x1A},
    {SDL_SCANCODE_RIGHTBRACKET, VK_OEM_6, 0x1B},
    {SDL_SCANCODE_BACKSLASH, VK_OEM_5, 0x2B},
    {SDL_SCANCODE_NONUSHASH, VK_OEM_5, 0x2B},
    {SDL_SCANCODE_SEMICOLON, VK_OEM_1, 0x27},
    {SDL_SCANCODE_APOSTROPHE, VK_OEM_7, 0x28},
    {SDL_SCANCODE_GRAVE, VK_OEM_3, 0x29},
    {SDL_SCANCODE_COMMA, VK_OEM_COMMA, 0x33},
    {SDL_SCANCODE_PERIOD, VK_OEM_PERIOD, 0x34},
    {SDL_SCANCODE_SLASH, VK_OEM_2, 0x35},
    {SDL_SCANCODE_NONUSBACKSLASH, VK_OEM_102, 0x56},
    {SDL_SCANCODE_CAPSLOCK, VK_CAPITAL, 0x3A},
    {SDL_SCANCODE_F1, VK_F1, 0x3B},
    {SDL_SCANCODE_F2, VK_F2, 0x3C},
    {SDL_SCANCODE_F3, VK_F3, 0x3D},
    {SDL_SCANCODE_F4, VK_F4, 0x3E},
    {SDL_SCANCODE_F5, VK_F5, 0x3F},
    {SDL_SCANCODE_F6, VK_F6, 0x40},
    {SDL_SCANCODE_F7, VK_F7, 0x41},
    {SDL_SCANCODE_F8, VK_F8, 0x42},
    {SDL_SCANCODE_F9, VK_F9, 0x43},
    {SDL_SCANCODE_F10, VK_F10, 0x44},
    {SDL_SCANCODE_F11, VK_F11, 0x57},
    {SDL_SCANCODE_F12, VK_F12, 0x58},
    {SDL_SCANCODE_PRINTSCREEN, VK_SNAPSHOT, 0x137},
    {SDL_SCANCODE_SCROLLLOCK, VK_SCROLL, 0x46},
    {SDL_SCANCODE_PAUSE, VK_PAUSE, 0x45},
    {SDL_SCANCODE_INSERT, VK_INSERT, 0x152},
    {SDL_SCANCODE_HOME, VK_HOME, 0x147},
    {SDL_SCANCODE_PAGEUP, VK_PRIOR, 0x149},
    {SDL_SCANCODE_DELETE, VK_DELETE, 0x153},
    {SDL_SCANCODE_END, VK_END, 0x14F},
    {SDL_SCANCODE_PAGEDOWN, VK_NEXT, 0x151},
    {SDL_SCANCODE_RIGHT, VK_RIGHT, 0x14D},
    {SDL_SCANCODE_LEFT, VK_LEFT, 0x14B},
    {SDL_SCANCODE_DOWN, VK_DOWN, 0x150},
    {SDL_SCANCODE_UP, VK_UP, 0x148},
    {SDL_SCANCODE_NUMLOCKCLEAR, VK_NUMLOCK, 0x145},
    {SDL_SCANCODE_KP_DIVIDE, VK_DIVIDE, 0x135},
    {SDL_SCANCODE_KP_MULTIPLY, VK_MULTIPLY, 0x37},
    {SDL_SCANCODE_KP_MINUS, VK_SUBTRACT, 0x4A},
    {SDL_SCANCODE_KP_PLUS, VK_ADD, 0x4E},
    {SDL_SCANCODE_KP_ENTER, VK_RETURN, 0x11C},
    {SDL_SCANCODE_KP_1, VK_NUMPAD1, 0x4F},
    {SDL_SCANCODE_KP_2, VK_NUMPAD2, 0x50},
    {SDL_SCANCODE_KP_3, VK_NUMPAD3, 0x51},
    {SDL_SCANCODE_KP_4, VK_NUMPAD4, 0x4B},
    {SDL_SCANCODE_KP_5, VK_NUMPAD5, 0x4C},
    {SDL_SCANCODE_KP_6, VK_NUMPAD6, 0x4D},
    {SDL_SCANCODE_KP_7, VK_NUMPAD7, 0x47},
    {SDL_SCANCODE_KP_8, VK_NUMPAD8, 0x48},
    {SDL_SCANCODE_KP_9, VK_NUMPAD9, 0x49},
    {SDL_SCANCODE_KP_0, VK_NUMPAD0, 0x52},
    {SDL_SCANCODE_KP_PERIOD, VK_DECIMAL, 0x53},
    {SDL_SCANCODE_APPLICATION, VK_APPS, 0x15D},
    {SDL_SCANCODE_LCTRL, VK_LCONTROL, 0x1D},
    {SDL_SCANCODE_LSHIFT, VK_LSHIFT, 0x2A},
    {SDL_SCANCODE_LALT, VK_LMENU, 0x38},
    {SDL_SCANCODE_LGUI, VK_LWIN, 0x15B},
    {SDL_SCANCODE_RCTRL, VK_RCONTROL, 0x11D},
    {SDL_SCANCODE_RSHIFT, VK_RSHIFT, 0x36},
    {SDL_SCANCODE_RALT, VK_RMENU, 0x138},
    {SDL_SCANCODE_RGUI, VK_RWIN, 0x15C},
};

// A keypad without Num Lock moves.
struct Moving {
    int key;
    int moves;
};
constexpr Moving kMoving[] = {{VK_NUMPAD0, VK_INSERT}, {VK_NUMPAD1, VK_END},   {VK_NUMPAD2, VK_DOWN},  {VK_NUMPAD3, VK_NEXT},
                              {VK_NUMPAD4, VK_LEFT},   {VK_NUMPAD5, VK_CLEAR}, {VK_NUMPAD6, VK_RIGHT}, {VK_NUMPAD7, VK_HOME},
                              {VK_NUMPAD8, VK_UP},     {VK_NUMPAD9, VK_PRIOR}, {VK_DECIMAL, VK_DELETE}};

}  // namespace

DesktopKey KeyOf(const SDL_Keysym& symbol) noexcept {
    const Place* const place = std::ranges::find(kPlaces, symbol.scancode, &Place::place);
    DesktopKey key = place != std::end(kPlaces) ? DesktopKey{place->key, place->scan} : DesktopKey{};
    if (symbol.sym >= SDLK_a && symbol.sym <= SDLK_z) {
        key.key = 'A' + (symbol.sym - SDLK_a);
    }
    if ((symbol.mod & KMOD_NUM) == 0) {
        const Moving* const moving = std::ranges::find(kMoving, key.key, &Moving::key);
        key.key = moving != std::end(kMoving) ? moving->moves : key.key;
    }
    return key;
}

bool IsPrinting(int key) noexcept {
    return (key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z') || (key >= VK_OEM_1 && key <= VK_OEM_3) ||
           (key >= VK_OEM_4 && key <= VK_OEM_8) || key == VK_OEM_102;
}

}  // namespace kawin
