// The front end, with its folder beside the executable. Each case runs in a child, because a process sets its log up once.

#include <gtest/gtest.h>
#include <kadata/log.h>

#include "log_reader.h"
#include "support/child_process.h"

namespace {

using test::LoggedBy;

int PrintEveryCategory(const test::ChildArgs& /*args*/) {
    CLog::Print(CLogError(), _T("before the configuration nothing is enabled"));
    CLog::SetLogConfig({1 | 2 | 4, 10, 1000000});
    for (DWORD kind = 0; kind < 5; ++kind)
        CLog::Print(CLogError(kind), _T("kind %u"), kind);
    CLog::Print(CLogWarning(), _T("%s"), CString(_T("w")));
    CLog::Print(CLogInfo(), _T("i"));
    CLog::Print(CLogTrace(), _T("not enabled"));
    const CString format = _T("run time %d");
    CLog::Print(CLogInfo(), format, 5);
    return CLog::GetLogStatus() == 7 ? 0 : 1;
}
REGISTER_CHILD(PrintEveryCategory)

TEST(Log, MarksEachCategory) {
    EXPECT_EQ(LoggedBy(_T("PrintEveryCategory")),
              "HEADER@Error; @Catch;\tkind 0\n\nHEADER@Error; @Info;\tkind 1\n\nHEADER@Error; @Handled;\tkind 2\n\n"
              "HEADER@Error; @ECorrelation;\tkind 3\n\nHEADER??\tkind 4\n\nHEADER@Warning;\tw\n\nHEADER@Info;\ti\n\n"
              "HEADER@Info;\trun time 5\n\n");
}

int PrintNothing(const test::ChildArgs& /*args*/) {
    CLog::SetLogConfig({0, 10, 1000000});
    CLog::Print(CLogError(), _T("never"));
    return 0;
}
REGISTER_CHILD(PrintNothing)

TEST(Log, WritesNothingWithAMaskOfZero) {
    EXPECT_EQ(LoggedBy(_T("PrintNothing")), "");
}

int PrintLongAndBroken(const test::ChildArgs& /*args*/) {
    CLog::SetLogConfig({15, 10, 1000000});
    CLog::Print(CLogInfo(), _T("%s"), CString(_T('x'), 3000));
    CLog::Print(CLogInfo(), _T("a\nb\r\nc\r"));
    CLog::Print(CLogInfo(), _T("%s"), CString(_T('\n'), 2047));
    return 0;
}
REGISTER_CHILD(PrintLongAndBroken)

TEST(Log, CutsLongTextsAndMakesWholeLineEnds) {
    const std::string log = LoggedBy(_T("PrintLongAndBroken"));
    EXPECT_TRUE(log.starts_with("HEADER@Info;\t" + std::string(2047, 'x') + "\n\nHEADER@Info;\ta\n"));
    const std::size_t second = log.find("\ta\n");
    const std::size_t b = log.find("b\n", second);
    EXPECT_EQ(log.substr(second + 3, b - second - 3).find_first_not_of(' '), std::string::npos) << "a blank header";
    EXPECT_EQ(log.find("c\r\n\n", b) != std::string::npos, true);
    EXPECT_TRUE(log.ends_with("HEADER@Info;\t" + std::string(2049, '\n')));
}

class CAccess : public CLogFile {
public:
    using CLogFile::DestroyInstance;
};

int UseTheSecondInstance(const test::ChildArgs& /*args*/) {
    if (CLogFile::HasInstance())
        return 1;
    CLogFile* const instance = CLogFile::GetInstance();
    instance->PrintCore(_T("direct\r\n"));
    const bool same = CLogFile::GetInstance() == instance && CLogFile::HasInstance();
    CAccess::DestroyInstance();
    return same && !CLogFile::HasInstance() ? 0 : 2;
}
REGISTER_CHILD(UseTheSecondInstance)

TEST(Log, OffersAnInstanceForDirectUse) {
    const std::string log = LoggedBy(_T("UseTheSecondInstance"));
    EXPECT_TRUE(log.ends_with(";  direct\n")) << log;
    EXPECT_EQ(log.size(), std::string("2026-03-01;  07:05:09;  direct\n").size());
}

}  // namespace
