// Archives by another library, and large ones.

#include <kadata/zip.h>
#include <zip.h>

#include "support/allocation_watch.h"
#include "support/native_path_linux.h"
#include "support/zip_maker.h"
#include "zip_test_support.h"

namespace {

using test::Extract;

class LinuxZip : public testing::Test {
protected:
    void MakeByLibzip(const std::vector<test::ZipItem>& items) {
        zip_t* const zip = zip_open(test::Native(m_path).c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
        ASSERT_NE(zip, nullptr);
        for (const test::ZipItem& item : items) {
            zip_source_t* const source = zip_source_buffer(zip, item.content.data(), item.content.size(), 0);
            const auto index = static_cast<zip_uint64_t>(zip_file_add(zip, item.name.c_str(), source, ZIP_FL_ENC_CP437));
            zip_set_file_compression(zip, index, item.deflated ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 9);
            zip_file_set_comment(zip, index, item.comment.data(), static_cast<zip_uint16_t>(item.comment.size()), 0);
        }
        const std::string comment(65535, '#');
        zip_set_archive_comment(zip, comment.data(), 65535);
        ASSERT_EQ(zip_close(zip), 0);
    }

    const test::TempFolder m_folder;
    const test::Text m_path = m_folder.Path(_T("a.zip"));
};

TEST_F(LinuxZip, WhatAnotherLibraryMadeIsReadWhole) {
    std::vector<test::ZipItem> items;
    for (int i = 0; i < 10000; ++i) {
        std::string content;
        for (int k = 0; k < i % 50; ++k)
            content += std::to_string(i * 31 % (k + 7)) + ",";
        items.push_back({"DIR/Entry" + std::to_string(i), content, i % 2 == 0, false, {}, i % 3 == 0 ? "note" : ""});
    }
    items.push_back({"dir/large", std::string(3000000, 'L') + items[49].content, true});
    MakeByLibzip(items);
    CZLibWrapper zip;
    ASSERT_NE(zip.OpenZipFile(m_path.c_str()), 0);
    ASSERT_EQ(zip.GetArchiveFileCount(), 10001);
    for (std::size_t i = 0; i < items.size(); ++i)
        ASSERT_TRUE(test::Next(zip, i == 0) == (test::ZipContent{items[i].name, items[i].content})) << i;
    for (std::size_t i = 0; i < items.size(); i += 97)
        ASSERT_TRUE(Extract(zip, CString(items[i].name.c_str()).MakeLower()) == items[i].content) << i;
}

TEST_F(LinuxZip, OneGibibyteOfZerosIsReadAndFiveOfAreAsNone) {
    // 1 MiB of zeros that ends on the border of a byte can stand there any number of times.
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    const std::string zeros(1 << 20, '\0');
    std::string once(1 << 14, '\0'), all;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zeros.data()));
    stream.avail_in = 1 << 20;
    stream.next_out = reinterpret_cast<Bytef*>(once.data());
    stream.avail_out = 1 << 14;
    deflate(&stream, Z_FULL_FLUSH);
    once.resize(once.size() - stream.avail_out);
    deflateEnd(&stream);
    for (int i = 0; i < 1024; ++i)
        all += once;
    all += std::string("\x01\x01\0\xFE\xFF!", 6);  // and one byte that is none
    for (const unsigned long long size : {(1ULL << 30) + 1, 5ULL << 30}) {
        const bool whole = size < 1ULL << 32;
        // The second one has its size in the extra field, as Zip64 has it.
        const std::string extra = whole ? std::string() : test::Little(1, 2) + test::Little(8, 2) + test::Little(size, 8);
        test::ZipLayout made = test::MakeZip({{"zeros", all, false, true, extra}});
        made.bytes.replace(made.central[0] + 10, 2, test::Little(8, 2));
        made.bytes.replace(made.local[0] + 8, 2, test::Little(8, 2));
        made.bytes.replace(made.central[0] + 24, 4, test::Little(whole ? size : 0xFFFFFFFF, 4));
        test::WriteBytes(m_path, made.bytes);
        CZLibWrapper zip;
        ASSERT_NE(zip.OpenZipFile(m_path.c_str()), 0);
        unsigned char* data = nullptr;
        ASSERT_EQ(zip.ExtractFileFromZip(_T("ZEROS"), &data), whole ? size : 0);
        const std::unique_ptr<unsigned char[]> owner(data);
        const auto isZero = [](unsigned char c) { return c == 0; };
        EXPECT_TRUE(!whole || (data[size - 1] == '!' && std::all_of(data, data + size - 1, isZero)));
    }
}

TEST_F(LinuxZip, AnImpossibleClaimCostsNoMemory) {
    test::ZipLayout made = test::MakeZip({{"a", "abcd", true, true}});
    made.bytes.replace(made.central[0] + 20, 8, std::string(7, '\xFF') + "\x7F");  // both sizes
    test::WriteBytes(m_path, made.bytes);
    CZLibWrapper zip;
    const test::AllocationWatch watch;
    ASSERT_NE(zip.OpenZipFile(m_path.c_str()), 0);
    unsigned char* data = nullptr;
    EXPECT_EQ(zip.ExtractFileFromZip(_T("a"), &data), 0U);
    delete[] data;
    EXPECT_LT(watch.Largest(), 100000U);
}

}  // namespace
