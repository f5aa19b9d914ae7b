#pragma once

// The part of GDI+ that the library and its hosts use, for Linux. This header only gathers the room's headers.

#include <windows.h>

#include "gdiplus/gdiplus_codecs.h"
#include "gdiplus/gdiplus_graphics.h"
#include "gdiplus/gdiplus_image.h"
#include "gdiplus/gdiplus_pixel_formats.h"
#include "gdiplus/gdiplus_startup.h"
#include "gdiplus/gdiplus_types.h"
