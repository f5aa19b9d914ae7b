#include "../desktop/metrics.h"
#include "contexts.h"
#include "drawing_context.h"

namespace {

constexpr int kDotsPerInch = 96;
constexpr int kDepth = 32;

// Tenths of a millimetre in an inch.
constexpr int kInch = 254;

int Millimetres(int pixels) noexcept {
    return (pixels * kInch + kDotsPerInch * 5) / (kDotsPerInch * 10);
}

}  // namespace

int GetDeviceCaps(HDC context, int index) noexcept {
    if (!kawin::FindContext(context)) {
        return 0;
    }
    constexpr int kUnlimited = -1;
    switch (index) {
        case DRIVERVERSION:
            return 0x4000;
        case TECHNOLOGY:
            return DT_RASDISPLAY;
        case HORZSIZE:
            return Millimetres(GetSystemMetrics(SM_CXSCREEN));
        case VERTSIZE:
            return Millimetres(GetSystemMetrics(SM_CYSCREEN));
        case HORZRES:
        case DESKTOPHORZRES:
            return GetSystemMetrics(SM_CXSCREEN);
        case VERTRES:
        case DESKTOPVERTRES:
            return GetSystemMetrics(SM_CYSCREEN);
        case BITSPIXEL:
            return kDepth;
        case PLANES:
            return 1;
        case NUMBRUSHES:
        case NUMPENS:
        case NUMCOLORS:
            return kUnlimited;
        case RASTERCAPS:
            return RC_BITBLT | RC_BITMAP64 | RC_DI_BITMAP | RC_DIBTODEV | RC_STRETCHBLT | RC_STRETCHDIB;
        case SHADEBLENDCAPS:
            return SB_CONST_ALPHA | SB_PIXEL_ALPHA | SB_PREMULT_ALPHA | SB_GRAD_RECT;
        case ASPECTX:
        case ASPECTY:
            return 36;
        case ASPECTXY:  // the diagonal of the two
            return 51;
        case LOGPIXELSX:
        case LOGPIXELSY:
            return kDotsPerInch;
        default:
            return 0;
    }
}
