#include <gtest/gtest.h>
#include <kadata/image_info.h>

#include <map>
#include <string>

#include "support/temp_folder.h"

using namespace std::string_literals;

namespace {

using test::Narrow;

constexpr unsigned DOCUMENT = 269, DESCRIPTION = 270, PAGE = 285, DATE_TIME = 306;

std::string Number(std::size_t value, std::size_t bytes) {
    std::string text;
    for (; text.size() < bytes; value >>= 8)
        text += static_cast<char>(value & 0xFF);
    return text;
}

// A little-endian TIFF file of one grey pixel, with texts of more than three characters: header, directory, texts.
std::string Tiff(const std::map<unsigned, std::string>& texts) {
    constexpr std::pair<unsigned, std::size_t> numbers[] = {{256, 1}, {257, 1}, {258, 8}, {262, 1}, {273, 0}, {279, 1}};
    std::map<unsigned, std::string> entries;
    std::string directory, data;
    for (const auto& [tag, value] : numbers)
        entries[tag] = Number(3, 2) + Number(1, 4) + Number(value, 4);
    const std::size_t count = entries.size() + texts.size();
    for (const auto& [tag, text] : texts) {
        entries[tag] = Number(2, 2) + Number(text.size() + 1, 4) + Number(8 + 2 + count * 12 + 4 + data.size(), 4);
        data += text + '\0';
    }
    for (const auto& [tag, entry] : entries)
        directory += Number(tag, 2) + entry;
    return "II*\0"s + Number(8, 4) + Number(count, 2) + directory + Number(0, 4) + data;
}

std::string FullTiff() {
    return Tiff({{DOCUMENT, "01VC"}, {DESCRIPTION, "Front"}, {PAGE, "11-12"}, {DATE_TIME, "2024:02:29 23:59:58"}});
}

std::string Told(const CImageInfo& image) {
    const CTime time = image.GetTakeDateTime();
    return Narrow(image.GetImageName() + _T("|") + image.GetTooth()) + "|" + std::to_string(image.GetImageType()) + "|" +
           (time == CTime() ? "none" : Narrow(time.Format(_T("%Y-%m-%d %H:%M:%S"))));
}

// The cause of the CFileException; CFileException::none without one.
int CauseOfReading(const CString& path) {
    try {
        CQuintarTIFF::ReadStandardTags(path);
    } catch (CFileException* e) {
        const int cause = e->m_cause;
        e->Delete();
        return cause;
    }
    return CFileException::none;
}

TEST(ImageFile, TellsWhatItsTagsHold) {
    const std::pair<std::string, const char*> rows[] = {
        {FullTiff(), "Front|11-12|1|2024-02-29 23:59:58"},
        {Tiff({}), "scan, 1||2|none"},
        {Tiff({{DOCUMENT, "X   "}, {DESCRIPTION, " \r\n Front \t\r\nof all"}, {PAGE, "UL, UR"}}), "Front|UL, UR|4|none"},
        {Tiff({{DOCUMENT, "01Vacation"}, {DESCRIPTION, " \n  "}}), "scan, 1||2|none"},
        {Tiff({{DESCRIPTION, "M\xC3\xBCller \xF0\x9F\xA6\xB7"}}), "M\xC3\xBCller \xF0\x9F\xA6\xB7||2|none"},
        {Tiff({{DESCRIPTION, "M\xFCller"}}), "M\xC3\xBCller||2|none"},
        {Tiff({{DATE_TIME, "2023:02:29 00:00:00"}}), "scan, 1||2|none"},
        {Tiff({{DATE_TIME, "1969:12:30 00:00:00"}}), "scan, 1||2|none"},
        {Tiff({{DATE_TIME, "2024:02:28 24:00:00"}}), "scan, 1||2|none"},
        {Tiff({{DATE_TIME, "2024-02-28 12:00:00"}}), "scan, 1||2|none"},
    };
    const test::TempFolder folder;
    folder.MakeFolder(_T("B\u00FCro \u5C71"));
    for (const auto& [bytes, expected] : rows) {
        const CString path(folder.Write(_T("B\u00FCro \u5C71\\scan~k 1.tif"), bytes).c_str());
        CImageInfo image(3, 4, _T("before"), _T("before"), "X");
        image.SetPresent(FALSE);
        image.ReadFromFile(path);
        EXPECT_EQ(Told(image), expected);
        EXPECT_TRUE(image.GetFilePath() == path && image.IsPresent() && image.GetImageID() == -1);
    }
}

TEST(ImageFile, IsSharedWithWhoWritesItAndNamesWhatStandsInTheWay) {
    const test::TempFolder folder;
    const CString path(folder.Write(_T("a.tif"), FullTiff()).c_str());
    const std::pair<UINT, int> rows[] = {{CFile::shareDenyNone, CFileException::none},
                                         {CFile::shareExclusive, CFileException::sharingViolation}};
    for (const auto& [share, cause] : rows) {
        const CFile writer(path, CFile::modeReadWrite | share);
        EXPECT_EQ(CauseOfReading(path), cause);
    }
    EXPECT_EQ(CauseOfReading(folder.Path(_T("b.tif")).c_str()), CFileException::fileNotFound);
    EXPECT_EQ(CauseOfReading(CString()), CFileException::badPath);
}

// The name falls back with the rest, and what the record held besides stays.
TEST(ImageFile, ThatIsNoneIsShownUnderItsName) {
    const test::TempFolder folder;
    for (const std::string& bytes :
         {""s, "\xFF\xD8\xFF\xE0 a photo"s, "II*\0\x08\0\0\0\0\0\0\0\0\0"s, FullTiff().substr(0, 60)}) {
        const CString path(folder.Write(_T("scan~k 1.tif"), bytes).c_str());
        EXPECT_EQ(CauseOfReading(path), CFileException::genericException) << bytes;
        CImageInfo image(3, 4, _T("before"), path, "X");
        image.SetTooth(11u);
        image.SetTakeDateTime(CTime(2024, 2, 29, 0, 0, 0));
        image.SetPresent(FALSE);
        image.ReadFromFile(image.GetFilePath());
        EXPECT_EQ(Told(image), "scan, 1|11|2|2024-02-29 00:00:00");
        EXPECT_TRUE(image.GetFilePath() == path && !image.IsPresent() && image.GetImageID() == 4);
    }
}

// Damage in any place: no crash, no word on the standard error, and the texts are right, missing or the file's name.
TEST(ImageFile, MayBeCutOrDamagedAnywhere) {
    const test::TempFolder folder;
    const std::string whole = FullTiff();
    testing::internal::CaptureStderr();
    for (std::size_t i = 0; i < whole.size(); ++i) {
        CImageInfo image;
        image.ReadFromFile(folder.Write(_T("cut.tif"), whole.substr(0, i)).c_str());
        const std::string told = Told(image);
        EXPECT_TRUE(told.starts_with("cut|") || told.starts_with("Front|")) << i << ": " << told;
        EXPECT_TRUE(told.ends_with("|none") || told.ends_with(" 23:59:58")) << i << ": " << told;
        for (const int damage : {0xFF, 0x01, 0x80}) {
            std::string bytes = whole;
            bytes[i] = static_cast<char>(bytes[i] ^ damage);
            const CString path(folder.Write(_T("damaged.tif"), bytes).c_str());
            image.ReadFromFile(path);
            EXPECT_TRUE(image.GetFilePath() == path && !image.GetImageName().IsEmpty()) << i;
        }
    }
    // A description of 4 GiB that is not there.
    std::string bytes = whole;
    bytes.replace(bytes.find("\x0E\x01\x02\0"s) + 4, 4, "\xFF\xFF\xFF\xFF");
    CImageInfo image;
    image.ReadFromFile(folder.Write(_T("large.tif"), bytes).c_str());
    EXPECT_TRUE(Told(image).starts_with("large|"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(ImageFile, IsReadByTheReaderOfTheHost) {
    const std::pair<CQuintarTIFF::ImageInfoReader, const char*> rows[] = {
        {[](const CString&) -> CImageInfo { AfxThrowArchiveException(CArchiveException::badIndex); }, "a||2|none"},
        {[](const CString&) -> CImageInfo { throw 0; }, "a||2|none"},
        {[](const CString& path) { return CImageInfo(1, 2, path, _T(""), "VC"); }, "C:\\a.vif||1|none"},
    };
    for (const auto& [reader, expected] : rows) {
        EXPECT_EQ(CQuintarTIFF::SetImageInfoReader(reader), &CQuintarTIFF::ReadStandardTags);
        CImageInfo image;
        image.ReadFromFile(_T("C:\\a.vif"));
        EXPECT_EQ(Told(image), expected);
        EXPECT_EQ(CQuintarTIFF::SetImageInfoReader(nullptr), reader);
    }
}

}  // namespace
