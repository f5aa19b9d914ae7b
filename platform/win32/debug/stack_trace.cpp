#include "stack_trace.h"

#include <unwind.h>

#include <algorithm>

namespace {

struct Walk {
    ULONGLONG skip;
    ULONG capacity;
    PVOID* frames;
    ULONG count = 0;
};

_Unwind_Reason_Code Step(_Unwind_Context* context, void* data) {
    Walk& walk = *static_cast<Walk*>(data);
    const auto address = _Unwind_GetIP(context);
    if (address == 0 || walk.count == walk.capacity) {
        return _URC_END_OF_STACK;
    }
    if (walk.skip > 0) {
        --walk.skip;
    } else {
        walk.frames[walk.count++] = reinterpret_cast<PVOID>(address);
    }
    return _URC_NO_REASON;
}

}  // namespace

USHORT RtlCaptureStackBackTrace(ULONG skip, ULONG capacity, PVOID* frames, PULONG hash) noexcept {
    Walk walk{ULONGLONG{skip} + 1, std::min<ULONG>(capacity, 0xFFFF), frames};  // this function is the first frame
    _Unwind_Backtrace(Step, &walk);
    if (hash != nullptr) {
        *hash = 0;
        for (ULONG i = 0; i < walk.count; ++i) {
            *hash += static_cast<ULONG>(reinterpret_cast<ULONG_PTR>(frames[i]));
        }
    }
    return static_cast<USHORT>(walk.count);
}
