#pragma once

// The demo's main window. Frame and background are the skin's.

#include <kadata/patient.h>
#include <kadata/skin_window.h>

#include "import.h"
#include "main_view.h"

class CMainWindow : public CWnd {
public:
    // The patients' pictures are looked for in `data`.
    CMainWindow(const SkinInfo& skin, int percent, LANGID language, const std::vector<SImported>& patients, const CString& data);

    // Not shown yet. FALSE when there is no window to be had, or the skin is not complete.
    BOOL Create();

protected:
    afx_msg void OnPaint();
    afx_msg LRESULT OnPrintClient(WPARAM dc, LPARAM flags);
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* info);
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnMouseMove(UINT keys, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg void OnLButtonDown(UINT keys, CPoint point);
    afx_msg void OnLButtonUp(UINT keys, CPoint point);
    afx_msg void OnLButtonDblClk(UINT keys, CPoint point);
    afx_msg BOOL OnMouseWheel(UINT keys, short delta, CPoint screen);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    DECLARE_MESSAGE_MAP()

private:
    void DrawOn(CDC& dc);
    void SetHot(EItem item);
    void Select(int row);
    void Act(EItem item);
    void ShowPictureCount();
    void Save();
    void ShowCard();

    CString m_data;
    std::vector<CPatient> m_patients;
    int m_percent;
    LANGID m_language;
    CMainView m_view;
    SMainState m_state;
    CSkinStubWnd m_skin;
};
