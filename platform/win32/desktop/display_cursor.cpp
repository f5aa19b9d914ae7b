// The pointer's picture on a display.

#include "cursors.h"
#include "display_sdl.h"
#include "icon_image.h"

namespace kawin {
namespace {

constexpr std::size_t kMostCursors = 64;

struct SystemCursor {
    WORD number;
    SDL_SystemCursor cursor;
};

constexpr SystemCursor kSystemCursors[] = {
    {32512, SDL_SYSTEM_CURSOR_ARROW},     {32513, SDL_SYSTEM_CURSOR_IBEAM},    {32514, SDL_SYSTEM_CURSOR_WAIT},
    {32515, SDL_SYSTEM_CURSOR_CROSSHAIR}, {32642, SDL_SYSTEM_CURSOR_SIZENWSE}, {32643, SDL_SYSTEM_CURSOR_SIZENESW},
    {32644, SDL_SYSTEM_CURSOR_SIZEWE},    {32645, SDL_SYSTEM_CURSOR_SIZENS},   {32646, SDL_SYSTEM_CURSOR_SIZEALL},
    {32648, SDL_SYSTEM_CURSOR_NO},        {32649, SDL_SYSTEM_CURSOR_HAND},     {32650, SDL_SYSTEM_CURSOR_WAITARROW},
};

SDL_Cursor* MakeCursor(const Sdl& sdl, const IconImage& image) {
    for (const auto& [number, cursor] : kSystemCursors) {
        if (number == image.system_shape) {
            return sdl.CreateSystemCursor(cursor);
        }
    }
    std::vector<Pixel> pixels = image.color;
    if (!image.has_alpha) {
        for (std::size_t index = 0; index < pixels.size(); ++index) {
            pixels[index] = image.mask[index] != 0 ? 0 : pixels[index] | 0xFF000000;
        }
    }
    SDL_Surface* const surface = sdl.CreateRGBSurfaceWithFormatFrom(
        pixels.data(), image.width, image.height, 32, image.width * static_cast<int>(sizeof(Pixel)), SDL_PIXELFORMAT_ARGB8888);
    if (surface == nullptr) {
        return nullptr;
    }
    SDL_Cursor* const cursor = sdl.CreateColorCursor(surface, image.hot_spot.x, image.hot_spot.y);
    sdl.FreeSurface(surface);
    return cursor;
}

}  // namespace

SDL_Cursor* SdlDisplay::CursorFor(HCURSOR cursor) {
    const auto known = cursors_.find(cursor);
    if (known != cursors_.end()) {
        return known->second;
    }
    const IconRef image = FindIcon(cursor);
    SDL_Cursor* const made = image != nullptr ? MakeCursor(sdl_, *image) : nullptr;
    if (made != nullptr) {
        cursors_[cursor] = made;
    }
    return made;
}

void SdlDisplay::FollowCursor() {
    const HCURSOR wanted = ShownCursor();
    if (cursor_known_ && wanted == cursor_) {
        return;
    }
    // Deliberate: before anybody has set one the pointer is the display's own.
    if (!cursor_known_ && wanted == nullptr) {
        return;
    }
    cursor_known_ = true;
    cursor_ = wanted;
    if (SDL_Cursor* const cursor = wanted != nullptr ? CursorFor(wanted) : nullptr) {
        sdl_.SetCursor(cursor);
    }
    sdl_.ShowCursor(wanted != nullptr ? SDL_ENABLE : SDL_DISABLE);
    if (cursors_.size() > kMostCursors) {
        std::erase_if(cursors_, [this](const auto& each) {
            if (each.first == cursor_) {
                return false;
            }
            sdl_.FreeCursor(each.second);
            return true;
        });
    }
}

}  // namespace kawin
