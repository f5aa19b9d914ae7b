#include <gtest/gtest.h>
#include <kadata/patient.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "support/temp_folder.h"

using namespace std::string_literals;

namespace {

// A record of zeros, and bytes put where the layout has them.
std::string Record(std::size_t size, std::initializer_list<std::pair<std::size_t, std::string>> parts) {
    std::string record(size, '\0');
    for (const auto& [offset, bytes] : parts)
        record.replace(offset, bytes.size(), bytes);
    return record;
}

// The bytes of a converted record, which held something else before.
std::string DatabaseBytes(const CPatient& patient) {
    std::string bytes(297, '\xAA');
    patient.ConvertToTPatient(reinterpret_cast<tagTPATIENT*>(bytes.data()));
    return bytes;
}

std::string ImagingBytes(const CPatient& patient) {
    std::string bytes(112, '\xAA');
    patient.ConvertToPatient(reinterpret_cast<tagPATIENT*>(bytes.data()), CTime(2024, 2, 29, 12, 0, 0));
    return bytes;
}

CPatient Anna() {
    CPatient patient(_T("Anna"), _T("Miller"), {1980, 1, 31, 2, 3, 4, 5}, _T("A-17"));
    patient.SetPatientID(0x01020304);
    patient.SetRecordFlag(7);
    return patient;
}

CPatient Nobody() {
    CPatient patient(_T(""), _T(""), {-1, 0x0102, 0x0203, 0, 0, 0, 0}, _T(""));
    patient.SetPatientID(-5);
    return patient;
}

TEST(Records, HaveEachFieldAtItsOffset) {
    const std::string time = "\xBC\x07\x01\x00\x1F\x00\x02\x00\x03\x00\x04\x00\x05\x00\x00\x00"s;
    EXPECT_EQ(DatabaseBytes(Anna()),
              Record(297, {{0, "\x04\x03\x02\x01"}, {4, "\x01"}, {8, "A-17"}, {144, "Miller"}, {177, "Anna"}, {210, time}}));
    EXPECT_EQ(DatabaseBytes(Nobody()), Record(297, {{4, "\x01"}, {210, "\x6C\x07\x01\x00\x01"s}}));
    const std::string made = "\xE8\x07\x02\x1D-";
    EXPECT_EQ(ImagingBytes(Anna()),
              Record(112, {{0, "Miller"}, {33, "Anna"}, {66, "\xBC\x07\x01\x1F"}, {70, made}, {87, "\x04\x03"}, {89, "A-17"}}));
    EXPECT_EQ(ImagingBytes(Nobody()), Record(112, {{66, "\xFF\xFF\x02\x03"}, {70, made}}));
    Anna().ConvertToTPatient(nullptr);
    Anna().ConvertToPatient(nullptr);
}

TEST(DatabaseRecord, IsReadFieldByField) {
    std::string bytes = Record(297, {{0, "\xFE\xFF\xFF\xFF"},
                                     {4, "\x02\x00\x00\x80"s},
                                     {8, "A-17\0no more"s},
                                     {41, std::string(65, 'x')},
                                     {144, "Miller"},
                                     {177, std::string(33, 'f')},
                                     {226, std::string(71, 'y')},  // the first name fills its field
                                     {210, "\xFF\xFF\x0D\x00\x20\x00\x02\x00\x03\x00\x04\x00\x05\x00\x00\x01"s}});
    const auto& record = *reinterpret_cast<const tagTPATIENT*>(bytes.data());
    CPatient patient;
    patient.SetSpareText(_T("spare"));
    patient = record;
    EXPECT_EQ(patient.GetPatientID(), -2);
    EXPECT_EQ(patient.GetRecordFlag(), -2147483646);
    EXPECT_EQ(patient.GetExtID(), CString(_T("A-17")));
    EXPECT_EQ(patient.GetName(), CString(_T("Miller")));
    EXPECT_EQ(patient.GetFirstName(), CString(_T('f'), 33));
    EXPECT_EQ(patient.GetSpareText(), CString(_T("spare")));
    EXPECT_FALSE(patient.HasKlidaID());
    const TIMESTAMP_STRUCT asItStands = {-1, 13, 32, 2, 3, 4, 0x01000005};
    EXPECT_EQ(std::memcmp(&patient.GetBirthDay(), &asItStands, sizeof(asItStands)), 0);
    bytes[106] = 'K';
    EXPECT_TRUE(CPatient(record).HasKlidaID());
}

TEST(ImagingRecord, IsMadeTodayUnlessToldOtherwise) {
    tagPATIENT record;
    const CTime before = CTime::GetCurrentTime();
    CPatient().ConvertToPatient(&record);
    const auto isDayOf = [&, day = record.recordDay](const CTime& time) {
        return day.year == time.GetYear() && day.month == time.GetMonth() && day.day == time.GetDay();
    };
    EXPECT_TRUE(isDayOf(before) || isDayOf(CTime::GetCurrentTime()));
    const tagKADATE day = CPatient::CTime2KaDate(CTime(__time64_t{1} << 62));  // has no local form
    EXPECT_TRUE(day.year == 1880 && day.month == 1 && day.day == 1);
}

TEST(Records, CutTextsSoThatTheTerminatorFits) {
    const std::string bytes = "abcdefghijklmnopqrstuvwxyzabcdefghijk";
    for (const std::size_t length : {20, 21, 32, 33, 37}) {
        const CString text = test::Widen(bytes.substr(0, length)).c_str();
        const std::string database = DatabaseBytes(CPatient(text, text, {}, text));
        const std::size_t kept = std::min<std::size_t>(length, 32);
        for (const std::size_t offset : {8, 144, 177})
            EXPECT_EQ(database.substr(offset, 33), bytes.substr(0, kept) + std::string(33 - kept, '\0')) << length;
        EXPECT_EQ(ImagingBytes(CPatient(text, text, {}, text)).substr(89), bytes.substr(0, 20) + "\0\0\0"s) << length;
    }
}

TEST(AnsiText, EndsAtTheFirstZeroAndStaysInItsBounds) {
    const TCHAR units[] = {_T('A'), _T('B'), 0, _T('C')};
    for (const auto& [size, expected] : {std::pair(8, "AB\0xx"s), std::pair(2, "A\0xxx"s), std::pair(1, "\0xxxx"s),
                                         std::pair(0, "xxxxx"s), std::pair(-1, "xxxxx"s)}) {
        std::string target(5, 'x');
        CPatient::CopyAsciiString(target.data(), CString(units, 4), size);
        EXPECT_EQ(target, expected) << size;
    }
    CPatient::CopyAsciiString(nullptr, _T("Anna"), 33);
}

}  // namespace
