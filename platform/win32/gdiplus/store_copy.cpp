#include "store_copy.h"

#include <new>
#include <vector>

namespace kawin {

std::shared_ptr<PixelStore> CopyPart(const PixelStore& store, const RECT& part, Gdiplus::PixelFormat format) noexcept try {
    auto copy = PixelStore::Make(part.right - part.left, part.bottom - part.top, format);
    std::vector<Argb> row(static_cast<std::size_t>(part.right - part.left));
    for (int y = 0; copy && y < copy->Height(); ++y) {
        store.Read(part.left, part.top + y, copy->Width(), row.data());
        copy->Write(0, y, copy->Width(), row.data());
    }
    return copy;
} catch (const std::bad_alloc&) {
    return nullptr;
}

std::shared_ptr<PixelStore> CopyWhole(const PixelStore& store) noexcept {
    return CopyPart(store, {0, 0, store.Width(), store.Height()}, store.Format());
}

}  // namespace kawin
