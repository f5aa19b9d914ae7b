#include "share_modes.h"

#include <errno.h>
#include <fcntl.h>
#include <sched.h>
#include <sys/file.h>

#include "file_io.h"

namespace kawin {
namespace {

// Each is a byte that open files hold a read lock on. They lie so that the usual combinations are one run of bytes.
constexpr unsigned kDeniesRead = 0x01;
constexpr unsigned kDeniesWrite = 0x02;
constexpr unsigned kDeniesDelete = 0x04;
constexpr unsigned kReads = 0x08;
constexpr unsigned kWrites = 0x10;
constexpr unsigned kDeletes = 0x20;
constexpr int kMarks = 6;

constexpr off_t kFirstByte = 0x7FFF'FFFF'FFFF'FF00;

struct Rule {
    DWORD access;
    DWORD share;
    unsigned use;
    unsigned denial;
};
constexpr Rule kRules[] = {
    {FILE_READ_DATA | FILE_EXECUTE, FILE_SHARE_READ, kReads, kDeniesRead},
    {FILE_WRITE_DATA | FILE_APPEND_DATA, FILE_SHARE_WRITE, kWrites, kDeniesWrite},
    {DELETE, FILE_SHARE_DELETE, kDeletes, kDeniesDelete},
};

struct flock LockOf(int type, int first, int count) {
    struct flock lock {};
    lock.l_type = static_cast<short>(type);
    lock.l_whence = SEEK_SET;
    lock.l_start = kFirstByte + first;
    lock.l_len = count;
    return lock;
}

// Calls `work(first, count)` for each run of marks until it returns false; whether it never did.
template <class Work>
bool ForEachRun(unsigned marks, Work&& work) {
    for (int first = 0; first < kMarks; ++first) {
        int end = first;
        while ((marks >> end & 1U) != 0) {
            ++end;
        }
        if (end > first && !work(first, end - first)) {
            return false;
        }
        first = end;
    }
    return true;
}

bool SomebodyHolds(int fd, unsigned marks) {
    return !ForEachRun(marks, [fd](int first, int count) {
        struct flock lock = LockOf(F_WRLCK, first, count);
        return fcntl(fd, F_OFD_GETLK, &lock) != 0 || lock.l_type == F_UNLCK;
    });
}

void Hold(int fd, unsigned marks) {
    ForEachRun(marks, [fd](int first, int count) {
        struct flock lock = LockOf(F_RDLCK, first, count);
        return fcntl(fd, F_OFD_SETLK, &lock) == 0;
    });
}

void HoldNothing(int fd) {
    struct flock lock = LockOf(F_UNLCK, 0, kMarks);
    fcntl(fd, F_OFD_SETLK, &lock);
}

// Keeps two opens from seeing each other half-way and both giving up. It is only a courtesy: as marks are set before they are
// looked for, two that exclude each other never both succeed. So nobody waits long for it, whoever else locks the file.
class Turn {
public:
    explicit Turn(int fd) noexcept : fd_(fd) {
        constexpr int kAttempts = 1000;
        for (int i = 0; i < kAttempts && !held_; ++i) {
            held_ = flock(fd, LOCK_EX | LOCK_NB) == 0;
            if (!held_ && errno != EWOULDBLOCK && errno != EINTR) {
                return;
            }
            if (!held_) {
                sched_yield();
            }
        }
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() {
        if (held_) {
            flock(fd_, LOCK_UN);
        }
    }

private:
    int fd_;
    bool held_ = false;
};

}  // namespace

bool ClaimShare(int fd, DWORD access, DWORD share) noexcept {
    unsigned own = 0;
    unsigned others = 0;
    bool uses = false;
    for (const Rule& rule : kRules) {
        const bool use = (access & rule.access) != 0;
        const bool deny = (share & rule.share) == 0;
        uses = uses || use;
        own |= (use ? rule.use : 0) | (deny ? rule.denial : 0);
        others |= (use ? rule.denial : 0) | (deny ? rule.use : 0);
    }
    if (!uses) {
        return true;
    }
    const Turn turn(fd);
    Hold(fd, own);
    if (SomebodyHolds(fd, others)) {
        HoldNothing(fd);
        return false;
    }
    return true;
}

}  // namespace kawin
