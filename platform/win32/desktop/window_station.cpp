#include "window_station.h"

#include <cstring>
#include <new>
#include <string_view>

#include "../base/error_map.h"
#include "display_probe.h"
#include "screen.h"

namespace {

const HWINSTA kStation = reinterpret_cast<HWINSTA>(ULONG_PTR{0x24});

bool IsVisible() noexcept try {
    return kawin::WantsDisplay() && !kawin::DisplayMonitors().empty();
} catch (const std::bad_alloc&) {
    return false;
}

BOOL Give(const void* from, std::size_t size, void* information, DWORD length, DWORD* needed) noexcept {
    if (needed != nullptr) {
        *needed = static_cast<DWORD>(size);
    }
    if (length < size) {
        return kawin::Fail(ERROR_INSUFFICIENT_BUFFER);
    }
    if (information == nullptr) {
        return kawin::Fail(ERROR_NOACCESS);
    }
    std::memcpy(information, from, size);
    return TRUE;
}

BOOL GiveText(std::u16string_view text, void* information, DWORD length, DWORD* needed) noexcept {
    return Give(text.data(), (text.size() + 1) * sizeof(WCHAR), information, length, needed);
}

}  // namespace

HWINSTA GetProcessWindowStation() noexcept {
    return kStation;
}

BOOL GetUserObjectInformationW(HANDLE object, int index, void* information, DWORD length, DWORD* needed) noexcept {
    if (object != kStation) {
        return kawin::Fail(ERROR_INVALID_HANDLE);
    }
    switch (index) {
        case UOI_FLAGS: {
            const USEROBJECTFLAGS flags = {TRUE, FALSE, IsVisible() ? WSF_VISIBLE : 0};
            return Give(&flags, sizeof flags, information, length, needed);
        }
        case UOI_NAME:
            return GiveText(u"WinSta0", information, length, needed);
        case UOI_TYPE:
            return GiveText(u"WindowStation", information, length, needed);
        default:
            return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
}
