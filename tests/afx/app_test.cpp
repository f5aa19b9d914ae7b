#include <afxwin.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "support/environment.h"
#include "support/handles.h"
#include "support/temp_folder.h"

namespace {

LPTSTR AllocatedCopy(const CString& text) {
    const std::size_t bytes = (static_cast<std::size_t>(text.GetLength()) + 1) * sizeof(TCHAR);
    return static_cast<LPTSTR>(std::memcpy(std::malloc(bytes), text.GetString(), bytes));
}

// The same questions to the registry and to a file.
class Profile : public testing::TestWithParam<bool> {
protected:
    Profile() {
        if (GetParam()) {
            app_.SetRegistryKey(product_.c_str());
        } else {
            std::free(const_cast<LPTSTR>(app_.m_pszProfileName));
            app_.m_pszProfileName = AllocatedCopy(folder_.Path(_T("tests.ini")).c_str());
        }
    }
    ~Profile() override {
        if (GetParam()) {
            CWinApp::DelRegTree(HKEY_CURRENT_USER, CString(_T("Software\\")) + product_.c_str());
        }
    }

    const test::TempFolder folder_;
    const test::InEnvironment hives_{_T("KADATA_REGISTRY_DIR"), folder_.Path(_T("registry")).c_str()};
    const std::basic_string<TCHAR> product_ = test::UniqueName(_T("KaData tests "));
    CWinApp app_{_T("Planner")};
};

TEST_P(Profile, KeepsNumbersAndTexts) {
    EXPECT_EQ(app_.GetProfileInt(_T("S"), _T("n"), -7), static_cast<UINT>(-7));
    EXPECT_EQ(app_.GetProfileString(_T("S"), _T("t"), _T("none")), _T("none"));
    EXPECT_EQ(app_.GetProfileString(_T("S"), _T("t")), _T(""));
    const CString longText('x', 3000);
    for (const int number : {0, 5, -1, INT_MIN}) {
        EXPECT_TRUE(app_.WriteProfileInt(_T("S"), _T("n"), number));
        EXPECT_EQ(app_.GetProfileInt(_T("S"), _T("n"), 99), static_cast<UINT>(number));
    }
    for (const CString& text : {CString(), CString(_T("K\u00E4se \u20AC")), longText}) {
        EXPECT_TRUE(app_.WriteProfileString(_T("S"), _T("t"), text));
        EXPECT_EQ(app_.GetProfileString(_T("S"), _T("t"), _T("none")), text);
    }
    EXPECT_TRUE(app_.WriteProfileString(_T("S"), _T("t"), nullptr) && app_.WriteProfileString(_T("S"), _T("t"), nullptr));
    EXPECT_EQ(app_.GetProfileString(_T("S"), _T("t"), _T("none")), _T("none"));
    EXPECT_TRUE(app_.WriteProfileString(_T("S"), nullptr, nullptr) && app_.WriteProfileInt(_T("Other"), _T("n"), 1));
    EXPECT_EQ(app_.GetProfileInt(_T("S"), _T("n"), 3), 3U);
    EXPECT_EQ(app_.GetProfileInt(_T("Other"), _T("n"), 3), 1U);
}

TEST_P(Profile, KeepsBytes) {
    BYTE all[256];
    for (unsigned i = 0; i < 256; ++i)
        all[i] = static_cast<BYTE>(i);
    ASSERT_TRUE(app_.WriteProfileBinary(_T("S"), _T("b"), all, sizeof(all)));
    LPBYTE data = nullptr;
    UINT size = 0;
    ASSERT_TRUE(app_.GetProfileBinary(_T("S"), _T("b"), &data, &size));
    const std::unique_ptr<BYTE[]> owner(data);
    EXPECT_TRUE(size == sizeof(all) && std::memcmp(data, all, size) == 0);
    app_.WriteProfileString(_T("S"), _T("t"), _T("ABQ!"));
    for (const LPCTSTR wrong : {_T("t"), _T("absent")}) {
        EXPECT_FALSE(app_.GetProfileBinary(_T("S"), wrong, &data, &size));
        EXPECT_TRUE(data == nullptr && size == 0);
    }
}

INSTANTIATE_TEST_SUITE_P(, Profile, testing::Bool(),
                         [](const auto& row) { return std::string(row.param ? "InTheRegistry" : "InAFile"); });

TEST_P(Profile, LiesWhereItsNamesSay) {
    app_.WriteProfileInt(_T("S"), _T("n"), 0x01020304);
    BYTE bytes[4] = {0x0A, 0x1B};
    app_.WriteProfileBinary(_T("S"), _T("b"), bytes, 2);
    if (!GetParam()) {
        TCHAR text[16] = {};
        EXPECT_EQ(app_.GetAppRegistryKey(), nullptr);
        EXPECT_EQ(app_.GetSectionKey(_T("S")), nullptr);
        ::GetPrivateProfileStringW(_T("S"), _T("b"), _T(""), text, 16, app_.m_pszProfileName);
        EXPECT_EQ(CString(text), _T("KALB"));
        return;
    }
    HKEY key = nullptr;
    const CString path = CString(_T("Software\\")) + product_.c_str() + _T("\\Planner\\S");
    ASSERT_EQ(::RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ | KEY_WRITE, &key), ERROR_SUCCESS);
    DWORD type = 0;
    DWORD size = sizeof(bytes);
    EXPECT_EQ(::RegQueryValueExW(key, _T("n"), nullptr, &type, bytes, &size), ERROR_SUCCESS);
    EXPECT_TRUE(type == REG_DWORD && size == 4 && bytes[0] == 4 && bytes[3] == 1);
    // Values of other programs: another type, and a text without its end.
    ::RegSetValueExW(key, _T("short"), 0, REG_DWORD, bytes, 2);
    ::RegSetValueExW(key, _T("open"), 0, REG_SZ, reinterpret_cast<const BYTE*>(_T("abc")), 3 * sizeof(TCHAR));
    ::RegCloseKey(key);
    EXPECT_EQ(app_.GetProfileInt(_T("S"), _T("short"), 8), 8U);
    EXPECT_EQ(app_.GetProfileInt(_T("S"), _T("open"), 8), 8U);
    EXPECT_EQ(app_.GetProfileString(_T("S"), _T("n"), _T("none")), _T("none"));
    EXPECT_EQ(app_.GetProfileString(_T("S"), _T("open")), _T("abc"));
    EXPECT_NE(CWinApp::DelRegTree(HKEY_CURRENT_USER, CString()), ERROR_SUCCESS);
}

// Ends when its first idle time is over.
class CShortApp : public CWinApp {
public:
    BOOL InitInstance() override {
        m_main.CreateEx(0, nullptr, _T("main"), WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0);
        m_pMainWnd = m_start ? &m_main : nullptr;
        return m_start && m_window;
    }
    BOOL OnIdle(LONG count) override {
        m_counts.push_back(count);
        if (count == 0) {
            m_temporary = CWnd::FromHandle(::GetDesktopWindow());
            m_bitmap.Attach(CBitmap::FromHandle(::CreateBitmap(1, 1, 1, 1, nullptr))->m_hObject);
        }
        const BOOL more = CWinApp::OnIdle(count);
        if (!more) {
            m_main.PostMessage(WM_CLOSE);
        }
        return more;
    }
    BOOL PreTranslateMessage(MSG* message) override {
        m_sawClose = m_sawClose || message->message == WM_CLOSE;
        return CWinApp::PreTranslateMessage(message);
    }
    int ExitInstance() override {
        ++m_exits;
        return CWinApp::ExitInstance() + 100;
    }

    CWnd m_main;
    CBitmap m_bitmap;
    CWnd* m_temporary = nullptr;
    std::vector<LONG> m_counts;
    bool m_start = true;
    bool m_window = true;
    bool m_sawClose = false;
    int m_exits = 0;
};

TEST(Application, RunsUntilItsMainWindowEnds) {
    EXPECT_TRUE(AfxGetApp() == nullptr && AfxGetMainWnd() == nullptr && AfxGetAppName() == CString());
    EXPECT_EQ(AfxWinMain(nullptr, nullptr, nullptr, SW_HIDE), -1);
    CShortApp app;
    EXPECT_TRUE(AfxGetApp() == &app && AfxGetThread() == &app && AfxGetAppName() == CString(app.m_pszExeName));
    EXPECT_EQ(CString(app.m_pszProfileName), CString(app.m_pszExeName) + _T(".INI"));
    EXPECT_EQ(AfxWinMain(nullptr, nullptr, nullptr, SW_SHOWMINIMIZED), 100);
    EXPECT_TRUE(app.m_nCmdShow == SW_SHOWMINIMIZED && app.m_hInstance == AfxGetInstanceHandle());
    EXPECT_TRUE(app.m_counts.size() >= 2 && app.m_counts[0] == 0 && app.m_counts[1] == 1);
    EXPECT_TRUE(app.m_sawClose && app.m_exits == 1 && app.m_main.m_hWnd == nullptr && AfxGetMainWnd() == nullptr);
    EXPECT_EQ(app.m_bitmap.GetObjectType(), static_cast<UINT>(OBJ_BITMAP));  // its temporary object left it alone
}

TEST(Application, ThatDoesNotStartEndsAtOnce) {
    for (const bool start : {true, false}) {
        CShortApp app;
        app.m_start = start;
        app.m_window = false;
        EXPECT_GE(AfxWinMain(nullptr, nullptr, nullptr, SW_HIDE), 100);
        EXPECT_TRUE(app.m_exits == 1 && app.m_counts.empty() && (app.m_main.m_hWnd == nullptr) == start);
        MSG quit;
        ::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
        EXPECT_THROW(CWinApp(), CNotSupportedException*);
        EXPECT_EQ(AfxGetApp(), &app);
    }
    EXPECT_EQ(AfxGetApp(), nullptr);
}

TEST(Application, LoadsTheSystemsIconsAndCursors) {
    const CWinApp app;
    EXPECT_TRUE(app.LoadStandardIcon(IDI_HAND) != nullptr && app.LoadStandardCursor(IDC_WAIT) != nullptr);
    EXPECT_TRUE(app.LoadIcon(4711) == nullptr && app.LoadCursor(4711) == nullptr);
}

}  // namespace
