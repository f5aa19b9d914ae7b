// The functions of libtiff that the library calls, by way of the shared object. Linked, it would bring eight more libraries into
// every program, which cost half a millisecond when it starts; so it is loaded when a picture is first read.

#include <tiffio.h>

#include <cstdarg>

#include "late_library.h"

static_assert(TIFFLIB_VERSION >= 20221213, "libtiff 4.5 is the first with the name below and with options for opening");

namespace {

constexpr LPCWSTR kLibrary = u"libtiff.so.6";

struct Library {
    decltype(&::TIFFOpenOptionsAlloc) alloc_options;
    decltype(&::TIFFOpenOptionsFree) free_options;
    decltype(&::TIFFOpenOptionsSetMaxSingleMemAlloc) set_most_memory;
    decltype(&::TIFFOpenOptionsSetErrorHandlerExtR) set_error_handler;
    decltype(&::TIFFOpenOptionsSetWarningHandlerExtR) set_warning_handler;
    decltype(&::TIFFClientOpenExt) open;
    decltype(&::TIFFVGetField) get_field;
    decltype(&::TIFFClose) close;
    bool complete = false;
};

Library Load() {
    Library library = {};
    const kawin::LateLibrary tiff(kLibrary);
    library.complete = tiff.Find("TIFFOpenOptionsAlloc", library.alloc_options) &&
                       tiff.Find("TIFFOpenOptionsFree", library.free_options) &&
                       tiff.Find("TIFFOpenOptionsSetMaxSingleMemAlloc", library.set_most_memory) &&
                       tiff.Find("TIFFOpenOptionsSetErrorHandlerExtR", library.set_error_handler) &&
                       tiff.Find("TIFFOpenOptionsSetWarningHandlerExtR", library.set_warning_handler) &&
                       tiff.Find("TIFFClientOpenExt", library.open) && tiff.Find("TIFFVGetField", library.get_field) &&
                       tiff.Find("TIFFClose", library.close);
    return library;
}

const Library& TheLibrary() {
    static const Library library = Load();
    return library;
}

}  // namespace

// Null without the library too. All others need what it returns, so they need not look.
TIFFOpenOptions* TIFFOpenOptionsAlloc() {
    return TheLibrary().complete ? TheLibrary().alloc_options() : nullptr;
}

void TIFFOpenOptionsFree(TIFFOpenOptions* options) {
    TheLibrary().free_options(options);
}

void TIFFOpenOptionsSetMaxSingleMemAlloc(TIFFOpenOptions* options, tmsize_t most) {
    TheLibrary().set_most_memory(options, most);
}

void TIFFOpenOptionsSetErrorHandlerExtR(TIFFOpenOptions* options, TIFFErrorHandlerExtR handler, void* data) {
    TheLibrary().set_error_handler(options, handler, data);
}

void TIFFOpenOptionsSetWarningHandlerExtR(TIFFOpenOptions* options, TIFFErrorHandlerExtR handler, void* data) {
    TheLibrary().set_warning_handler(options, handler, data);
}

TIFF* TIFFClientOpenExt(const char* name, const char* mode, thandle_t client, TIFFReadWriteProc read, TIFFReadWriteProc write,
                        TIFFSeekProc seek, TIFFCloseProc close, TIFFSizeProc size, TIFFMapFileProc map, TIFFUnmapFileProc unmap,
                        TIFFOpenOptions* options) {
    return TheLibrary().open(name, mode, client, read, write, seek, close, size, map, unmap, options);
}

int TIFFGetField(TIFF* tiff, uint32_t tag, ...) {
    va_list values;
    va_start(values, tag);
    const int result = TheLibrary().get_field(tiff, tag, values);
    va_end(values);
    return result;
}

void TIFFClose(TIFF* tiff) {
    TheLibrary().close(tiff);
}
