#include <kadata/zip.h>

#include "support/zip_maker.h"
#include "zip_test_support.h"

namespace {

using test::Extract;
using test::MakeZip;
using test::Next;
using test::ZipItem;

class Zip : public testing::Test {
protected:
    int Open(CZLibWrapper& zip, const std::string& bytes) { return zip.OpenZipFile(m_folder.Write(_T("a.zip"), bytes).c_str()); }
    const test::TempFolder m_folder;
};

const std::string Long(100000, 'x');
const std::vector<ZipItem> ITEMS = {
    {"readme.txt", "stored"},
    {"images/Tooth.tif", Long, true},
    {"images/", ""},
    {"cut.bin", std::string("\0\xFF", 2) + Long, true, true},
    {"README.TXT", "the second of that name", false, true},
    {"empty", "", true},
};

TEST_F(Zip, WalksInTheOrderOfTheDirectoryAndStaysAtTheLast) {
    CZLibWrapper zip;
    ASSERT_NE(Open(zip, MakeZip(ITEMS).bytes), 0);
    ASSERT_EQ(zip.GetArchiveFileCount(), 6);
    const std::vector<test::ZipContent> walk = test::WalkZip(zip, 9);
    for (std::size_t i = 0; i < ITEMS.size(); ++i)
        EXPECT_TRUE(walk[i] == (test::ZipContent{ITEMS[i].name, ITEMS[i].content})) << i;
    EXPECT_EQ(Next(zip), walk.back());
    EXPECT_EQ(Next(zip), walk.back());
    CString name;
    unsigned char* data = nullptr;
    DWORD size = 0;
    ASSERT_EQ(zip.GetFirstFile(name, &data, &size), 1);
    EXPECT_EQ(test::Taken(data, size), "stored");
    EXPECT_EQ(Next(zip), walk[1]);
    EXPECT_EQ(zip.GetNextFile(name, nullptr, &size, 0) + zip.GetNextFile(name, &data, nullptr, 0), 0);
    EXPECT_EQ(zip.ExtractFileFromZip(_T("readme.txt"), nullptr), 0U);

    CZLibWrapper fresh;  // opening stands at the first
    ASSERT_NE(Open(fresh, MakeZip(ITEMS).bytes), 0);
    EXPECT_EQ(Next(fresh), walk[1]);
}

TEST_F(Zip, ANameIsTheWholePathWithoutCaseAndTheFirstWins) {
    CZLibWrapper zip;
    ASSERT_NE(Open(zip, MakeZip(ITEMS).bytes), 0);
    const std::pair<LPCTSTR, std::string> rows[] = {
        {_T("README.TXT"), "stored"},
        {_T("IMAGES/tooth.TIF"), Long},
        {_T("cut.bin"), ITEMS[3].content},
        {_T("Tooth.tif"), "(untouched)"},
        {_T("images\\Tooth.tif"), "(untouched)"},
        {_T(""), "(untouched)"},
        {_T("images/"), ""},
        {_T("empty"), ""},
    };
    for (int round = 0; round < 2; ++round) {
        for (const auto& [name, content] : rows)
            EXPECT_TRUE(Extract(zip, name) == content) << test::Narrow(name);
    }
    EXPECT_EQ(Extract(zip, _T("readme.txt")), "stored");
    EXPECT_EQ(Next(zip).name, "images/Tooth.tif");  // the walk goes on from there
    EXPECT_EQ(Extract(zip, _T("none")), "(untouched)");
    EXPECT_EQ(Next(zip).name, "empty");
}

TEST_F(Zip, NamesAreInTheAnsiCodePageAndOf260Bytes) {
    const std::string longest(260, 'n');
    CZLibWrapper zip;
    ASSERT_NE(Open(zip, MakeZip({{"\xE4.txt", "umlaut"},
                                 {"\xC3\xA4.txt", "UTF-8"},
                                 {longest + "1", "long"},
                                 {longest + "2", "too"},
                                 {std::string("cut\0off", 7), "zero"},
                                 {"", "nameless"}})
                            .bytes),
              0);
    EXPECT_EQ(Extract(zip, _T("\x00C4.TXT")), "umlaut");
    EXPECT_EQ(Extract(zip, _T("\x00C3\x00A4.txt")), "UTF-8");
    EXPECT_EQ(Next(zip).name, longest);
    EXPECT_EQ(Extract(zip, CString(_T('N'), 260)), "long");
    EXPECT_EQ(Extract(zip, CString(_T('n'), 261)), "(untouched)");
    EXPECT_EQ(Extract(zip, _T("cut")), "zero");
    EXPECT_EQ(Extract(zip, _T("")), "nameless");
}

TEST_F(Zip, OpensBehindEveryCommentAndBytesInFrontAndNothingElse) {
    const std::vector<ZipItem> one = {
        {"a", "A", false, false, test::Little(0x7777, 2) + test::Little(3, 2) + "abc", "of the entry"}};
    for (const std::size_t size : {0, 1, 1003, 1024, 65513, 65514, 65534, 65535}) {
        CZLibWrapper zip;
        EXPECT_NE(Open(zip, MakeZip(one, std::string(size, 'c')).bytes), 0) << size;
        EXPECT_EQ(Extract(zip, _T("A")), "A") << size;
    }
    CZLibWrapper behind;
    EXPECT_NE(Open(behind, "a program that unpacks itself" + MakeZip(one).bytes), 0);
    EXPECT_EQ(Extract(behind, _T("a")), "A");
    for (const std::string& bytes : {std::string(), std::string("P"), std::string(70000, 'P'), MakeZip(one).bytes + Long})
        EXPECT_EQ(Open(*std::make_unique<CZLibWrapper>(), bytes), 0) << bytes.size();
    CZLibWrapper none;
    EXPECT_EQ(none.OpenZipFile(m_folder.Path(_T("none.zip")).c_str()), 0);
    EXPECT_EQ(none.OpenZipFile(m_folder.Path().c_str()), 0);
    EXPECT_EQ(none.GetArchiveFileCount(), -1);
    CString name(_T("kept"));
    unsigned char byte = 0, *first = &byte, *found = &byte;
    DWORD size = 7;
    EXPECT_EQ(none.GetFirstFile(name, &first, &size), 0);
    EXPECT_EQ(none.ExtractFileFromZip(_T("a"), &found), 0U);
    EXPECT_TRUE(first == nullptr && found == nullptr && size == 7 && name == _T("kept"));
}

TEST_F(Zip, ACopySharesTheArchiveAndOpeningAnotherLeavesItOpen) {
    ASSERT_TRUE(m_folder.Write(_T("b.zip"), MakeZip({{"b", "B"}}).bytes).size() > 0);
    CZLibWrapper zip;
    ASSERT_NE(Open(zip, MakeZip({{"1", "one"}, {"2", "two"}, {"3", "three"}}).bytes), 0);
    CZLibWrapper copy = zip;
    EXPECT_EQ(Next(zip).name, "2");
    EXPECT_EQ(Next(copy).name, "3");
    ASSERT_NE(zip.OpenZipFile(m_folder.Path(_T("b.zip")).c_str()), 0);
    EXPECT_EQ(Extract(copy, _T("1")) + Extract(zip, _T("b")), "oneB");
}

// What a damaged archive gives is the beginning of the content and zeros, whatever of its structure is damaged.
TEST_F(Zip, DamageOfAnyFieldGivesNothingButContentAndZeros) {
    const std::vector<ZipItem> items = {
        {"a", "stored stored"},
        {"b", std::string(5000, 'b'), true, false, test::Little(1, 2) + test::Little(8, 2) + "12345678", "note"},
        {"c", "with its sums behind", true, true},
        {"d", "also behind", false, true}};
    const test::ZipLayout made = MakeZip(items, "end");
    std::vector<bool> isData(made.bytes.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        const std::size_t end = i + 1 < items.size() ? made.local[i + 1] : made.central[0];
        std::fill(isData.begin() + static_cast<std::ptrdiff_t>(made.data[i]), isData.begin() + static_cast<std::ptrdiff_t>(end),
                  true);
        isData[made.local[i] + 28] = isData[made.local[i] + 29] = true;  // the length in front of the data moves them
    }
    for (std::size_t place = 0; place < made.bytes.size(); ++place) {
        for (const int change : {0x01, 0xFF}) {
            std::string bytes = made.bytes;
            bytes[place] = static_cast<char>(bytes[place] ^ change);
            CZLibWrapper zip;
            if (Open(zip, bytes) == 0)
                continue;
            Extract(zip, _T("none"));
            for (const auto& [name, content] : test::WalkZip(zip, 6)) {
                const std::string kept = content.substr(0, content.find_last_not_of('\0') + 1);
                const bool known =
                    std::any_of(items.begin(), items.end(), [&](const ZipItem& item) { return item.content.starts_with(kept); });
                ASSERT_TRUE(known || isData[place]) << place << " ^ " << change << ": " << kept;
            }
            for (const ZipItem& item : items)
                Extract(zip, test::Widen(item.name).c_str());
        }
    }
    for (std::size_t cut = 0; cut < made.bytes.size() - 3; ++cut)
        ASSERT_EQ(Open(*std::make_unique<CZLibWrapper>(), made.bytes.substr(0, cut)), 0) << cut;
}

TEST_F(Zip, WhatCannotBeReadIsZerosAndImpossibleSizesAreNone) {
    const struct {
        std::size_t field;  // in the directory record
        std::string value;
        std::string content;
    } rows[] = {
        {10, test::Little(12, 2), std::string(4, '\0')},  // a method that is neither of the two
        {24, test::Little(9, 4), std::string("abcd\0\0\0\0\0", 9)},
        {24, test::Little(2, 4), "ab"},
        {20, test::Little(2, 4), std::string("ab\0\0", 4)},
        {24, test::Little(16 * 1024 * 1024 + 1, 4), ""},
        {24, test::Little(0xFFFFFFFF, 4), ""},
        {42, test::Little(0x7FFFFFFF, 4), std::string(4, '\0')},
        {42, test::Little(0xFFFFFFFF, 4), std::string(4, '\0')},
    };
    for (const auto& [field, value, content] : rows) {
        test::ZipLayout made = MakeZip({{"a", "abcd", false, true}, {"b", "B"}});
        made.bytes.replace(made.central[0] + field, value.size(), value);
        CZLibWrapper zip;
        ASSERT_NE(Open(zip, made.bytes), 0);
        EXPECT_EQ(Next(zip, 1), (test::ZipContent{"a", content})) << field;
        EXPECT_EQ(Extract(zip, _T("A")), content) << field;
        EXPECT_EQ(Extract(zip, _T("b")), "B") << field;
    }
    test::ZipLayout torn = MakeZip({{"a", "A"}, {"b", "B"}, {"c", "C"}});
    torn.bytes[torn.central[1]] = 'X';
    CZLibWrapper zip;
    ASSERT_NE(Open(zip, torn.bytes), 0);
    EXPECT_EQ(test::WalkZip(zip, 9), (std::vector<test::ZipContent>{{"a", "A"}, {"", ""}, {"", ""}}));
    EXPECT_EQ(Extract(zip, _T("a")) + Extract(zip, _T("c")), "A(untouched)");
    EXPECT_EQ(Next(zip).name, "");

    std::string garbage = MakeZip({{"g", Long, true}}).bytes;
    garbage.replace(31, 4, "\xFF\xFF\xFF\xFF");  // no block of deflate begins so
    CZLibWrapper damaged;
    ASSERT_NE(Open(damaged, garbage), 0);
    EXPECT_TRUE(Extract(damaged, _T("g")) == std::string(Long.size(), '\0'));
}

}  // namespace
