#include <gtest/gtest.h>
#include <kadata/tarvo_exception.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace {

using test::Narrow, test::Text;
using Mode = CTarvoException::EDisplayMode;

class CAccess : public CTarvoException {
public:
    using CTarvoException::CTarvoException;
    explicit CAccess(const CTarvoException& e) : CTarvoException(e) {}
    using CTarvoException::GetFileAndLine;
};

TEST(TarvoException, KeepsWhatItWasMadeWithAndSoDoesItsClone) {
    CTarvoException withDetails(30, _T("d"));
    CTarvoException text(_T("only a text"));
    CTarvoException variant(1, 21, _T("d"), "C:\\build\\core\\Archive.cpp", 12);
    CTarvoException complete(30, _T("d"), "Archive.cpp", 8, Mode::eWarning);
    CTarvoException noDetails(1058, "a\\b.cpp", 9, Mode::eNothing);
    CTarvoException other(1058, "/core/a.cpp", 10, Mode::eError);
    const struct {
        CTarvoException& exception;
        UINT id;
        const char* details;
        const char* place;
        BOOL nothing;
    } rows[] = {
        {withDetails, 30, "d", "", FALSE},
        {text, 0xFFFFFFFF, "only a text", "", TRUE},
        {variant, 21, "d", "File core\\Archive.cpp, Line 12", FALSE},
        {complete, 30, "d", "File Archive.cpp, Line 8", FALSE},
        {noDetails, 1058, "", "File a\\b.cpp, Line 9", TRUE},
        {other, 1058, "", "File /core/a.cpp, Line 10", FALSE},
    };
    EXPECT_STREQ(text.GetRuntimeClass()->m_lpszClassName, "CTarvoException");
    EXPECT_TRUE(text.IsKindOf(RUNTIME_CLASS(CException)));
    for (const auto& row : rows) {
        EXPECT_FALSE(row.exception.IsFatal());
        row.exception.SetFatal(TRUE);
        const std::unique_ptr<CTarvoException> clone(row.exception.Clone());
        for (CTarvoException* e : {&row.exception, clone.get()}) {
            EXPECT_EQ(e->GetMessageTextID(), row.id);
            EXPECT_EQ(Narrow(e->GetMessageDetails()), row.details);
            EXPECT_EQ(e->GetbShowNothing(), row.nothing) << row.id;
            EXPECT_TRUE(e->IsFatal());
            EXPECT_EQ(Narrow(CAccess(*e).GetFileAndLine()), row.place);
        }
    }
}

TEST(TarvoException, FindsItsMessageInTheHostsResources) {
    const struct {
        UINT id;
        int variant;
        const char* message;
        const char* withoutDebugInfo;
    } rows[] = {
        {30, 0, "Message of %1 and %2, %1 of 100%", "Message of %1 and %2, %1 of 100%\nd"},
        {21, 0, "Scan failed 2000", "Scan failed 1000\nd"},
        {21, 5, "Scan failed 1000", "Scan failed 2000\nd"},
        {4711, 0, "Unknown Message ID", "Unknown Message ID\nd"},
        {0xFFFFFFFF, 0, "No Message Text", "No Message Text\nd"},
    };
    for (const auto& row : rows) {
        CTarvoException e(row.variant, row.id, _T("d"), nullptr, 0);
        EXPECT_EQ(Narrow(e.GetMessageText()), row.message);
        EXPECT_EQ(Narrow(e.GetErrorMessageWithoutDebugInfo()), row.withoutDebugInfo);
    }
    const CString text = CTarvoException::GetLastErrorMessage(ERROR_FILE_NOT_FOUND);
    EXPECT_GT(text.GetLength(), 5) << Narrow(text);
    EXPECT_EQ(Narrow(CTarvoException::GetLastErrorMessage(0x2FFFFFFF)), "");
}

TEST(TarvoException, TellsItsFileWithTheErrorMessage) {
    const std::string longName(300, 'f');
    const struct {
        const char* file;
        Text end;
    } rows[] = {{nullptr, _T("")},
                {"C:\\core\\\xFC.cpp", _T("\nC:\\core\\\u00FC.cpp @ 12")},  // code page 1252
                {longName.c_str(), _T("\n") + Text(255, _T('f')) + _T(" @ 12")}};
    for (const auto& row : rows) {
        TCHAR text[512];
        UINT help = 77;
        EXPECT_TRUE(CTarvoException(1058, _T("d"), row.file, 12, Mode::eDefault).GetErrorMessage(text, 512, &help));
        EXPECT_EQ(help, 0u);
        EXPECT_EQ(Narrow(text), Narrow(_T("Damaged data\nd") + row.end));
    }
}

TEST(TarvoException, CutsItsTextsToTheBuffer) {
    using Get = std::function<BOOL(TCHAR*, UINT)>;
    const CTarvoException e(1058, CString(), "x.cpp", 1, Mode::eDefault);
    const CTarvoException tooth(_T("\U0001F9B7"));
    const Get message = [&](TCHAR* text, UINT size) { return e.GetMessageText(text, size); };
    const Get error = [&](TCHAR* text, UINT size) { return e.GetErrorMessage(text, size); };
    const Get pair = [&](TCHAR* text, UINT size) { return tooth.GetErrorMessage(text, size); };
    const struct {
        const Get& get;
        UINT size;
        Text left;
    } rows[] = {
        {message, 0, _T("#")}, {message, 1, _T("")}, {message, 12, _T("Damaged dat")},   {message, 13, _T("Damaged data")},
        {error, 0, _T("#")},   {error, 1, _T("")},   {error, 15, _T("Damaged data\nx")}, {pair, 18, _T("No Message Text\n")}};
    for (const auto& row : rows) {
        Text text(64, _T('#'));
        EXPECT_TRUE(row.get(text.data(), row.size)) << row.size;
        EXPECT_EQ(Narrow(text.substr(0, row.left.size())), Narrow(row.left));
        EXPECT_EQ(text[row.left.size()], row.size == 0 ? _T('#') : 0) << row.size;
        EXPECT_EQ(text.find_first_not_of(_T('#'), std::max(row.size, 1u)), Text::npos) << "written behind " << row.size;
    }
    EXPECT_TRUE(e.GetMessageText(nullptr, 5));
}

// What the user is shown, and what he answers.
class TarvoExceptionDisplay : public testing::Test {
protected:
    struct Box {
        std::string text;
        UINT style;
        bool operator==(const Box&) const = default;
        friend std::ostream& operator<<(std::ostream& out, const Box& box) { return out << box.text << " (" << box.style << ")"; }
    };
    using Boxes = std::vector<Box>;
    static constexpr int kYes = 6, kNo = 7;
    static constexpr UINT kError = 16, kWarning = 48, kInformation = 64, kQuestion = 276;

    static int Show(LPCTSTR text, UINT style) {
        boxes_.push_back({Narrow(text), style});
        return answer_;
    }
    void SetUp() override { before_ = CTarvoException::SetBoxFunction(Show); }
    void TearDown() override { EXPECT_EQ(CTarvoException::SetBoxFunction(before_), &Show); }

    template <class Call>
    static Boxes BoxesOf(int answer, Call call) {
        boxes_.clear();
        answer_ = answer;
        call();
        return boxes_;
    }

private:
    static inline Boxes boxes_;
    static inline int answer_ = 0;
    CTarvoException::BoxFunction before_ = nullptr;
};

TEST_F(TarvoExceptionDisplay, IsAsTheModeSays) {
    const struct {
        Mode mode;
        UINT id;
        const TCHAR* details;
        int answer;
        Boxes boxes;
        UINT idAfter;
    } rows[] = {
        {Mode::eError, 1059, _T(""), 1, {{"Other data", kError}}, 1059},
        {Mode::eWarning, 1058, _T("d"), 1, {{"Damaged data\nd", kWarning}}, 1058},
        {Mode::eInformation, 4711, _T("d"), 1, {{"Unknown Message ID\nd", kInformation}}, 4711},
        {Mode::eNothing, 1059, _T("d"), kYes, {}, 1059},
        {Mode::eDefault, 1059, _T(""), 1, {{"Damaged data", kError}}, 1058},
        {Mode::eDefault, 1062, _T("d"), kNo, {{"Related data\n\nDetails?", kQuestion}}, 1062},
    };
    for (const auto& row : rows) {
        CTarvoException e(row.id, row.details, nullptr, 0, row.mode);
        EXPECT_EQ(BoxesOf(row.answer, [&] { e.Display(); }), row.boxes);
        EXPECT_EQ(e.GetMessageTextID(), row.idAfter);
    }
}

TEST_F(TarvoExceptionDisplay, ShowsDetailsOnDemand) {
    const struct {
        int mode;
        UINT id;
        const char* message;
        const char* hint;
    } rows[] = {{0, 1058, "Damaged data", "Hint 229"},
                {0, 1059, "Damaged data", "Hint 229"},
                {0, 1062, "Related data", "Hint 229"},
                {5, 21, "Scan failed 2000", "Hint 230"}};
    for (const auto& row : rows) {
        CTarvoException e(row.id, _T("d"), nullptr, 0, static_cast<Mode>(row.mode));
        const Boxes expected = {{std::string(row.message) + "\n\nDetails?", kQuestion},
                                {std::string("Head\nd\n\n") + row.hint + "\n\nEnd", kWarning}};
        EXPECT_EQ(BoxesOf(kYes, [&] { e.Display(); }), expected);
    }
}

TEST_F(TarvoExceptionDisplay, ShowsAtMost1023CharactersWithoutDetails) {
    class CLongMessage : public CTarvoException {
    public:
        using CTarvoException::CTarvoException;
        CString GetMessageText() override { return CString(_T('m'), 3000); }
    };
    const auto textOf = [](CTarvoException&& e) { return BoxesOf(kNo, [&] { e.Display(); }).at(0).text; };
    EXPECT_EQ(textOf(CLongMessage(30, nullptr, 0, Mode::eDefault)), std::string(1023, 'm'));
    EXPECT_EQ(textOf(CLongMessage(30, _T("d"))), std::string(3000, 'm') + "\n\nDetails?");
    EXPECT_EQ(textOf(CLongMessage(30, nullptr, 0, Mode::eError)), std::string(3000, 'm'));
}

TEST_F(TarvoExceptionDisplay, OfAnUnhandledExceptionTellsWhereItHappened) {
    const std::string longName(600, 'f');
    const std::string place = "Head\nFile: a.cpp\nLine: 12", end = "\n\nHint 229\n\nEnd";
    const Box question = {"Other data\n\nDetails?", kQuestion};
    const struct {
        UINT id;
        const char* file;
        int answer;
        Boxes boxes;
    } rows[] = {
        {1059, "C:\\core\\a.cpp", kNo, {question}},
        {1059, "C:\\core\\a.cpp", kYes, {question, {place + end, kWarning}}},
        {1059, "/build/core/a.cpp", kYes, {question, {place + end, kWarning}}},
        {1059, "a.cpp", kYes, {question, {place + end, kWarning}}},
        {1059, nullptr, kYes, {question, {"Head" + end, kWarning}}},
        {1059, longName.c_str(), kYes, {question, {"Head\nFile: " + std::string(511 - 6, 'f') + end, kWarning}}},
        {4711, nullptr, kNo, {{"Unknown Message ID\n\nDetails?", kQuestion}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(BoxesOf(row.answer, [&] { CTarvoException::DisplayUnhandledException(row.id, row.file, 12); }), row.boxes);
}

}  // namespace
