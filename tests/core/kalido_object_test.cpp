#include <gtest/gtest.h>
#include <kadata/kalido_object.h>

#include <string>

#include "support/archive_bytes.h"

using namespace std::string_literals;

namespace {

using test::ArchiveCause;
using test::LoadingArchive;

struct LengthReader : CKalidoObject {
    using CKalidoObject::ReadStringLength;
};

CString A(int count) {
    return CString(_T('a'), count);
}

std::string Stored(const CString& text) {
    return test::StoredBytes([&](CArchive& archive) { CKalidoObject::WriteString(archive, text); });
}

CString Loaded(std::string_view bytes, int cause = CArchiveException::none) {
    LoadingArchive archive(bytes);
    CString text = _T("before");
    EXPECT_EQ(ArchiveCause([&] { CKalidoObject::ReadString(*archive, text); }), cause);
    return text;
}

// Reading ends with the end of the data and leaves the target as it was.
void ExpectEndOfFile(std::string_view bytes) {
    EXPECT_EQ(Loaded(bytes, CArchiveException::endOfFile), CString(_T("before")));
}

TEST(ArchiveString, HasItsLengthInTheNarrowestForm) {
    const struct {
        int length;
        std::string head;
    } rows[] = {{0, "\xFF\xFE\xFF\x00"s},
                {254, "\xFF\xFE\xFF\xFE"s},
                {255, "\xFF\xFE\xFF\xFF\xFF\x00"s},
                {0xFFFD, "\xFF\xFE\xFF\xFF\xFD\xFF"s},
                {0xFFFE, "\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\x00\x00"s},
                {70000, "\xFF\xFE\xFF\xFF\xFF\xFF\x70\x11\x01\x00"s}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.length);
        CString text;
        std::string units;
        for (int i = 0; i < row.length; ++i) {
            text += static_cast<TCHAR>(i + 1);
            units += {static_cast<char>(i + 1), static_cast<char>((i + 1) >> 8)};
        }
        EXPECT_TRUE(Stored(text) == row.head + units);
        EXPECT_TRUE(Loaded(row.head + units) == text);
    }
}

TEST(ArchiveString, IsReadInEveryForm) {
    const std::string a70000(70000, 'a');
    const TCHAR zerosAndHalf[] = {_T('A'), 0, 0xD83D, 0};
    const struct {
        std::string bytes;
        CString expected;
    } rows[] = {{"\x80"s + a70000.substr(0, 128), A(128)},
                {"\xFF\x2C\x01" + a70000.substr(0, 300), A(300)},
                {"\xFF\xFF\xFF\x70\x11\x01\x00"s + a70000, A(70000)},
                {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x02\x00\x00\x00\x00\x00\x00\x00"s + "aa", A(2)},
                {"\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01\x00\x00\x00\x00\x00\x00\x00"s + "a\0"s, A(1)},
                {"\xFF\xFE\xFF\x04"s + "A\0\0\0\x3D\xD8\0\0"s, CString(zerosAndHalf, 4)}};
    for (const auto& row : rows)
        EXPECT_TRUE(Loaded(row.bytes) == row.expected) << &row - rows;
    if (GetACP() == 1252) {
        EXPECT_EQ(Loaded("\x07M\xFCller\x80"s), CString(_T("M\u00FCller\u20AC")));
    }
}

TEST(ArchiveString, EndsWithTheFileWhereverItIsCutAndHoweverItsLengthLies) {
    for (const std::string& whole : {Stored(A(300)), "\xFF\x2C\x01" + std::string(300, 'a'), Stored(A(70000)),
                                     "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01\x00\x00\x00\x00\x00\x00\x00"s + "a\0"s}) {
        for (std::size_t size = 0; size < whole.size(); size += size < 1000 ? 1 : 997) {
            SCOPED_TRACE(size);
            ExpectEndOfFile(std::string_view(whole).substr(0, size));
        }
    }
    for (const std::string& head : {
             "\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\xFF\xFF"s, "\xFF\xFF\xFF\xFE\xFF\xFF\x7F"s,
             "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
             "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01\x00\x00\x00\x01\x00\x00\x00"s,  // 32 bits of it would be true
             "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x00\x00\x00\x00\x00\x00\x00\x80"s,  // its bytes are 0 in 64 bits
         }) {
        ExpectEndOfFile(head + std::string(5000, 'a'));
    }
}

TEST(ArchiveString, HasALengthForTheOlderReader) {
    const std::pair<std::string, unsigned int> rows[] = {{"\x00"s, 0},
                                                         {"\xFE", 254},
                                                         {"\xFF\xFF\x00"s, 255},
                                                         {"\xFF\xFD\xFF", 0xFFFD},
                                                         {"\xFF\xFE\xFF", 0xFFFFFFFF},
                                                         {"\xFF\xFF\xFF\x70\x11\x01\x00"s, 70000}};
    for (const auto& [bytes, expected] : rows) {
        LoadingArchive archive(bytes);
        EXPECT_EQ(LengthReader::ReadStringLength(*archive), expected);
        LoadingArchive cut(std::string_view(bytes).substr(0, bytes.size() - 1));
        EXPECT_EQ(ArchiveCause([&] { LengthReader::ReadStringLength(*cut); }), CArchiveException::endOfFile);
    }
    test::StoredBytes([](CArchive& storing) {
        EXPECT_EQ(ArchiveCause([&] { LengthReader::ReadStringLength(storing); }), CArchiveException::writeOnly);
    });
}

}  // namespace
