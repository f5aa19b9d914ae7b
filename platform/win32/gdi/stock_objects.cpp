#include "stock_objects.h"

#include <array>
#include <new>

#include "../base/error.h"
#include "bitmap_object.h"
#include "brush_object.h"
#include "font_object.h"

namespace kawin {
namespace {

constexpr int kMostIndex = DC_PEN;

HGDIOBJ AddStock(std::shared_ptr<GdiObject> object) {
    if (!object) {
        return nullptr;
    }
    object->MakeStock();
    return AddGdiObject(std::move(object));
}

HGDIOBJ AddStockBrush(UINT style, COLORREF color, bool of_context = false) {
    const auto brush = std::make_shared<BrushObject>(LOGBRUSH{style, color, 0});
    brush->of_context = of_context;
    return AddStock(brush);
}

HGDIOBJ AddStockPen(UINT style, COLORREF color, bool of_context = false) {
    const auto pen = std::make_shared<PenObject>(LOGPEN{style, {0, 0}, color});
    pen->of_context = of_context;
    return AddStock(pen);
}

HGDIOBJ MakeStock(int index) {
    switch (index) {
        case WHITE_BRUSH:
            return AddStockBrush(BS_SOLID, RGB(255, 255, 255));
        case LTGRAY_BRUSH:
            return AddStockBrush(BS_SOLID, RGB(192, 192, 192));
        case GRAY_BRUSH:
            return AddStockBrush(BS_SOLID, RGB(128, 128, 128));
        case DKGRAY_BRUSH:
            return AddStockBrush(BS_SOLID, RGB(64, 64, 64));
        case BLACK_BRUSH:
            return AddStockBrush(BS_SOLID, RGB(0, 0, 0));
        case NULL_BRUSH:
            return AddStockBrush(BS_NULL, 0);
        case DC_BRUSH:
            return AddStockBrush(BS_SOLID, RGB(255, 255, 255), true);
        case WHITE_PEN:
            return AddStockPen(PS_SOLID, RGB(255, 255, 255));
        case BLACK_PEN:
            return AddStockPen(PS_SOLID, RGB(0, 0, 0));
        case NULL_PEN:
            return AddStockPen(PS_NULL, 0);
        case DC_PEN:
            return AddStockPen(PS_SOLID, RGB(0, 0, 0), true);
        default:
            return AddStock(MakeStockFont(index));
    }
}

// Made when they are first asked for, and never deleted.
struct Stock {
    std::array<HGDIOBJ, kMostIndex + 1> objects = {};
    HGDIOBJ bitmap = nullptr;
};

const Stock& TheStock() {
    static const Stock* const stock = [] {
        auto made = std::make_unique<Stock>();
        for (int index = 0; index <= kMostIndex; ++index) {
            made->objects[static_cast<std::size_t>(index)] = MakeStock(index);
        }
        if (auto pixel = Surface::Make(1, 1, true)) {
            made->bitmap = AddStock(std::make_shared<BitmapObject>(std::move(pixel)));
        }
        return made.release();
    }();
    return *stock;
}

}  // namespace

HBITMAP StockBitmap() noexcept try { return static_cast<HBITMAP>(TheStock().bitmap); } catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

}  // namespace kawin

HGDIOBJ GetStockObject(int index) noexcept try {
    if (index < 0 || index > kawin::kMostIndex) {
        return nullptr;
    }
    return kawin::TheStock().objects[static_cast<std::size_t>(index)];
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}
