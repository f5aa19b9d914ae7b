#include <gtest/gtest.h>
#include <kadata/patient.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

using namespace std::string_literals;

namespace {

// A record of zeros, and bytes put where the layout has them.
class Bytes {
public:
    explicit Bytes(std::size_t size) : bytes_(size, '\0') {}
    Bytes& Put(std::size_t offset, std::string_view bytes) {
        bytes_.replace(offset, bytes.size(), bytes);
        return *this;
    }
    const std::string& Get() const { return bytes_; }
    tagTPATIENT AsDatabaseRecord() const {
        tagTPATIENT record;
        std::memcpy(&record, bytes_.data(), sizeof(record));
        return record;
    }

private:
    std::string bytes_;
};

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

TEST(DatabaseRecord, HasEachFieldAtItsOffset) {
    Bytes anna(297);
    anna.Put(0, "\x04\x03\x02\x01").Put(4, "\x01").Put(8, "A-17").Put(144, "Miller").Put(177, "Anna");
    anna.Put(210, "\xBC\x07\x01\x00\x1F\x00\x02\x00\x03\x00\x04\x00\x05\x00\x00\x00"s);
    EXPECT_EQ(DatabaseBytes(Anna()), anna.Get());
    EXPECT_EQ(DatabaseBytes(Nobody()), Bytes(297).Put(4, "\x01").Put(210, "\x6C\x07\x01\x00\x01"s).Get());
    Anna().ConvertToTPatient(nullptr);
}

TEST(DatabaseRecord, IsReadFieldByField) {
    Bytes bytes(297);
    bytes.Put(0, "\xFE\xFF\xFF\xFF").Put(4, "\x02\x00\x00\x80"s).Put(8, "A-17\0no more"s).Put(41, std::string(65, 'x'));
    bytes.Put(144, "Miller").Put(177, std::string(33, 'f')).Put(226, std::string(71, 'y'));  // the first name fills its field
    bytes.Put(210, "\xFF\xFF\x0D\x00\x20\x00\x02\x00\x03\x00\x04\x00\x05\x00\x00\x01"s);
    CPatient patient;
    patient.SetSpareText(_T("spare"));
    patient = bytes.AsDatabaseRecord();
    EXPECT_EQ(patient.GetPatientID(), -2);
    EXPECT_EQ(patient.GetRecordFlag(), -2147483646);
    EXPECT_EQ(patient.GetExtID(), CString(_T("A-17")));
    EXPECT_EQ(patient.GetName(), CString(_T("Miller")));
    EXPECT_EQ(patient.GetFirstName(), CString(_T('f'), 33));
    EXPECT_EQ(patient.GetSpareText(), CString(_T("spare")));
    EXPECT_FALSE(patient.HasKlidaID());
    const TIMESTAMP_STRUCT asItStands = {-1, 13, 32, 2, 3, 4, 0x01000005};
    EXPECT_EQ(std::memcmp(&patient.GetBirthDay(), &asItStands, sizeof(asItStands)), 0);
    EXPECT_TRUE(CPatient(bytes.Put(106, "K").AsDatabaseRecord()).HasKlidaID());
}

TEST(ImagingRecord, HasEachFieldAtItsOffset) {
    Bytes anna(112);
    anna.Put(0, "Miller").Put(33, "Anna").Put(66, "\xBC\x07\x01\x1F").Put(70, "\xE8\x07\x02\x1D").Put(74, "-");
    anna.Put(87, "\x04\x03").Put(89, "A-17");
    EXPECT_EQ(ImagingBytes(Anna()), anna.Get());
    EXPECT_EQ(ImagingBytes(Nobody()), Bytes(112).Put(66, "\xFF\xFF\x02\x03").Put(70, "\xE8\x07\x02\x1D").Put(74, "-").Get());
    Anna().ConvertToPatient(nullptr);
}

TEST(ImagingRecord, IsMadeTodayUnlessToldOtherwise) {
    tagPATIENT record;
    const CTime before = CTime::GetCurrentTime();
    CPatient().ConvertToPatient(&record);
    const auto isDayOf = [&](const CTime& time) {
        return record.recordDay.year == time.GetYear() && record.recordDay.month == time.GetMonth() &&
               record.recordDay.day == time.GetDay();
    };
    EXPECT_TRUE(isDayOf(before) || isDayOf(CTime::GetCurrentTime()));

    const tagKADATE day = CPatient::CTime2KaDate(CTime(__time64_t{1} << 62));  // has no local form
    EXPECT_TRUE(day.year == 1880 && day.month == 1 && day.day == 1);
}

TEST(Records, CutTextsSoThatTheTerminatorFits) {
    const CString letters = _T("abcdefghijklmnopqrstuvwxyzabcdefghijk");
    const std::string bytes = "abcdefghijklmnopqrstuvwxyzabcdefghijk";
    for (const std::size_t length : {20, 21, 32, 33, 37}) {
        const CString text = letters.Left(static_cast<int>(length));
        const std::string database = DatabaseBytes(CPatient(text, text, {}, text));
        const std::size_t kept = std::min<std::size_t>(length, 32);
        for (const std::size_t offset : {8, 144, 177}) {
            EXPECT_EQ(database.substr(offset, 33), bytes.substr(0, kept) + std::string(33 - kept, '\0')) << length;
        }
        EXPECT_EQ(ImagingBytes(CPatient(text, text, {}, text)).substr(89), bytes.substr(0, 20) + "\0\0\0"s) << length;
    }
}

TEST(AnsiText, EndsAtTheFirstZeroAndStaysInItsBounds) {
    const TCHAR units[] = {_T('A'), _T('B'), 0, _T('C')};
    const struct {
        int size;
        std::string expected;  // of eight bytes that were all x
    } rows[] = {
        {8, "AB\0xxxxx"s}, {3, "AB\0xxxxx"s}, {2, "A\0xxxxxx"s}, {1, "\0xxxxxxx"s}, {0, "xxxxxxxx"s}, {-1, "xxxxxxxx"s},
    };
    for (const auto& row : rows) {
        std::string target(8, 'x');
        CPatient::CopyAsciiString(target.data(), CString(units, 4), row.size);
        EXPECT_EQ(target, row.expected) << row.size;
    }
    CPatient::CopyAsciiString(nullptr, _T("Anna"), 33);
}

}  // namespace
