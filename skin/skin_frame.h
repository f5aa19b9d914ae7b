#pragma once

// The frame of one window, drawn from the skin: borders, caption, title and the boxes in the caption.

#include <kadata/skin_window.h>

#include <array>

namespace kadata {

// Draws a window anew, its frame and its controls included. Nothing for null.
void RedrawAll(HWND window);

// A box in the caption, by what is under the pointer there (HTCLOSE, ...); HTNOWHERE is none.
struct FrameBox {
    int hit;
    CRect rect;
};

// Coordinates of the window.
struct FrameLayout {
    CRect window;
    CRect client;
    CRect inner;  // of the frame's inner part: a line around what is inside of borders and caption
    CRect title;
    std::array<FrameBox, 3> boxes;  // from the right to the left; those that there are not are empty
    std::array<CRect, 4> bands;     // what is drawn: above, left, right and below
};

// Leaves out what lies outside of a rectangle: a frame's bands need nothing of its large middle, which would be scaled for
// nothing at each new size.
class BandSkin : public CSkin {
public:
    Gdiplus::Status DrawBitmapPart(Gdiplus::Graphics* graphics, Gdiplus::Bitmap* bitmap, CRect source, CRect target) override;

    CRect visible;
};

class SkinFrame {
public:
    // `owner` has this object.
    explicit SkinFrame(CSkinStubWnd& owner) : m_owner(owner) {}

    // False when frame or boxes cannot be loaded; the frame is the system's then.
    bool Load(const SkinInfo& info);
    void SetCaptionLook(CFont* font, COLORREF active, COLORREF inactive);
    // The owner is attached, or is so no more, to the window: it shall draw its frame itself, or the system.
    void Attached();
    static void Detached(HWND window);

    bool Serves(UINT message) const;
    // A message that it serves. The owner may be gone afterwards.
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

private:
    HWND Window() const { return m_owner.GetHookedHwnd(); }
    LRESULT PassOn(UINT message, WPARAM wParam, LPARAM lParam) {
        return m_owner.CSkinSubclassWnd::WindowProc(message, wParam, lParam);
    }
    LRESULT Paint(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Print(HDC dc, LPARAM parts);
    LRESULT Activate(WPARAM active);
    LRESULT HitTest(WPARAM wParam, LPARAM lParam);
    LRESULT Press(int box);
    void Release(CPoint screen);
    void SetPointer(int hot, int pressed);
    int BoxAt(CPoint screen) const;

    FrameLayout Layout() const;
    void PlaceBoxes(FrameLayout& layout, const CSkinWndInfo& info, const CRect& caption) const;
    void DrawOnWindow();
    void Draw(HDC target);
    void DrawBand(HDC target, FrameLayout layout, const CRect& band, bool withCaption);
    void DrawCaption(Gdiplus::Graphics& graphics, HDC target, const FrameLayout& layout);
    void DrawBox(Gdiplus::Graphics& graphics, CDC& dc, CFont& font, const FrameBox& box);
    CSkin::ESkinBitmapType StateOf(int box) const;

    CSkinStubWnd& m_owner;
    SkinInfo m_info;
    BandSkin m_frame;
    CSkin m_closeBox;
    CSkin m_minimizeBox;
    CSkin m_maximizeBox;  // without a glyph: it is drawn in lines
    bool m_loaded = false;
    bool m_active = false;
    int m_hot = HTNOWHERE;
    int m_pressed = HTNOWHERE;
    CFont* m_font = nullptr;  // null: the system's
    COLORREF m_activeText = 0xFFFFFFFF;
    COLORREF m_inactiveText = 0xFFFFFFFF;
};

}  // namespace kadata
