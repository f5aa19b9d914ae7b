#include "key_text.h"

#include "virtual_keys.h"

namespace kawin {
namespace {

struct Printed {
    int key;
    char16_t plain;
    char16_t shifted;
};

constexpr Printed kPrinted[] = {
    {'0', '0', ')'},          {'1', '1', '!'},          {'2', '2', '@'},           {'3', '3', '#'},
    {'4', '4', '$'},          {'5', '5', '%'},          {'6', '6', '^'},           {'7', '7', '&'},
    {'8', '8', '*'},          {'9', '9', '('},          {VK_OEM_1, ';', ':'},      {VK_OEM_PLUS, '=', '+'},
    {VK_OEM_COMMA, ',', '<'}, {VK_OEM_MINUS, '-', '_'}, {VK_OEM_PERIOD, '.', '>'}, {VK_OEM_2, '/', '?'},
    {VK_OEM_3, '`', '~'},     {VK_OEM_4, '[', '{'},     {VK_OEM_5, '\\', '|'},     {VK_OEM_6, ']', '}'},
    {VK_OEM_7, '\'', '"'},    {VK_OEM_102, '\\', '|'},  {VK_SPACE, ' ', ' '},      {VK_RETURN, '\r', '\r'},
    {VK_TAB, '\t', '\t'},     {VK_BACK, '\b', '\b'},    {VK_ESCAPE, 0x1B, 0x1B},   {VK_MULTIPLY, '*', '*'},
    {VK_ADD, '+', '+'},       {VK_SUBTRACT, '-', '-'},  {VK_DECIMAL, '.', '.'},    {VK_DIVIDE, '/', '/'},
};

bool IsDown(const std::array<BYTE, 256>& keys, int key) noexcept {
    return (keys[static_cast<std::size_t>(key)] & 0x80) != 0;
}

char16_t Letter(int key, const std::array<BYTE, 256>& keys) noexcept {
    const bool capitals = (keys[VK_CAPITAL] & 1) != 0;
    const bool upper = IsDown(keys, VK_SHIFT) != capitals;
    return static_cast<char16_t>(upper ? key : key + ('a' - 'A'));
}

// Control and a letter make the control characters.
std::u16string Controlled(int key) {
    if (key >= 'A' && key <= 'Z') {
        return std::u16string(1, static_cast<char16_t>(key - 'A' + 1));
    }
    constexpr char16_t kLineFeed = '\n';
    return key == VK_RETURN ? std::u16string(1, kLineFeed) : std::u16string();
}

}  // namespace

std::u16string TextOfKey(int key, const std::array<BYTE, 256>& keys) {
    const bool alt = IsDown(keys, VK_MENU);
    if (IsDown(keys, VK_CONTROL)) {
        return alt ? std::u16string() : Controlled(key);
    }
    if (key >= 'A' && key <= 'Z') {
        return std::u16string(1, Letter(key, keys));
    }
    if (key >= VK_NUMPAD0 && key <= VK_NUMPAD9) {
        return std::u16string(1, static_cast<char16_t>('0' + (key - VK_NUMPAD0)));
    }
    for (const Printed& each : kPrinted) {
        if (each.key == key) {
            return std::u16string(1, IsDown(keys, VK_SHIFT) ? each.shifted : each.plain);
        }
    }
    return {};
}

}  // namespace kawin
