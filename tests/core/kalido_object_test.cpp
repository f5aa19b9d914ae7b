#include <gtest/gtest.h>
#include <kadata/kalido_object.h>

#include <string>
#include <vector>

#include "support/archive_bytes.h"
#include "support/temp_folder.h"

using namespace std::string_literals;

namespace {

using test::ArchiveCause;
using test::LoadingArchive;

struct LengthReader : CKalidoObject {
    using CKalidoObject::ReadStringLength;
};

// Units that differ from their neighbours in both bytes.
CString TextOfLength(int length) {
    CString text;
    for (int i = 0; i < length; ++i) {
        text += static_cast<TCHAR>(0x0101 + 0x0203 * i % 0xD000);
    }
    return text;
}

std::string LittleEndian(const CString& text) {
    std::string bytes;
    for (int i = 0; i < text.GetLength(); ++i) {
        bytes += static_cast<char>(text[i] & 0xFF);
        bytes += static_cast<char>(text[i] >> 8);
    }
    return bytes;
}

std::string Stored(const CString& text) {
    return test::StoredBytes([&](CArchive& archive) { CKalidoObject::WriteString(archive, text); });
}

CString Loaded(std::string_view bytes) {
    LoadingArchive archive(bytes);
    CString text = _T("before");
    CKalidoObject::ReadString(*archive, text);
    return text;
}

// Reading ends with the end of the data and leaves the target as it was.
void ExpectEndOfFile(std::string_view bytes) {
    LoadingArchive archive(bytes);
    CString text = _T("before");
    EXPECT_EQ(ArchiveCause([&] { CKalidoObject::ReadString(*archive, text); }), CArchiveException::endOfFile);
    EXPECT_EQ(text, CString(_T("before")));
}

TEST(ArchiveString, HasItsLengthInTheNarrowestForm) {
    const struct {
        int length;
        std::string head;
    } rows[] = {
        {0, "\xFF\xFE\xFF\x00"s},
        {1, "\xFF\xFE\xFF\x01"s},
        {254, "\xFF\xFE\xFF\xFE"s},
        {255, "\xFF\xFE\xFF\xFF\xFF\x00"s},
        {0xFFFD, "\xFF\xFE\xFF\xFF\xFD\xFF"s},
        {0xFFFE, "\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\x00\x00"s},
        {70000, "\xFF\xFE\xFF\xFF\xFF\xFF\x70\x11\x01\x00"s},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.length);
        const CString text = TextOfLength(row.length);
        const std::string bytes = Stored(text);
        EXPECT_TRUE(bytes == row.head + LittleEndian(text));
        EXPECT_TRUE(Loaded(bytes) == text);
    }
}

TEST(ArchiveString, KeepsZerosAndHalvesOfPairs) {
    const TCHAR units[] = {_T('A'), 0, 0xD83D, _T('B'), 0};
    const CString text(units, 5);
    EXPECT_EQ(Stored(text), "\xFF\xFE\xFF\x05"s + "A\0\0\0\x3D\xD8" + "B\0\0\0"s);
    EXPECT_EQ(Loaded(Stored(text)), text);
}

TEST(ArchiveString, IsReadInEveryFormOfItsLength) {
    const std::string a300(300, 'a');
    const std::string a70000(70000, 'a');
    const struct {
        std::string bytes;
        CString expected;
    } rows[] = {
        {"\x00"s, CString()},
        {"\x06Miller", _T("Miller")},
        {"\x80"s + a300.substr(0, 128), CString(_T('a'), 128)},
        {"\xFF\x2C\x01" + a300, CString(_T('a'), 300)},
        {"\xFF\xFF\xFF\x70\x11\x01\x00"s + a70000, CString(_T('a'), 70000)},
        {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x02\x00\x00\x00\x00\x00\x00\x00"s + "ab", _T("ab")},
        {"\xFF\xFE\xFF\xFF\x01\x00"s + "a\0"s, _T("a")},
        {"\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01\x00\x00\x00\x00\x00\x00\x00"s + "a\0"s, _T("a")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_TRUE(Loaded(row.bytes) == row.expected);
    }
}

TEST(ArchiveString, IsReadFromTheAnsiCodePageInTheOlderForm) {
    if (GetACP() != 1252) {
        GTEST_SKIP() << "the bytes are of code page 1252";
    }
    EXPECT_EQ(Loaded("\x07M\xFCller\x80"s), CString(_T("M\u00FCller\u20AC")));
    EXPECT_TRUE(Loaded("\xFF\x2C\x01" + std::string(300, '\xDF')) == CString(TCHAR{0xDF}, 300));
}

TEST(ArchiveString, EndsWithTheFileWhereverItIsCut) {
    const std::string long8 = "\xFF\x2C\x01" + std::string(300, 'a');
    for (const std::string& whole : {Stored(_T("Anna")), Stored(TextOfLength(300)), long8,
                                     "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01\x00\x00\x00\x00\x00\x00\x00"s + "a\0"s}) {
        for (std::size_t size = 0; size < whole.size(); ++size) {
            SCOPED_TRACE(size);
            ExpectEndOfFile(std::string_view(whole).substr(0, size));
        }
    }
    const std::string large = Stored(TextOfLength(70000));
    for (const std::size_t size : {std::size_t{10}, std::size_t{4096}, std::size_t{4107}, large.size() - 1}) {
        ExpectEndOfFile(std::string_view(large).substr(0, size));
    }
}

TEST(ArchiveString, EndsWithTheFileWhenItsLengthIsALie) {
    const std::string text(5000, 'a');
    for (const std::string& head : {
             "\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\xFF\xFF"s,
             "\xFF\xFF\xFF\xFE\xFF\xFF\x7F"s,
             "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F"s,
             "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
             "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01\x00\x00\x00\x01\x00\x00\x00"s,
             "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x00\x00\x00\x00\x00\x00\x00\x80"s,
         }) {
        ExpectEndOfFile(head + text);
    }
}

TEST(ArchiveString, IsRefusedByAnArchiveOfTheOtherDirection) {
    LoadingArchive loading(Stored(_T("Anna")));
    CString text = _T("before");
    EXPECT_EQ(ArchiveCause([&] { CKalidoObject::WriteString(*loading, text); }), CArchiveException::readOnly);
    test::StoredBytes([&](CArchive& storing) {
        EXPECT_EQ(ArchiveCause([&] { CKalidoObject::ReadString(storing, text); }), CArchiveException::writeOnly);
        EXPECT_EQ(ArchiveCause([&] { LengthReader::ReadStringLength(storing); }), CArchiveException::writeOnly);
    });
    EXPECT_EQ(text, CString(_T("before")));
}

TEST(ArchiveString, HasALengthForTheOlderReader) {
    const struct {
        std::string bytes;
        unsigned int expected;
    } rows[] = {
        {"\x00"s, 0},
        {"\xFE", 254},
        {"\xFF\xFF\x00"s, 255},
        {"\xFF\xFD\xFF", 0xFFFD},
        {"\xFF\xFE\xFF", 0xFFFFFFFF},
        {"\xFF\xFF\xFF\x70\x11\x01\x00"s, 70000},
    };
    for (const auto& row : rows) {
        LoadingArchive archive(row.bytes);
        EXPECT_EQ(LengthReader::ReadStringLength(*archive), row.expected);
        LoadingArchive cut(std::string_view(row.bytes).substr(0, row.bytes.size() - 1));
        EXPECT_EQ(ArchiveCause([&] { LengthReader::ReadStringLength(*cut); }), CArchiveException::endOfFile);
    }
}

}  // namespace
