// The table of case foldings against the one of the system.

#include <gtest/gtest.h>
#include <kadata/record_arrays.h>
#include <unicode/uchar.h>

namespace {

constexpr int NEWEST_VERSION = 15;  // of Unicode, whose characters the table knows

CString TextOf(UChar32 character) {
    const TCHAR pair[] = {static_cast<TCHAR>(U16_LEAD(character)), static_cast<TCHAR>(U16_TRAIL(character))};
    return character < 0x10000 ? CString(static_cast<TCHAR>(character)) : CString(pair, 2);
}

bool IsFound(UChar32 stored, UChar32 wanted) {
    CPatientArray patients;
    patients.Add(CPatient(CString(), TextOf(stored), {}, CString()));
    CPatient found;
    return patients.FindPatientByNameAndBirth(CString(), TextOf(wanted), {}, found) != FALSE;
}

// Whether both tables have the same to say: the system's may be newer.
bool IsOld(UChar32 character) {
    UVersionInfo age;
    u_charAge(character, age);
    const bool foldsSince15_1 = character == 0x1FD3 || character == 0x1FE3 || character == 0xFB05;
    return age[0] != 0 && age[0] <= NEWEST_VERSION && !foldsSince15_1;
}

TEST(LinuxIcu, FoldsEveryCharacterAsTheLibraryDoes) {
    int folded = 0;
    for (UChar32 c = 0; c <= UCHAR_MAX_VALUE; ++c) {
        if (!IsOld(c))
            continue;
        const UChar32 folding = u_foldCase(c, U_FOLD_CASE_DEFAULT);
        folded += folding != c;
        for (const UChar32 other : {folding, u_toupper(c), u_tolower(c), u_totitle(c), c ^ 0x20, c + 1}) {
            const bool same = u_foldCase(other, U_FOLD_CASE_DEFAULT) == folding;
            ASSERT_TRUE(!IsOld(other) || IsFound(c, other) == same) << std::hex << c << ' ' << other;
        }
    }
    EXPECT_GT(folded, 1400);
}

}  // namespace
