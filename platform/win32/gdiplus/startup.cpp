#include "startup.h"

#include <atomic>
#include <mutex>
#include <new>
#include <set>

#include "gdiplus_startup.h"

namespace kawin {
namespace {

struct Startups {
    std::mutex mutex;
    std::set<ULONG_PTR> tokens;  // guarded by mutex
    ULONG_PTR last = 0;          // guarded by mutex
    std::atomic<bool> any = false;
};

// Never destroyed: GDI+ may be shut down while the process ends.
Startups& TheStartups() {
    static Startups* const startups = new Startups;
    return *startups;
}

}  // namespace

bool IsGdiplusStarted() noexcept {
    return TheStartups().any;
}

}  // namespace kawin

namespace Gdiplus {
namespace {

constexpr UINT kFirstVersion = 1;
constexpr UINT kLastVersion = 2;

Status HookNothing(ULONG_PTR* token) {
    if (token != nullptr) {
        *token = 0;
    }
    return Ok;
}
void UnhookNothing(ULONG_PTR /*token*/) {}

}  // namespace

Status GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input, GdiplusStartupOutput* output) noexcept try {
    if (token == nullptr || input == nullptr || (input->SuppressBackgroundThread && output == nullptr)) {
        return InvalidParameter;
    }
    if (input->GdiplusVersion < kFirstVersion || input->GdiplusVersion > kLastVersion) {
        return UnsupportedGdiplusVersion;
    }
    kawin::Startups& startups = kawin::TheStartups();
    const std::lock_guard lock(startups.mutex);
    startups.tokens.insert(startups.last + 1);
    *token = ++startups.last;
    startups.any = true;
    if (input->SuppressBackgroundThread) {
        *output = {HookNothing, UnhookNothing};
    }
    return Ok;
} catch (const std::bad_alloc&) {
    return OutOfMemory;
}

void GdiplusShutdown(ULONG_PTR token) noexcept {
    kawin::Startups& startups = kawin::TheStartups();
    const std::lock_guard lock(startups.mutex);
    startups.tokens.erase(token);
    startups.any = !startups.tokens.empty();
}

}  // namespace Gdiplus
