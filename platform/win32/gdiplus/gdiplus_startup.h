#pragma once

// Starting GDI+ and ending it.

#include "gdiplus_types.h"

namespace Gdiplus {

// For hosts that run the system's background thread themselves. There is none here; the hooks do nothing.
using NotificationHookProc = Status (*)(ULONG_PTR* token);
using NotificationUnhookProc = void (*)(ULONG_PTR token);
using DebugEventLevel = int;
using DebugEventProc = void (*)(DebugEventLevel level, CHAR* message);

struct GdiplusStartupInput {
    UINT GdiplusVersion;  // 1 or 2
    DebugEventProc DebugEventCallback;
    BOOL SuppressBackgroundThread;
    BOOL SuppressExternalCodecs;

    GdiplusStartupInput(DebugEventProc callback = nullptr, BOOL suppress_thread = FALSE, BOOL suppress_codecs = FALSE)
        : GdiplusVersion(1),
          DebugEventCallback(callback),
          SuppressBackgroundThread(suppress_thread),
          SuppressExternalCodecs(suppress_codecs) {}
};

struct GdiplusStartupOutput {
    NotificationHookProc NotificationHook;
    NotificationUnhookProc NotificationUnhook;
};

// Counted: GDI+ is there until as many tokens have been shut down. Any thread may call it. `output` is filled when the background
// thread is suppressed and may be null otherwise. InvalidParameter for null arguments, UnsupportedGdiplusVersion for another
// version. Nothing else of GDI+ works before: constructors leave an object whose last status is GdiplusNotInitialized, functions
// return that.
KADATA_API Status GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input, GdiplusStartupOutput* output) noexcept;

// A token that GdiplusStartup did not give, or that was shut down, is ignored. Objects that are still there after the last
// shutdown may only be deleted.
KADATA_API void GdiplusShutdown(ULONG_PTR token) noexcept;

}  // namespace Gdiplus
