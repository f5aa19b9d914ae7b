#include <gtest/gtest.h>
#include <kadata/image_info.h>
#include <kadata/patient.h>

#include <string>

#include "support/temp_folder.h"

namespace {

using test::Narrow;

// Differs from a new record in every member.
CImageInfo Full() {
    CImageInfo image(-5, 7, _T(""), _T("C:\\Images\\front tooth.final.jpg"), "01X3");
    image.SetDirectory(_T("2024"));
    image.SetImageName(_T("Front"));
    image.SetTooth(11u);
    image.SetPresent(FALSE);
    return image;
}

TEST(ImageInfo, TellsItsPlaces) {
    const struct {
        LONG patientId;
        LPCTSTR path;
        const char *name, *imagePath;
    } rows[] = {{1234567, _T("a"), "a", "TARVO\\P_1234567\\a"},
                {-5, _T("..\\a/b.c.tif"), "b.c.tif", "TARVO\\P_-000005\\b.c.tif"},
                {0, _T("C:\\x\\"), "", "TARVO\\P_000000"}};
    for (const auto& row : rows) {
        const CImageInfo image(row.patientId, 1, _T(""), row.path, nullptr);
        EXPECT_EQ(Narrow(image.GetFileName()), row.name);
        EXPECT_EQ(Narrow(image.GetImagePath()), row.imagePath);
    }
    CImageInfo image;
    EXPECT_TRUE(image == CImageInfo(0, -1, CString(), CString(), nullptr) && image.IsPresent());
    EXPECT_EQ(Narrow(image.GetRegion() + Full().GetRegion()), "  11");
    image.SetDirectory(_T("2025"));
    EXPECT_EQ(Narrow(image.GetDirectory(TRUE) + _T("|") + image.GetImageName()), "2025|2025");
    EXPECT_EQ(Narrow(Full().GetDirectory(TRUE) + _T("|") + Full().GetDirectory(FALSE)), "2024 *|2024");
}

TEST(ImageInfo, HasATypeFromItsTakeType) {
    const std::pair<const char*, int> codes[] = {
        {nullptr, 16}, {"", 16}, {"VC", 1},   {"01VC", 1}, {"VCX", 2},  {"0VC", 16}, {"01VCX", 2},
        {"V", 2},      {"X", 4}, {"VXVC", 1}, {"01X3", 4}, {"01VI", 2}, {"vc", 16},  {"01 X", 16},
    };
    for (const auto& [code, type] : codes) {
        CImageInfo image;
        image.SetImageType(CImageInfo::StoredVideo);
        image.SetImageTypeByTakeType(code);
        EXPECT_EQ(image.GetImageType(), type) << (code == nullptr ? "null" : code);
    }
    CImageInfo::SetImageTypeNames(501, 999, 0, 516, 501);  // the host has no string 999
    std::string names;
    for (const LONG type : {1, 2, 4, 8, 16, 3, 17, -1}) {
        CImageInfo image;
        image.SetImageType(static_cast<CImageInfo::EImageType>(type));
        names += Narrow(image.GetTakeType() + image.GetImageTypeString() + _T("|"));
    }
    EXPECT_EQ(names, "VCCamera|VI|??|VISomething else|??Camera|??|??|??|");
    CImageInfo::SetImageTypeNames(0, 0, 0, 0, 0);
}

TEST(ImageInfo, ShowsTheLocalDayAsABirthdayIsShown) {
    CPatient born;
    born.SetBirthDay(20240229);
    const CTime time(2024, 2, 29, 23, 59, 58);  // local
    const std::pair<CTime, std::string> rows[] = {{CTime(0), "?"},
                                                  {time, Narrow(born.GetBirthDayString())},
                                                  {CTime(-1), "?"},
                                                  {CTime(__time64_t{1} << 60), "?"}};  // without a local form
    CImageInfo image;
    EXPECT_EQ(image.GetTakeDateTime(), CTime());
    for (const auto& [taken, expected] : rows) {
        image.SetTakeDateTime(taken);
        EXPECT_EQ(image.GetTakeDateTime(), taken > CTime() ? taken : CTime());
        EXPECT_EQ(Narrow(image.GetTakeDateTimeString()), expected);
    }
}

TEST(ImageInfo, IsCopiedWithATakeTimeOfItsOwnAndThenUnequal) {
    CImageInfo image = Full(), copy = image;
    EXPECT_TRUE(copy == image);
    image.SetTakeDateTime(CTime(2));
    copy = image;
    EXPECT_TRUE(image == image && copy != image && image != CImageInfo(image));
    copy.SetTakeDateTime(CTime(1));
    const CImageInfo& self = image;
    image = self;
    EXPECT_EQ(image.GetTakeDateTime(), CTime(2));
    image = CImageInfo();
    EXPECT_TRUE(image == CImageInfo());
}

TEST(ImageInfo, IsUnequalInEveryMember) {
    void (*const changes[])(CImageInfo&) = {
        [](CImageInfo& i) { i.SetFilePath(_T("C:\\Images\\Front tooth.final.jpg")); },
        [](CImageInfo& i) { i.SetImageID(8); },
        [](CImageInfo& i) { i.SetPatientID(5); },
        [](CImageInfo& i) { i.SetImageName(_T("front")); },
        [](CImageInfo& i) { i.SetDirectory(_T("2025")), i.SetImageName(_T("Front")); },
        [](CImageInfo& i) { i.SetTooth(_T("12")); },
        [](CImageInfo& i) { i.SetImageType(CImageInfo::Video); },
        [](CImageInfo& i) { i.SetPresent(TRUE); },
    };
    for (const auto& change : changes) {
        CImageInfo image = Full();
        change(image);
        EXPECT_TRUE(image != Full() && image == CImageInfo(image)) << &change - changes;  // which copies all of them
    }
}

}  // namespace
