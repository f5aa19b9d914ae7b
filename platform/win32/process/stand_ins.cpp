#include "stand_ins.h"

#include <algorithm>
#include <iterator>

#include "../text/case_fold.h"

namespace kawin {
namespace {

constexpr std::size_t kCommandLength = 15;  // of the kernel's names of commands

// The first is the program's own name here, so that a machine can have a say with a program or link of that name. The others are
// those that need nothing of the desktop first, then those for one kind of display.
constexpr std::string_view kKeyboards[] = {"osk",   "onboard",       "florence",    "kvkbd",          "matchbox-keyboard",
                                           "xvkbd", "wvkbd-mobintl", "squeekboard", "maliit-keyboard"};
constexpr std::u16string_view kKeyboard = u"osk.exe";

}  // namespace

std::span<const std::string_view> StandInsFor(std::u16string_view program) noexcept {
    return CompareFolded(program, kKeyboard) == 0 ? std::span(kKeyboards) : std::span<const std::string_view>();
}

std::u16string_view ReplacedProgram(std::string_view name) noexcept {
    const bool is_keyboard = std::any_of(std::begin(kKeyboards), std::end(kKeyboards), [name](std::string_view keyboard) {
        return name == keyboard || (name.size() == kCommandLength && name == keyboard.substr(0, kCommandLength));
    });
    return is_keyboard ? kKeyboard : std::u16string_view();
}

}  // namespace kawin
