#include <gtest/gtest.h>
#include <kadata/archive.h>

#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "archive_stream_support.h"
#include "directory_test_support.h"
#include "support/archive_bytes.h"

namespace {

using test::ArchiveCause;
using test::Sink;
using test::Source;

const unsigned char* Bytes(const std::string& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

std::string Written(const std::function<void(KaCArchive&)>& write, unsigned int blockSize = 16) {
    Sink sink(blockSize, KaIArchiveWriter::eBufferPaddingNone);
    KaCArchive archive(&sink);
    write(archive);
    archive.Flush();
    return sink.All();
}

// Opens what hosts reach by deriving.
class OpenArchive : public KaCArchive {
public:
    using KaCArchive::KaCArchive;
    using KaCArchive::WriteStringLength;
};

TEST(ArchiveStream, ATextHasTheFormOfTheFoundationsArchiveAndEachReadsTheOther) {
    const std::pair<int, std::string> rows[] = {
        {0, {"\xFF\xFE\xFF\0", 4}},
        {1, "\xFF\xFE\xFF\x01"},
        {64, "\xFF\xFE\xFF\x40"},
        {254, "\xFF\xFE\xFF\xFE"},
        {255, {"\xFF\xFE\xFF\xFF\xFF\0", 6}},
        {65533, "\xFF\xFE\xFF\xFF\xFD\xFF"},
        {65534, {"\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\0\0", 10}},
        {70000, {"\xFF\xFE\xFF\xFF\xFF\xFF\x70\x11\x01\0", 10}},
    };
    for (const auto& [length, prefix] : rows) {
        SCOPED_TRACE(length);
        const CString text(_T('\x0141'), length);
        std::string expected = prefix;
        for (int i = 0; i < length; ++i)
            expected += "\x41\x01";
        EXPECT_EQ(Written([&](KaCArchive& archive) { archive << text; }), expected);
        EXPECT_EQ(test::StoredBytes([&](CArchive& archive) { archive << text; }), expected);
        CString here, there;
        Source source(expected, 16);
        KaCArchive(&source) >> here;
        *test::LoadingArchive(expected) >> there;
        EXPECT_TRUE(here == text && there == text);
    }
    const std::pair<ULONGLONG, std::string> lengths[] = {
        {0xFFFFFFFE, "\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\xFF\xFF"},
        {0xFFFFFFFF, {"\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\0\0\0\0", 18}},
        {0x8000000000000001, {"\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01\0\0\0\0\0\0\x80", 18}},
    };
    for (const auto& [length, expected] : lengths)
        EXPECT_EQ(Written([&](KaCArchive& archive) { static_cast<OpenArchive&>(archive).WriteStringLength(length); }), expected);
}

TEST(ArchiveStream, ReadsEveryFormOfALengthAndRefusesWhatIsNone) {
    constexpr int ATL = -1;
    const std::string mark = "\xFF\xFE\xFF", data("a\0\0\0", 4);
    const struct {
        std::string bytes;
        int cause;
    } rows[] = {
        {"\x02" + data, 0},  // without a mark
        {mark + "\x02" + data, 0},
        {mark + std::string("\xFF\x02\0", 3) + data, 0},
        {mark + std::string("\xFF\xFF\xFF\x02\0\0\0", 7) + data, 0},
        {mark + std::string("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x02\0\0\0\0\0\0\0", 15) + data, 0},
        {std::string("\xFF\x02\0", 3) + data, CArchiveException::genericException},  // a narrow text
        {mark + "\xFF\xFE\xFF" + data, CArchiveException::endOfFile},                // 65,534 units
        {mark + "\xFF\xFF\xFF\xFE\xFF\xFF\xFF" + data, CArchiveException::endOfFile},
        {mark + std::string("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\0\0\0\0\x01\0\0\0", 15) + data, CArchiveException::endOfFile},
        {mark + "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F" + data, CArchiveException::endOfFile},
        {mark + std::string("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\x80", 15) + data, ATL},
    };
    for (const auto& [bytes, cause] : rows) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        Source source(bytes, 5);
        KaCArchive archive(&source);
        CString text(_T("kept"));
        const int thrown = ArchiveCause([&] {
            try {
                archive >> text;
            } catch (const CAtlException& e) {
                EXPECT_EQ(e.m_hr, static_cast<HRESULT>(0x80070216));
                AfxThrowArchiveException(ATL);
            }
        });
        EXPECT_EQ(thrown, cause);
        EXPECT_TRUE(text == (cause == 0 ? CString(_T("a\0"), 2) : CString(_T("kept")))) << test::Narrow(text);
    }
    for (const int length : {65534, 300}) {  // two bytes hold 0xFFFE too
        std::string bytes = mark + "\xFF";
        bytes += {static_cast<char>(length & 0xFF), static_cast<char>(length >> 8)};
        Source source(bytes + std::string(static_cast<std::size_t>(length) * 2, 'x'), 4096);
        CString text;
        KaCArchive(&source) >> text;
        EXPECT_EQ(text, CString(_T('\x7878'), length));
    }
}

TEST(ArchiveStream, HandsOverEachFullBlockAtOnceAndReadsAcrossEveryBorder) {
    for (unsigned int blockSize = 1; blockSize <= 9; ++blockSize) {
        for (unsigned int piece = 1; piece <= 20; ++piece) {
            SCOPED_TRACE(testing::Message() << blockSize << " " << piece);
            Sink sink(blockSize, KaIArchiveWriter::eBufferPaddingNone);
            KaCArchive archive(&sink);
            std::string all;
            for (unsigned int i = 0; i < 5; ++i) {
                const std::string bytes(piece, static_cast<char>('a' + i));
                archive.Write(Bytes(bytes), piece);
                archive.Write(nullptr, piece);
                archive.Write(Bytes(bytes), 0);
                all += bytes;
                ASSERT_EQ(sink.calls.size(), all.size() / blockSize);
            }
            archive.Flush();
            archive.Flush();
            ASSERT_EQ(sink.All(), all);
            const std::size_t rest = all.size() % blockSize;
            ASSERT_EQ(sink.calls.size(), all.size() / blockSize + (rest != 0));
            for (std::size_t i = 0; i < all.size() / blockSize; ++i)
                ASSERT_TRUE(sink.calls[i].bytes.size() == blockSize && sink.calls[i].padding == 0);
            ASSERT_TRUE(rest == 0 || sink.calls.back().padding == blockSize - rest);

            Source source(all, blockSize);
            KaCArchive reading(&source);
            std::string back(all.size() + 1, '?');
            auto* const target = reinterpret_cast<unsigned char*>(back.data());
            for (unsigned int done = 0; done < all.size(); done += piece)
                ASSERT_EQ(reading.Read(target + done, piece), piece);
            ASSERT_EQ(reading.Read(nullptr, 1) + reading.Read(target, 0), 0U);
            ASSERT_EQ(ArchiveCause([&] { reading.Read(target + all.size(), 1); }), CArchiveException::endOfFile);
            ASSERT_EQ(back, all + "?");
        }
    }
}

TEST(ArchiveStream, CompletesTheLastBlockAsTheSinkAsks) {
    const std::pair<int, std::string> rows[] = {
        {KaIArchiveWriter::eBufferPaddingKeep, "45cd"},
        {KaIArchiveWriter::eBufferPaddingZero, {"45\0\0", 4}},
        {KaIArchiveWriter::eBufferPaddingNone, "45"},
        {4, "45cd"},
        {-1, "45cd"},
    };
    for (const auto& [padding, last] : rows) {
        SCOPED_TRACE(padding);
        Sink sink(4, static_cast<KaIArchiveWriter::EBufferPadding>(padding));
        KaCArchive(&sink).Write(Bytes("abcd45"), 6);
        ASSERT_EQ(sink.calls.size(), 2U);
        EXPECT_EQ(sink.calls[1].bytes, last);
        EXPECT_EQ(sink.calls[1].padding, 2U);
    }
    Sink fresh(4, KaIArchiveWriter::eBufferPaddingKeep);
    KaCArchive(&fresh).Write(Bytes("1"), 1);
    EXPECT_EQ(fresh.All(), std::string("1\0\0\0", 4));

    Sink random(64, KaIArchiveWriter::eBufferPaddingRandom);
    const DWORD before = GetTickCount();
    KaCArchive(&random).Write(Bytes("1"), 1);
    const DWORD after = GetTickCount();
    bool found = false;
    for (DWORD seed = before; !found && seed - before <= after - before; ++seed) {
        std::srand(seed);
        std::string expected = "1";
        while (expected.size() < 64)
            expected += static_cast<char>(std::rand());
        found = random.All() == expected;
    }
    EXPECT_TRUE(found);
    EXPECT_EQ(random.calls[0].padding, 63U);
}

TEST(ArchiveStream, MisuseThrowsTheExceptionForIt) {
    Sink sink(4, KaIArchiveWriter::eBufferPaddingNone), empty(0, KaIArchiveWriter::eBufferPaddingNone);
    Source source(
        "\x01"
        "a",
        4),
        none("", 0);
    KaCArchive writing(&sink), finished(&sink), onNothing(&empty), noSink(static_cast<KaIArchiveWriter*>(nullptr));
    KaCArchive reading(&source), ended(&source), ofNothing(&none), noSource(static_cast<KaIArchiveReader*>(nullptr));
    finished.Flush();
    ended.Flush();
    EXPECT_TRUE(writing.GetKaIArchiveWriter() == &sink && writing.GetKaIArchiveReader() == nullptr);
    EXPECT_TRUE(reading.GetKaIArchiveWriter() == nullptr && reading.GetKaIArchiveReader() == &source);
    EXPECT_EQ(finished.GetKaIArchiveWriter(), nullptr);
    CString text(_T("kept"));
    const std::pair<std::function<void()>, int> rows[] = {
        {[&] { writing >> text; }, CArchiveException::writeOnly},
        {[&] { reading << text; }, CArchiveException::readOnly},
        {[&] { finished << text; }, CArchiveException::genericException},
        {[&] { ended >> text; }, CArchiveException::genericException},
        {[&] { finished >> text; }, CArchiveException::genericException},
        {[&] { ended << text; }, CArchiveException::readOnly},
        {[&] { onNothing << text; }, CArchiveException::genericException},
        {[&] { ofNothing >> text; }, CArchiveException::endOfFile},
        {[&] { noSink << text; }, CArchiveException::genericException},
        {[&] { noSource >> text; }, CArchiveException::genericException},
    };
    for (const auto& [use, cause] : rows)
        EXPECT_EQ(ArchiveCause(use), cause) << &use - &rows[0].first;
    EXPECT_EQ(text, _T("kept"));
    EXPECT_TRUE(sink.calls.empty());
}

TEST(ArchiveStream, AFailingSinkIsToldOfOnceAndNotWhileAnotherExceptionFlies) {
    Sink sink(4, KaIArchiveWriter::eBufferPaddingNone);
    const auto filled = [&] { KaCArchive(&sink).Write(Bytes("abc"), 3); };
    sink.full = true;
    EXPECT_EQ(test::FileCause(filled), CFileException::diskFull);  // by the destructor
    EXPECT_THROW(
        {
            KaCArchive archive(&sink);
            archive.Write(Bytes("abc"), 3);
            throw std::runtime_error("first");
        },
        std::runtime_error);
    EXPECT_EQ(test::FileCause([&] { KaCArchive(&sink).Write(Bytes("abcde"), 5); }), CFileException::diskFull);

    KaCArchive archive(&sink);
    archive.Write(Bytes("abc"), 3);
    EXPECT_EQ(test::FileCause([&] { archive.Flush(); }), CFileException::diskFull);
    EXPECT_EQ(test::FileCause([&] { archive.Write(Bytes("d"), 1); }), CFileException::diskFull);
    sink.full = false;
    archive.Write(Bytes("e"), 1);
    archive.Flush();
    EXPECT_EQ(sink.All(), "abcde");
}

TEST(ArchiveStream, CopiesShareTheBlock) {
    Sink sink(4, KaIArchiveWriter::eBufferPaddingNone);
    KaCArchive archive(&sink);
    alignas(KaCArchive) unsigned char place[sizeof(KaCArchive)];
    auto* const copy = new (place) KaCArchive(archive);  // never destroyed: one of them may be
    archive.Write(Bytes("ab"), 2);
    copy->Write(Bytes("c"), 1);
    archive.Flush();
    EXPECT_EQ(sink.All(), "cb");
}

}  // namespace
