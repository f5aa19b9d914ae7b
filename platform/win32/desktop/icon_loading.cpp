// Icons and cursors of modules, and those of the system.

#include <cstring>
#include <mutex>

#include "../base/error.h"
#include "../gdi/bitmap_loading.h"
#include "../resources/resources.h"
#include "../text/no_throw.h"
#include "icon_image.h"
#include "metrics.h"

namespace kawin {
namespace {

using Bytes = std::span<const std::byte>;

constexpr UINT kKnownFlags = LR_MONOCHROME | LR_LOADTRANSPARENT | LR_DEFAULTSIZE | LR_CREATEDIBSECTION | LR_SHARED | LR_COLOR |
                             LR_VGACOLOR | LR_LOADMAP3DCOLORS;

struct Request {
    HINSTANCE module = nullptr;
    LPCWSTR name = nullptr;
    bool is_icon = true;
    int width = 0;  // 0: its own
    int height = 0;
};

int SystemSize(bool is_icon) noexcept {
    return GetSystemMetrics(is_icon ? SM_CXICON : SM_CXCURSOR);
}

// Null with the last error set.
Bytes ResourceBytes(HINSTANCE module, LPCWSTR name, LPCWSTR type) {
    const HRSRC found = FindResourceW(module, name, type);
    if (found == nullptr) {
        return {};
    }
    const void* const data = LockResource(LoadResource(module, found));
    return {static_cast<const std::byte*>(data), SizeofResource(module, found)};
}

template <class Result>
Result Damaged() noexcept {
    SetLastError(ERROR_INVALID_DATA);
    return {};
}

// The picture of a group that fits best; empty with the last error set.
Bytes PictureBytes(const Request& request) {
    const Bytes directory = ResourceBytes(request.module, request.name, request.is_icon ? RT_GROUP_ICON : RT_GROUP_CURSOR);
    if (directory.empty()) {
        return {};
    }
    const int usual = SystemSize(request.is_icon);
    const WORD number = ChooseIcon(directory, request.is_icon, request.width != 0 ? request.width : usual,
                                   request.height != 0 ? request.height : usual);
    if (number == 0) {
        return Damaged<Bytes>();
    }
    return ResourceBytes(request.module, MAKEINTRESOURCEW(number), request.is_icon ? RT_ICON : RT_CURSOR);
}

IconRef ReadSized(Bytes bytes, bool is_icon, int width, int height) {
    const IconRef image = ReadIcon(bytes, is_icon);
    if (image == nullptr) {
        return Damaged<IconRef>();
    }
    return Scaled(image, width != 0 ? width : image->width, height != 0 ? height : image->height);
}

IconRef SystemImage(const Request& request) {
    const WORD number = IS_INTRESOURCE(request.name) ? static_cast<WORD>(reinterpret_cast<ULONG_PTR>(request.name)) : 0;
    const int side = request.width != 0 ? request.width : SystemSize(request.is_icon);
    const IconRef image = request.is_icon ? DrawSystemIcon(number, side) : DrawSystemCursor(number);
    if (image == nullptr) {
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return nullptr;
    }
    return request.height != 0 ? Scaled(image, side, request.height) : image;
}

// The shared ones. A module's are known by their bytes too: another module may have come to the same place in memory.
struct SharedIcon {
    HINSTANCE module;
    bool is_icon;
    int width;
    int height;
    WORD number;  // of the system's own
    std::vector<std::byte> bytes;
    HICON handle;
};

struct SharedIcons {
    std::mutex mutex;
    std::vector<SharedIcon> all;  // guarded by mutex
};

// Never destroyed: they stay until the process ends.
SharedIcons& TheSharedIcons() {
    static SharedIcons* const icons = new SharedIcons;
    return *icons;
}

HICON FindShared(const SharedIcons& icons, const Request& request, WORD number, Bytes bytes) noexcept {
    for (const SharedIcon& each : icons.all) {
        if (each.module == request.module && each.is_icon == request.is_icon && each.width == request.width &&
            each.height == request.height && each.number == number && each.bytes.size() == bytes.size() &&
            (bytes.empty() || std::memcmp(each.bytes.data(), bytes.data(), bytes.size()) == 0)) {
            return each.handle;
        }
    }
    return nullptr;
}

HICON LoadShared(const Request& request) {
    const bool of_system = request.module == nullptr && IS_INTRESOURCE(request.name);
    const WORD number = of_system ? static_cast<WORD>(reinterpret_cast<ULONG_PTR>(request.name)) : WORD{0};
    const Bytes bytes = of_system ? Bytes() : PictureBytes(request);
    if (!of_system && bytes.empty()) {
        return nullptr;
    }
    SharedIcons& icons = TheSharedIcons();
    const std::lock_guard lock(icons.mutex);
    if (const HICON known = FindShared(icons, request, number, bytes)) {
        return known;
    }
    const IconRef image = of_system ? SystemImage(request) : ReadSized(bytes, request.is_icon, request.width, request.height);
    if (image == nullptr) {
        return nullptr;
    }
    icons.all.push_back(
        {request.module, request.is_icon, request.width, request.height, number, {bytes.begin(), bytes.end()}, nullptr});
    icons.all.back().handle = AddIcon(image, true);
    return icons.all.back().handle;
}

HICON LoadOwn(const Request& request) {
    if (request.module == nullptr && IS_INTRESOURCE(request.name)) {
        return AddIcon(SystemImage(request));
    }
    const Bytes bytes = PictureBytes(request);
    return bytes.empty() ? nullptr : AddIcon(ReadSized(bytes, request.is_icon, request.width, request.height));
}

HANDLE LoadIconImage(Request request, UINT flags) {
    if (request.width < 0 || request.height < 0 || (flags & ~kKnownFlags) != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    if ((flags & LR_DEFAULTSIZE) != 0) {
        const int usual = SystemSize(request.is_icon);
        request.width = request.width != 0 ? request.width : usual;
        request.height = request.height != 0 ? request.height : usual;
    }
    return (flags & LR_SHARED) != 0 ? LoadShared(request) : LoadOwn(request);
}

}  // namespace
}  // namespace kawin

using kawin::NoThrow;

HICON LoadIconW(HINSTANCE module, LPCWSTR name) noexcept {
    const int side = GetSystemMetrics(SM_CXICON);
    return NoThrow([&] { return kawin::LoadShared({module, name, true, side, side}); });
}

HCURSOR LoadCursorW(HINSTANCE module, LPCWSTR name) noexcept {
    const int side = GetSystemMetrics(SM_CXCURSOR);
    return NoThrow([&] { return kawin::LoadShared({module, name, false, side, side}); });
}

HANDLE LoadImageW(HINSTANCE module, LPCWSTR name, UINT kind, int width, int height, UINT flags) noexcept {
    if (kind == IMAGE_BITMAP) {
        return kawin::LoadBitmapImage(module, name, width, height, flags);
    }
    return NoThrow([&]() -> HANDLE {
        if (kind != IMAGE_ICON && kind != IMAGE_CURSOR) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return nullptr;
        }
        return kawin::LoadIconImage({module, name, kind == IMAGE_ICON, width, height}, flags);
    });
}

int LookupIconIdFromDirectoryEx(BYTE* directory, BOOL icon, int width, int height, UINT flags) noexcept {
    if (directory == nullptr) {
        return 0;
    }
    // The caller vouches for the entries that the header counts.
    constexpr std::size_t header = 6;
    constexpr std::size_t entry = 14;
    const std::size_t count = MAKEWORD(directory[4], directory[5]);
    const int usual = kawin::SystemSize(icon != FALSE);
    static_cast<void>(flags);
    return kawin::ChooseIcon(std::as_bytes(std::span(directory, header + count * entry)), icon != FALSE,
                             width != 0 ? width : usual, height != 0 ? height : usual);
}

int LookupIconIdFromDirectory(BYTE* directory, BOOL icon) noexcept {
    return LookupIconIdFromDirectoryEx(directory, icon, 0, 0, LR_DEFAULTCOLOR);
}

HICON CreateIconFromResourceEx(BYTE* bits, DWORD size, BOOL icon, DWORD version, int width, int height, UINT flags) noexcept {
    constexpr DWORD versions[] = {0x00020000, 0x00030000};
    return NoThrow([&]() -> HICON {
        if (bits == nullptr || (version != versions[0] && version != versions[1]) || width < 0 || height < 0) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return nullptr;
        }
        const int usual = (flags & LR_DEFAULTSIZE) != 0 ? kawin::SystemSize(icon != FALSE) : 0;
        return kawin::AddIcon(kawin::ReadSized(std::as_bytes(std::span(bits, size)), icon != FALSE, width != 0 ? width : usual,
                                               height != 0 ? height : usual));
    });
}
