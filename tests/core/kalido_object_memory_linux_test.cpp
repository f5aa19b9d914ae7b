#include <gtest/gtest.h>
#include <kadata/kalido_object.h>

#include <new>
#include <string>

#include "support/allocation_watch.h"
#include "support/archive_bytes.h"

using namespace std::string_literals;

namespace {

TEST(ArchiveString, TakesNoMemoryForWhatIsNotThere) {
    constexpr std::size_t archiveBuffer = 4096;
    constexpr std::size_t slack = 64;
    for (const std::string& head : {"\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x3F"s, "\xFF\xFF\xFF\xFF\xFF\xFF\x7F"s}) {
        for (const std::size_t there : {0, 100, 5000, 40000}) {
            test::LoadingArchive archive(head + std::string(there, 'a'));
            CString text;
            const test::AllocationWatch watch;
            EXPECT_EQ(test::ArchiveCause([&] { CKalidoObject::ReadString(*archive, text); }), CArchiveException::endOfFile);
            EXPECT_LE(watch.Largest(), archiveBuffer + 2 * there + slack) << there;
        }
    }
}

// The number of allocations that reading the text takes when each of them fails in turn.
std::size_t ReadWithEachAllocationFailing(const std::string& bytes) {
    const CString before = _T("a text that was there before");
    for (std::size_t failAt = 0;; ++failAt) {
        test::LoadingArchive archive(bytes);
        CString text = before;
        try {
            const test::AllocationWatch watch(failAt);
            CKalidoObject::ReadString(*archive, text);
            return failAt;
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(text, before);
        }
    }
}

TEST(ArchiveString, LeavesTheTargetAsItWasWhenMemoryEnds) {
    EXPECT_GT(ReadWithEachAllocationFailing("\xFF\x70\x11" + std::string(0x1170, 'a')), 0u);
    EXPECT_GT(ReadWithEachAllocationFailing("\xFF\xFE\xFF\xFF\x70\x11" + std::string(2 * 0x1170, 'a')), 0u);
    EXPECT_GT(ReadWithEachAllocationFailing("\xFF\xFE\xFF\xFE" + std::string(2 * 0xFE, 'a')), 0u);
}

}  // namespace
