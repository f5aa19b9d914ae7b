#include <gtest/gtest.h>
#include <kadata/kalido_object.h>

#include <new>
#include <string>

#include "support/allocation_watch.h"
#include "support/archive_bytes.h"

using namespace std::string_literals;

namespace {

TEST(LinuxProcesses, IsNotTakenForTextThatIsNotThere) {
    constexpr std::size_t archiveBuffer = 4096, slack = 64;
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

TEST(LinuxProcesses, MayFailAtEachAllocationAndTheTextIsAsItWas) {
    const CString before = _T("a text that was there before");
    for (const std::string& head : {"\xFF\x70\x11"s, "\xFF\xFE\xFF\xFF\x70\x11"s, "\xFF\xFE\xFF\xFE"s}) {
        std::size_t failAt = 0;
        for (CString text = before; text == before; ++failAt) {
            test::LoadingArchive archive(head + std::string(2 * 0x1170, 'a'));
            try {
                const test::AllocationWatch watch(failAt);
                CKalidoObject::ReadString(*archive, text);
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(text, before);
            }
        }
        EXPECT_GT(failAt, 1u);
    }
}

}  // namespace
