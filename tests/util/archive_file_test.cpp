#include <gtest/gtest.h>
#include <kadata/archive.h>

#include <string>

#include "archive_stream_support.h"
#include "directory_test_support.h"
#include "support/archive_bytes.h"
#include "support/temp_folder.h"

namespace {

using test::ArchiveCause;
using test::FileCause;

std::string Pattern(std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(i * 7 + i / 256);
    return bytes;
}

void WriteIn(KaCArchiveFileWriter& file, const std::string& bytes, std::size_t piece) {
    KaCArchive archive(&file);
    for (std::size_t done = 0; done < bytes.size(); done += piece)
        archive.Write(reinterpret_cast<const unsigned char*>(bytes.data()) + done,
                      static_cast<unsigned int>(std::min(piece, bytes.size() - done)));
}

void ExpectReads(KaCArchiveFileReader& file, const std::string& bytes, std::size_t piece) {
    KaCArchive archive(&file);
    std::string read(bytes.size() + piece, '?');
    auto* const target = reinterpret_cast<unsigned char*>(read.data());
    std::size_t done = 0;
    for (; done < bytes.size(); done += std::min(piece, bytes.size() - done))
        archive.Read(target + done, static_cast<unsigned int>(std::min(piece, bytes.size() - done)));
    EXPECT_EQ(ArchiveCause([&] { archive.Read(target, 1); }), CArchiveException::endOfFile);
    EXPECT_TRUE(read.substr(0, done) == bytes);
}

TEST(ArchiveFile, HoldsTheBytesWhateverTheirNumber) {
    const test::TempFolder folder;
    const CString path = folder.Path(_T("file")).c_str();
    constexpr std::size_t BLOCK = 64;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, BLOCK - 1, BLOCK, BLOCK + 1, 5 * BLOCK, 9 * BLOCK + 3}) {
        for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, BLOCK, BLOCK + 1, 4 * BLOCK - 1, 20 * BLOCK}) {
            SCOPED_TRACE(testing::Message() << size << " in pieces of " << piece);
            const std::string bytes = Pattern(size);
            KaCArchiveFileWriter writer(path, BLOCK);
            EXPECT_EQ(writer.GetFilePath(), path);
            WriteIn(writer, bytes, piece);
            writer.Close();
            ASSERT_TRUE(folder.Read(_T("file")) == bytes);

            KaCArchiveFileReader sized(path, BLOCK);
            EXPECT_EQ(sized.GetReadBufferSize(), std::min(size, BLOCK));
            ExpectReads(sized, bytes, piece);
            sized.Close();
            KaCArchiveFileReader open(BLOCK);
            open.Open(path);
            EXPECT_EQ(open.GetReadBufferSize(), BLOCK);
            ExpectReads(open, bytes, piece);
        }
    }
    EXPECT_TRUE(KaCArchiveFileWriter().GetWriteBufferSize() == 4096 && KaCArchiveFileReader().GetReadBufferSize() == 4096);
    EXPECT_EQ(KaCArchiveFileWriter().GetLastBufferPadding(), KaIArchiveWriter::eBufferPaddingNone);
}

TEST(ArchiveFile, LetsNobodyElseInAndNamesWhatCannotBeOpened) {
    const test::TempFolder folder;
    const CString path = folder.Path(_T("file")).c_str(), missing = folder.Path(_T("none")).c_str(),
                  deep = folder.Path(_T("no\\file")).c_str();
    const auto write = [](const CString& name) { KaCArchiveFileWriter{name}; };
    const auto read = [](const CString& name) { KaCArchiveFileReader{name}; };
    const auto expect = [&](const auto& open, const CString& name, int cause) {
        CString told;
        EXPECT_EQ(FileCause([&] { open(name); }, &told), cause);
        EXPECT_EQ(told, cause == CFileException::none ? CString() : name);
    };
    {
        KaCArchiveFileWriter writer(path);
        expect(write, path, CFileException::sharingViolation);
        expect(read, path, CFileException::sharingViolation);
        writer.Open(path);  // its own file is closed first
        EXPECT_EQ(FileCause([&] { writer.Open(deep); }), CFileException::badPath);
        EXPECT_EQ(writer.GetFilePath(), path);
        expect(read, path, CFileException::none);
    }
    KaCArchiveFileReader reader(path);
    expect(write, path, CFileException::sharingViolation);
    expect(read, path, CFileException::sharingViolation);
    expect(read, missing, CFileException::fileNotFound);
    expect(read, deep, CFileException::badPath);
    expect(write, deep, CFileException::badPath);
    EXPECT_FALSE(folder.Has(_T("none")));
}

TEST(ArchiveFile, AClosedFileIsAFailureOfTheFile) {
    unsigned char byte = 0;
    CString path(_T("none"));
    EXPECT_EQ(FileCause([&] { KaCArchiveFileWriter().Write(&byte, 1, 0); }, &path), CFileException::fileNotFound);
    EXPECT_EQ(path, _T(""));
    EXPECT_EQ(FileCause([&] { KaCArchiveFileReader().Read(&byte, 1); }), CFileException::fileNotFound);
}

TEST(ArchiveFile, CutAnywhereItEndsWithEndOfFileAndWhatWasReadIsRight) {
    const test::TempFolder folder;
    const CString path = folder.Path(_T("file")).c_str();
    const CString texts[] = {_T("one"), CString(_T('2'), 300), _T("three")};
    {
        KaCArchiveFileWriter writer(path, 32);
        KaCArchive archive(&writer);
        for (const CString& text : texts)
            archive << text;
    }
    const std::string bytes = folder.Read(_T("file"));
    ASSERT_EQ(bytes.size(), 4U + 6 + 6 + 600 + 4 + 10);
    for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
        folder.Write(_T("file"), bytes.substr(0, cut));
        KaCArchiveFileReader reader(path, 32);
        KaCArchive archive(&reader);
        CString read[3];
        ASSERT_EQ(ArchiveCause([&] { archive >> read[0] >> read[1] >> read[2]; }), CArchiveException::endOfFile) << cut;
        ASSERT_TRUE(read[0] == (cut < 10 ? _T("") : texts[0]) && read[1] == (cut < 616 ? CString() : texts[1])) << cut;
    }
}

TEST(ArchiveFile, AReaderThatWasMadeWithAPathKeepsItsSize) {
    const test::TempFolder folder;
    const CString path = folder.Write(_T("file"), "abc").c_str(), other = folder.Write(_T("other"), "defgh").c_str();
    KaCArchiveFileReader reader(path);
    unsigned char bytes[9] = {};
    EXPECT_EQ(reader.Read(bytes, 2), 2U);
    reader.Open(other);
    EXPECT_EQ(reader.Read(bytes, 9), 1U);
    EXPECT_EQ(bytes[0], 'd');
    EXPECT_EQ(reader.Read(bytes, 9), 0U);
}

}  // namespace
