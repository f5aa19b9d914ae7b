#include "critical_section.h"

#include "../base/error_map.h"
#include "futex.h"

namespace {

constexpr std::uint32_t kFree = 0;
constexpr std::uint32_t kWaitedFor = 2;

bool SpinFor(CRITICAL_SECTION& section, HANDLE thread) {
    for (ULONG_PTR spin = section.SpinCount; spin != 0; --spin) {
        if (section.LockWord.load(std::memory_order_relaxed) == kFree && kawin::TryEnterCriticalSection(section, thread)) {
            return true;
        }
        __builtin_ia32_pause();
    }
    return false;
}

}  // namespace

namespace kawin {

// Who has slept enters with "perhaps waited for": it cannot know whether another one sleeps still.
void EnterCriticalSectionSlow(CRITICAL_SECTION& section, HANDLE thread) noexcept {
    if (SpinFor(section, thread)) {
        return;
    }
    while (section.LockWord.exchange(kWaitedFor, std::memory_order_acquire) != kFree) {
        SleepOn({&section.LockWord, kWaitedFor, Reach::Process}, Deadline::max());
    }
    section.OwningThread.store(thread, std::memory_order_relaxed);
    section.RecursionCount = 1;
}

void WakeCriticalSection(CRITICAL_SECTION& section) noexcept {
    WakeOne(section.LockWord, Reach::Process);
}

}  // namespace kawin

void InitializeCriticalSection(LPCRITICAL_SECTION section) noexcept {
    InitializeCriticalSectionAndSpinCount(section, 0);
}

BOOL InitializeCriticalSectionAndSpinCount(LPCRITICAL_SECTION section, DWORD spins) noexcept {
    section->LockWord.store(kFree, std::memory_order_relaxed);
    section->RecursionCount = 0;
    section->OwningThread.store(nullptr, std::memory_order_relaxed);
    section->SpinCount = spins;
    return TRUE;
}

BOOL InitializeCriticalSectionEx(LPCRITICAL_SECTION section, DWORD spins, DWORD flags) noexcept {
    if ((flags & ~CRITICAL_SECTION_NO_DEBUG_INFO) != 0) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    return InitializeCriticalSectionAndSpinCount(section, spins);
}

DWORD SetCriticalSectionSpinCount(LPCRITICAL_SECTION section, DWORD spins) noexcept {
    const auto before = static_cast<DWORD>(section->SpinCount);
    section->SpinCount = spins;
    return before;
}

void DeleteCriticalSection(LPCRITICAL_SECTION section) noexcept {
    InitializeCriticalSectionAndSpinCount(section, 0);
}
