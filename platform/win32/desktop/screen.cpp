#include "screen.h"

#include <charconv>
#include <new>
#include <optional>
#include <string>

#include "../process/native_environment.h"
#include "display_probe.h"

namespace kawin {
namespace {

constexpr RECT kOffScreen{0, 0, 1920, 1080};
constexpr int kLongestSide = 32767;
constexpr const char* kWantedSize = "KADATA_SCREEN";

// A side of the screen at `at`, which moves behind it; 0 for none that is possible.
int ParseSide(const char*& at, const char* end) {
    int side = 0;
    const auto [next, error] = std::from_chars(at, end, side);
    at = next;
    return error == std::errc() && side >= 1 && side <= kLongestSide ? side : 0;
}

std::optional<RECT> ParseSize(const std::string& text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    const int width = ParseSide(at, end);
    if (width == 0 || at == end || *at != 'x') {
        return {};
    }
    const int height = ParseSide(++at, end);
    return height != 0 && at == end ? std::optional(RECT{0, 0, width, height}) : std::nullopt;
}

bool IsNamed(const char* variable) {
    const std::optional<std::string> value = NativeVariable(variable);
    return value && !value->empty();
}

}  // namespace

bool WantsDisplay() noexcept try {
    return !NativeVariable(kWantedSize) && (IsNamed("DISPLAY") || IsNamed("WAYLAND_DISPLAY"));
} catch (const std::bad_alloc&) {
    return false;
}

std::vector<Monitor> CurrentMonitors() {
    if (WantsDisplay()) {
        std::vector<Monitor> shown = DisplayMonitors();
        if (!shown.empty()) {
            return shown;
        }
    }
    const std::optional<std::string> wanted = NativeVariable(kWantedSize);
    const RECT size = (wanted ? ParseSize(*wanted) : std::nullopt).value_or(kOffScreen);
    return {{size, size}};
}

}  // namespace kawin
