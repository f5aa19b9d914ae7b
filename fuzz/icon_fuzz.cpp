// Icons, cursors and their directories as resources, PNG files among them.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "win32/desktop/icon_image.h"

namespace {

// What was read has as many pixels and mask bits as its size says, before and after it is scaled.
void Check(const kawin::IconRef& icon) {
    if (icon == nullptr) {
        return;
    }
    const kawin::IconRef scaled = kawin::Scaled(icon, 16, 24);
    for (const kawin::IconRef& each : {icon, scaled}) {
        if (each == nullptr || each->width < 1 || each->height < 1 || each->color.size() != each->Count() ||
            each->mask.size() != each->Count()) {
            std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span bytes(reinterpret_cast<const std::byte*>(data), size);
    Check(kawin::ReadIcon(bytes, true));
    Check(kawin::ReadIcon(bytes, false));
    if (kawin::ChooseIcon(bytes, true, 32, 32) != 0 && size < 20) {  // no room for an entry
        std::abort();
    }
    return 0;
}
