#include "colors.h"

#include <array>
#include <mutex>

#include "../gdi/brushes.h"
#include "../gdi/gdi_objects.h"

namespace {

constexpr int kUnused = 25;

constexpr std::array<COLORREF, COLOR_MENUBAR + 1> kColors = {
    RGB(200, 200, 200),  // COLOR_SCROLLBAR
    RGB(0, 0, 0),        // COLOR_BACKGROUND
    RGB(153, 180, 209),  // COLOR_ACTIVECAPTION
    RGB(191, 205, 219),  // COLOR_INACTIVECAPTION
    RGB(240, 240, 240),  // COLOR_MENU
    RGB(255, 255, 255),  // COLOR_WINDOW
    RGB(100, 100, 100),  // COLOR_WINDOWFRAME
    RGB(0, 0, 0),        // COLOR_MENUTEXT
    RGB(0, 0, 0),        // COLOR_WINDOWTEXT
    RGB(0, 0, 0),        // COLOR_CAPTIONTEXT
    RGB(180, 180, 180),  // COLOR_ACTIVEBORDER
    RGB(244, 247, 252),  // COLOR_INACTIVEBORDER
    RGB(171, 171, 171),  // COLOR_APPWORKSPACE
    RGB(0, 120, 215),    // COLOR_HIGHLIGHT
    RGB(255, 255, 255),  // COLOR_HIGHLIGHTTEXT
    RGB(240, 240, 240),  // COLOR_BTNFACE
    RGB(160, 160, 160),  // COLOR_BTNSHADOW
    RGB(109, 109, 109),  // COLOR_GRAYTEXT
    RGB(0, 0, 0),        // COLOR_BTNTEXT
    RGB(0, 0, 0),        // COLOR_INACTIVECAPTIONTEXT
    RGB(255, 255, 255),  // COLOR_BTNHIGHLIGHT
    RGB(105, 105, 105),  // COLOR_3DDKSHADOW
    RGB(227, 227, 227),  // COLOR_3DLIGHT
    RGB(0, 0, 0),        // COLOR_INFOTEXT
    RGB(255, 255, 225),  // COLOR_INFOBK
    RGB(0, 0, 0),        // not used
    RGB(0, 102, 204),    // COLOR_HOTLIGHT
    RGB(185, 209, 234),  // COLOR_GRADIENTACTIVECAPTION
    RGB(215, 228, 242),  // COLOR_GRADIENTINACTIVECAPTION
    RGB(0, 120, 215),    // COLOR_MENUHILIGHT
    RGB(240, 240, 240),  // COLOR_MENUBAR
};

bool IsColor(int index) noexcept {
    return index >= 0 && index < static_cast<int>(kColors.size()) && index != kUnused;
}

struct Brushes {
    std::mutex mutex;
    std::array<HBRUSH, kColors.size()> made = {};  // guarded by mutex
};

// Never destroyed: windows may be painted while the process ends.
Brushes& TheBrushes() {
    static Brushes* const brushes = new Brushes;
    return *brushes;
}

}  // namespace

DWORD GetSysColor(int index) noexcept {
    return IsColor(index) ? kColors[static_cast<std::size_t>(index)] : RGB(0, 0, 0);
}

HBRUSH GetSysColorBrush(int index) noexcept {
    if (!IsColor(index)) {
        return nullptr;
    }
    Brushes& brushes = TheBrushes();
    const std::lock_guard lock(brushes.mutex);
    HBRUSH& brush = brushes.made[static_cast<std::size_t>(index)];
    if (brush == nullptr) {
        brush = CreateSolidBrush(GetSysColor(index));
        if (const std::shared_ptr<kawin::GdiObject> object = kawin::FindGdiObject(brush)) {
            object->MakeStock();
        }
    }
    return brush;
}
