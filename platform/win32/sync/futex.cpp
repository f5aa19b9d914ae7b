#include "futex.h"

#include <linux/futex.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <climits>

#include "waits.h"

namespace kawin {
namespace {

using namespace std::chrono_literals;

// How long a kernel without the call for several words sleeps on the first one before it looks at the others.
constexpr auto kLookAround = 2ms;

int Operation(int operation, Reach reach) {
    return reach == Reach::Process ? operation | FUTEX_PRIVATE_FLAG : operation;
}

// The deadline as the kernel reads it: steady_clock is CLOCK_MONOTONIC. Null when there is none.
class KernelTime {
public:
    explicit KernelTime(Deadline deadline) noexcept : limited_(deadline != Deadline::max()) {
        const auto since_start = std::max(deadline.time_since_epoch(), Deadline::duration::zero());
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(since_start);
        time_.tv_sec = seconds.count();
        time_.tv_nsec = std::chrono::nanoseconds(since_start - seconds).count();
    }
    const timespec* get() const noexcept { return limited_ ? &time_ : nullptr; }

private:
    bool limited_;
    timespec time_{};
};

void Wake(const FutexWord& word, Reach reach, int count) {
    syscall(SYS_futex, &word, Operation(FUTEX_WAKE, reach), count, nullptr, nullptr, 0);
}

}  // namespace

void SleepOn(const WaitPoint& point, Deadline deadline) noexcept {
    const KernelTime time(deadline);
    syscall(SYS_futex, point.word, Operation(FUTEX_WAIT_BITSET, point.reach), point.value, time.get(), nullptr,
            FUTEX_BITSET_MATCH_ANY);
}

void SleepOnAny(std::span<const WaitPoint> points, Deadline deadline) noexcept {
    futex_waitv list[MAXIMUM_WAIT_OBJECTS]{};
    for (std::size_t i = 0; i < points.size(); ++i) {
        list[i].val = points[i].value;
        list[i].uaddr = reinterpret_cast<std::uintptr_t>(points[i].word);
        list[i].flags = static_cast<std::uint32_t>(Operation(FUTEX_32, points[i].reach));
    }
    const KernelTime time(deadline);
    if (syscall(SYS_futex_waitv, list, points.size(), 0, time.get(), CLOCK_MONOTONIC) == -1 &&
        (errno == ENOSYS || errno == EPERM)) {
        SleepOn(points.front(), std::min(deadline, Deadline::clock::now() + kLookAround));
    }
}

void WakeOne(const FutexWord& word, Reach reach) noexcept {
    Wake(word, reach, 1);
}

void WakeAll(const FutexWord& word, Reach reach) noexcept {
    Wake(word, reach, INT_MAX);
}

bool IsPast(Deadline deadline) noexcept {
    return deadline == Deadline::min() || (deadline != Deadline::max() && deadline <= Deadline::clock::now());
}

}  // namespace kawin
