#include "system_parameters.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "metrics.h"
#include "screen.h"

namespace kawin {
namespace {

struct Number {
    UINT action;
    UINT value;
};

constexpr Number kNumbers[] = {
    {SPI_GETBEEP, TRUE},
    {SPI_GETBORDER, 1},
    {SPI_GETKEYBOARDSPEED, 31},
    {SPI_GETKEYBOARDDELAY, 1},
    {SPI_GETICONTITLEWRAP, TRUE},
    {SPI_GETMENUDROPALIGNMENT, FALSE},
    {SPI_GETDRAGFULLWINDOWS, TRUE},
    {SPI_GETKEYBOARDPREF, FALSE},
    {SPI_GETSCREENREADER, FALSE},
    {SPI_GETFONTSMOOTHING, TRUE},
    {SPI_GETSNAPTODEFBUTTON, FALSE},
    {SPI_GETMOUSEHOVERWIDTH, 4},
    {SPI_GETMOUSEHOVERHEIGHT, 4},
    {SPI_GETMOUSEHOVERTIME, 400},
    {SPI_GETWHEELSCROLLLINES, 3},
    {SPI_GETMENUSHOWDELAY, 400},
    {SPI_GETWHEELSCROLLCHARS, 3},
    {SPI_GETMENUANIMATION, FALSE},
    {SPI_GETKEYBOARDCUES, FALSE},
    {SPI_GETFLATMENU, TRUE},
    {SPI_GETDROPSHADOW, FALSE},
    {SPI_GETUIEFFECTS, FALSE},
    {SPI_GETCLIENTAREAANIMATION, FALSE},
    {SPI_GETCARETWIDTH, 1},
    {SPI_GETFONTSMOOTHINGTYPE, FE_FONTSMOOTHINGSTANDARD},
    {SPI_GETFOCUSBORDERWIDTH, 1},
    {SPI_GETFOCUSBORDERHEIGHT, 1},
};

// The desktop's one font, 9 points.
LOGFONTW InterfaceFont() noexcept {
    constexpr std::u16string_view face = u"Segoe UI";
    LOGFONTW font = {};
    font.lfHeight = -12;
    font.lfWeight = 400;
    font.lfCharSet = 1;  // DEFAULT_CHARSET
    std::ranges::copy(face, font.lfFaceName);
    return font;
}

BOOL TellNonClientMetrics(NONCLIENTMETRICSW& metrics) noexcept {
    const UINT size = metrics.cbSize;
    const bool has_padding = size == sizeof(NONCLIENTMETRICSW);
    if (!has_padding && size != offsetof(NONCLIENTMETRICSW, iPaddedBorderWidth)) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    const LOGFONTW font = InterfaceFont();
    metrics.iBorderWidth = GetSystemMetrics(SM_CXBORDER);
    metrics.iScrollWidth = GetSystemMetrics(SM_CXVSCROLL);
    metrics.iScrollHeight = GetSystemMetrics(SM_CYHSCROLL);
    metrics.iCaptionWidth = GetSystemMetrics(SM_CXSIZE);
    metrics.iCaptionHeight = GetSystemMetrics(SM_CYSIZE);
    metrics.iSmCaptionWidth = GetSystemMetrics(SM_CXSMSIZE);
    metrics.iSmCaptionHeight = GetSystemMetrics(SM_CYSMSIZE);
    metrics.iMenuWidth = GetSystemMetrics(SM_CXMENUSIZE);
    metrics.iMenuHeight = GetSystemMetrics(SM_CYMENUSIZE);
    for (LOGFONTW NONCLIENTMETRICSW::*each :
         {&NONCLIENTMETRICSW::lfCaptionFont, &NONCLIENTMETRICSW::lfSmCaptionFont, &NONCLIENTMETRICSW::lfMenuFont,
          &NONCLIENTMETRICSW::lfStatusFont, &NONCLIENTMETRICSW::lfMessageFont}) {
        metrics.*each = font;
    }
    if (has_padding) {
        metrics.iPaddedBorderWidth = GetSystemMetrics(SM_CXPADDEDBORDER);
    }
    return TRUE;
}

BOOL TellIconMetrics(ICONMETRICSW& metrics) noexcept {
    if (metrics.cbSize != sizeof(ICONMETRICSW)) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    metrics.iHorzSpacing = GetSystemMetrics(SM_CXICONSPACING);
    metrics.iVertSpacing = GetSystemMetrics(SM_CYICONSPACING);
    metrics.iTitleWrap = TRUE;
    metrics.lfFont = InterfaceFont();
    return TRUE;
}

BOOL TellNumber(UINT action, LPVOID target) noexcept {
    const Number* const number = std::ranges::find(kNumbers, action, &Number::action);
    if (number == std::end(kNumbers)) {
        return Fail(ERROR_INVALID_SPI_VALUE);
    }
    *static_cast<UINT*>(target) = number->value;
    return TRUE;
}

BOOL Tell(UINT action, UINT size, LPVOID target) {
    switch (action) {
        case SPI_GETWORKAREA:
            *static_cast<RECT*>(target) = CurrentMonitors().front().work;
            return TRUE;
        case SPI_GETICONTITLELOGFONT:
            if (size < sizeof(LOGFONTW)) {
                return Fail(ERROR_INVALID_PARAMETER);
            }
            *static_cast<LOGFONTW*>(target) = InterfaceFont();
            return TRUE;
        case SPI_GETNONCLIENTMETRICS:
            return TellNonClientMetrics(*static_cast<NONCLIENTMETRICSW*>(target));
        case SPI_GETICONMETRICS:
            return TellIconMetrics(*static_cast<ICONMETRICSW*>(target));
        default:
            return TellNumber(action, target);
    }
}

}  // namespace
}  // namespace kawin

BOOL SystemParametersInfoW(UINT action, UINT size, LPVOID target, UINT /*changes*/) noexcept {
    if (target == nullptr) {
        return kawin::Fail(ERROR_NOACCESS);
    }
    return kawin::NoThrow([&] { return kawin::Tell(action, size, target); });
}
