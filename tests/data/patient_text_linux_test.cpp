#include <gtest/gtest.h>
#include <kadata/patient.h>

#include "support/environment.h"

TEST(PatientBirthday, IsShownInTheShortFormOfTheUsersLocale) {
    const std::pair<LPCTSTR, LPCTSTR> rows[] = {{_T("en_US.UTF-8"), _T("1/31/1980")}, {_T("ja_JP.UTF-8"), _T("1980/01/31")}};
    for (const auto& [locale, expected] : rows) {
        const test::InEnvironment chosen(_T("LC_ALL"), locale);
        EXPECT_EQ(CPatient(_T("Miller, Anna,19800131")).GetBirthDayString(), CString(expected));
    }
}
