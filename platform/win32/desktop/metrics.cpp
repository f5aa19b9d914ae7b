#include "metrics.h"

#include <charconv>
#include <new>
#include <optional>
#include <string>

#include "../process/native_environment.h"

namespace kawin {
namespace {

struct ScreenSize {
    int width;
    int height;
};

constexpr ScreenSize kOffScreen{1920, 1080};
constexpr int kLongestSide = 32767;

// A side of the screen at `at`, which moves behind it; 0 for none that is possible.
int ParseSide(const char*& at, const char* end) {
    int side = 0;
    const auto [next, error] = std::from_chars(at, end, side);
    at = next;
    return error == std::errc() && side >= 1 && side <= kLongestSide ? side : 0;
}

std::optional<ScreenSize> ParseSize(const std::string& text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    const int width = ParseSide(at, end);
    if (width == 0 || at == end || *at != 'x') {
        return {};
    }
    const int height = ParseSide(++at, end);
    return height != 0 && at == end ? std::optional(ScreenSize{width, height}) : std::nullopt;
}

ScreenSize CurrentSize() {
    const std::optional<std::string> wanted = NativeVariable("KADATA_SCREEN");
    return (wanted ? ParseSize(*wanted) : std::nullopt).value_or(kOffScreen);
}

}  // namespace
}  // namespace kawin

int GetSystemMetrics(int index) noexcept {
    if (index != SM_CXSCREEN && index != SM_CYSCREEN) {
        return 0;
    }
    kawin::ScreenSize size = kawin::kOffScreen;
    try {
        size = kawin::CurrentSize();
    } catch (const std::bad_alloc&) {  // the usual size will do
    }
    return index == SM_CXSCREEN ? size.width : size.height;
}
