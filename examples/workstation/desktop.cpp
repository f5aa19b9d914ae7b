#include "desktop.h"

#include <kadata/directory.h>
#include <kadata/skin_manager.h>

#include "box_sheet.h"
#include "console.h"
#include "main_window.h"
#include "patient_card.h"
#include "picture_file.h"
#include "skin_sheet.h"

namespace {

constexpr int DOUBLE_DENSITY = 144;  // dots per inch, from which on the large skin is the better one

int PercentOfScreen() {
    CDC screen;
    screen.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr);
    return screen.GetDeviceCaps(LOGPIXELSY) >= DOUBLE_DENSITY ? 200 : 100;
}

BOOL SaveMainWindow(int percent, LANGID language, const std::vector<SImported>& patients, const CString& data,
                    const CString& path) {
    CMainWindow window(MakeSkinInfo(percent), percent, language, patients, data);
    if (!window.Create()) {
        return FALSE;
    }
    window.SendMessage(WM_NCACTIVATE, TRUE);
    return SaveWindowPicture(window, path);
}

BOOL IsDesktopVisible() {
    USEROBJECTFLAGS flags = {};
    return !GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr) ||
           (flags.dwFlags & WSF_VISIBLE) != 0;
}

BOOL SavePatientCard(int percent, LANGID language, const CPatient& patient, const CString& path) {
    CPatientCard card(MakeSkinInfo(percent), percent, language, patient);
    if (!card.Make()) {
        return FALSE;
    }
    card.SendMessage(WM_NCACTIVATE, TRUE);
    return SaveWindowPicture(card, path);
}

class CApp : public CWinApp {
public:
    explicit CApp(CMainWindow& window) : m_window(window) { m_pMainWnd = &window; }
    BOOL InitInstance() override {
        m_window.CenterWindow();
        m_window.ShowWindow(SW_SHOWNORMAL);
        return TRUE;
    }

private:
    CMainWindow& m_window;
};

}  // namespace

int RunMainWindow(const std::vector<SImported>& patients, const CString& data) {
    if (!IsDesktopVisible()) {
        PrintError(_T("there is no display to show the window on"));
        return NO_DISPLAY;
    }
    const CGdiPlus gdiplus;
    const int percent = PercentOfScreen();
    CSkinManager& manager = *CSkinManager::GetInstance();
    manager.Init(MakeSkinInfo(percent));
    CMainWindow window(manager.GetSkinInfo(), percent, UserLanguage(), patients, data);
    CApp app(window);
    if (!window.Create()) {
        PrintError(_T("there is no window to be had"));
        return 1;
    }
    return AfxWinMain(GetModuleHandleW(nullptr), nullptr, nullptr, SW_SHOWNORMAL);
}

int WritePictures(const std::vector<SImported>& patients, const CString& data, const CString& folder) {
    const CGdiPlus gdiplus;
    int failed = 0;
    CDirectory::Make(folder);
    for (const int percent : {100, 200}) {
        for (const LANGID language : {ENGLISH, GERMAN}) {
            CString name;
            name.Format(_T("-%s-%d.png"), language == GERMAN ? _T("de") : _T("en"), percent);
            failed += !SaveMainWindow(percent, language, patients, data, CDirectory::Concat(folder, _T("window") + name));
            failed +=
                !SavePatientCard(percent, language, patients.front().patient, CDirectory::Concat(folder, _T("card") + name));
            failed += !SaveSkinSheet(percent, language, CDirectory::Concat(folder, _T("skin") + name));
            failed += !SaveBoxSheet(percent, language, CDirectory::Concat(folder, _T("message-boxes") + name));
            failed += !SaveBoxPicture(percent, language, CDirectory::Concat(folder, _T("message-box") + name));
        }
    }
    if (failed != 0) {
        PrintError(_T("not all pictures could be written"));
    }
    return failed == 0 ? 0 : 1;
}
