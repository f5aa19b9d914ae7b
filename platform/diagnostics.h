#pragma once

// What the platform layer has to say to a technician. The layer knows nothing of the library's log; the library hands in where
// lines go.

#include <windows.h>

#include <string_view>

namespace kawin {

// Takes one line without its end; must not throw and may be called by any thread.
using DiagnosticSink = void (*)(std::basic_string_view<WCHAR> line);

// Lines from before it was known are handed over at once, the last few of them. Null: lines are kept again.
void SetDiagnosticSink(DiagnosticSink sink);

}  // namespace kawin
