#pragma once

// The calling thread's stack as addresses; dbghelp.h names them.

#include "../base/types.h"

using PULONG = ULONG*;

// Writes the return addresses of the calling functions, the innermost first, and returns how many (at most `capacity`, and never
// more than 65,535). `skip` frames are left out; with 0 the first address lies in the function that calls this one. `hash` may be
// null and receives the same number for the same addresses. Costs about 0.2 us a frame; frames of code without unwind information
// end the walk. Not for signal handlers. Any thread.
KADATA_API USHORT RtlCaptureStackBackTrace(ULONG skip, ULONG capacity, PVOID* frames, PULONG hash) noexcept;
