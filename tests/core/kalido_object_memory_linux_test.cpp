#include <gtest/gtest.h>
#include <kadata/kalido_object.h>

#include <new>
#include <string>

#include "support/allocation_watch.h"
#include "support/archive_bytes.h"

using namespace std::string_literals;

namespace {

constexpr std::size_t OWN_BUFFER = 4096;  // of an archive
constexpr std::size_t SLACK = 64;

TEST(ArchiveString, TakesNoMemoryForWhatIsNotThere) {
    for (const std::string& head :
         {"\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x3F"s, "\xFF\xFF\xFF\xFF\xFF\xFF\x7F"s, "\xFF\xFE\xFF\xFF\xFD\xFF"s}) {
        for (const std::size_t there : {0, 100, 5000, 40000}) {
            test::LoadingArchive archive(head + std::string(there, 'a'));
            CString text;
            const test::AllocationWatch watch;
            EXPECT_EQ(test::ArchiveCause([&] { CKalidoObject::ReadString(*archive, text); }), CArchiveException::endOfFile);
            EXPECT_LE(watch.Largest(), OWN_BUFFER + 2 * there + SLACK) << there;
        }
    }
}

TEST(ArchiveString, LeavesTheTargetAsItWasWhenMemoryEnds) {
    const std::string bytes =
        test::StoredBytes([](CArchive& archive) { CKalidoObject::WriteString(archive, CString(_T('a'), 70000)); });
    bool failed = true;
    for (std::size_t failAt = 0; failed; ++failAt) {
        SCOPED_TRACE(failAt);
        test::LoadingArchive archive(bytes);
        CString text = _T("a text that was there before");
        try {
            const test::AllocationWatch watch(failAt);
            CKalidoObject::ReadString(*archive, text);
            failed = false;
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(text, CString(_T("a text that was there before")));
        }
        EXPECT_TRUE(failed || text.GetLength() == 70000);
        ASSERT_LT(failAt, 1000u);
    }
}

}  // namespace
