#pragma once

// A dialog about one patient: texts upon the skin's background, and a picture of teeth that tells which one was clicked.

#include <kadata/patient.h>
#include <kadata/skin_window.h>
#include <kadata/transparent_bitmap.h>

#include <array>

#include "skin_setup.h"
#include "texts.h"

// Clicks that hit no tooth are told, too.
class CTeethStatic : public CTransparentBitmapStatic {
public:
    static constexpr int TEETH = 4;  // side by side, of equal width
    // Of the parent: WPARAM is the tooth, counted from 1, or 0.
    static constexpr UINT WM_TOOTH = WM_APP + 1;

    int ToothAt(CPoint point);

protected:
    afx_msg void OnLButtonDown(UINT keys, CPoint point);
    DECLARE_MESSAGE_MAP()
};

class CPatientCard : public CDialog {
public:
    CPatientCard(const SkinInfo& skin, int percent, LANGID language, const CPatient& patient);

    // Not shown yet, for a picture. DoModal shows it.
    BOOL Make() { return Create(IDD); }
    CTeethStatic& Teeth() { return m_teeth; }
    CString Hint() const;

protected:
    BOOL OnInitDialog() override;
    afx_msg LRESULT OnTooth(WPARAM tooth, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    static constexpr UINT IDD = 200;

    CRect Scaled(int x, int y, int width, int height) const;
    void MakeText(CStatic& control, const CString& text, CFont& font, const CRect& rect);
    CString Text(UINT id) const { return LoadText(id, m_language); }

    SkinInfo m_info;
    int m_percent;
    LANGID m_language;
    CPatient m_patient;
    CFont m_font;
    CFont m_boldFont;
    std::array<CStatic, 4> m_labels;
    std::array<CStatic, 4> m_values;
    CStatic m_hint;
    CTeethStatic m_teeth;
    CSkinStubWnd m_skin;  // the first to go
};
