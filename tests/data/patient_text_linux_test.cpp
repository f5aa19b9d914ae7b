#include <gtest/gtest.h>
#include <kadata/patient.h>

#include "support/temp_folder.h"

namespace {

TEST(PatientBirthday, IsShownInTheShortFormOfTheUsersLocale) {
    const struct {
        LPCTSTR locale;
        LPCTSTR expected;
    } rows[] = {
        {_T("en_US.UTF-8"), _T("1/31/1980")},
        {_T("de_DE.UTF-8"), _T("31.01.1980")},
        {_T("ja_JP.UTF-8"), _T("1980/01/31")},
    };
    TCHAR before[100] = {};
    const bool had = GetEnvironmentVariableW(_T("LC_ALL"), before, 100) != 0;
    for (const auto& row : rows) {
        SetEnvironmentVariableW(_T("LC_ALL"), row.locale);
        CPatient patient;
        patient.SetBirthDay(19800131);
        EXPECT_EQ(test::Narrow(patient.GetBirthDayString().GetString()), test::Narrow(row.expected));
    }
    SetEnvironmentVariableW(_T("LC_ALL"), had ? before : nullptr);
}

}  // namespace
