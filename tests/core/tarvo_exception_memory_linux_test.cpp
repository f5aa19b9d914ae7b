// Memory that runs out while an exception logs itself.

#include <gtest/gtest.h>
#include <kadata/log.h>
#include <kadata/tarvo_exception.h>

#include <new>
#include <optional>

#include "log_reader.h"
#include "support/allocation_watch.h"
#include "support/child_process.h"

namespace {

// Whether the exception could be made although the allocation of that number failed; nothing when there was none of that number.
std::optional<bool> Survives(std::size_t failAt) {
    const test::AllocationWatch watch(failAt);
    try {
        const CTarvoException e(1058, "a.cpp", 3, CTarvoException::eError);
        return watch.HasFailed() ? std::optional(e.GetMessageTextID() == 1058) : std::nullopt;
    } catch (...) {
        return false;
    }
}

int LogWithoutMemory(const test::ChildArgs& /*args*/) {
    CLog::SetLogConfig({15, 10, 100'000'000});
    std::size_t failAt = 0;
    for (std::optional<bool> survived = true; survived; ++failAt) {
        survived = Survives(failAt);
        if (survived == false)
            return 1;
    }
    return failAt > 5 ? 0 : static_cast<int>(100 + failAt);
}
REGISTER_CHILD(LogWithoutMemory)

TEST(LinuxTarvoException, IsMadeAtEachAllocationThatFailsWhileItIsLogged) {
    const std::string log = test::LoggedBy(_T("LogWithoutMemory"));
    EXPECT_NE(log.find("tarvo_exception_memory_linux_test.cpp ("), std::string::npos)
        << "the last one had all it needed: " << log;
}

}  // namespace
