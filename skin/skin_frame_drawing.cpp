// How a skinned frame looks.

#include <algorithm>

#include "bitmap_context.h"
#include "skin_frame.h"

namespace kadata {
namespace {

constexpr int TITLE_GAP = 4;  // between the title and the boxes
constexpr COLORREF SYSTEM_COLOR = 0xFFFFFFFF;

// The context of a whole window.
class WindowContext {
public:
    explicit WindowContext(HWND window) : m_window(window), m_dc(GetWindowDC(window)) {}
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    ~WindowContext() { ReleaseDC(m_window, m_dc); }

    operator HDC() const { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

// Sets a context's clip for a scope.
class Clipped {
public:
    Clipped(HDC dc, HRGN region) : m_dc(dc), m_depth(SaveDC(dc)) {
        CPoint origin;  // regions know nothing of a context's own coordinates
        LPtoDP(dc, &origin, 1);
        OffsetRgn(region, origin.x, origin.y);
        ExtSelectClipRgn(dc, region, RGN_AND);
    }
    Clipped(const Clipped&) = delete;
    Clipped& operator=(const Clipped&) = delete;
    ~Clipped() { RestoreDC(m_dc, m_depth); }

private:
    HDC m_dc;
    int m_depth;
};

void MakeCaptionFont(CFont& font) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    font.CreateFontIndirect(&metrics.lfCaptionFont);
}

CString TitleOf(HWND window) {
    CString title;
    const int length = GetWindowTextLengthW(window);
    GetWindowTextW(window, title.GetBufferSetLength(length), length + 1);
    title.ReleaseBuffer();
    return title;
}

// A window in outline; when maximised, a smaller one before another.
void DrawMaximizeGlyph(HDC dc, CPoint middle, int side, bool zoomed, COLORREF color) {
    const HBRUSH brush = CreateSolidBrush(color);
    const auto outline = [&](int x, int y, int length) {
        const CRect rect(CPoint(middle.x - side / 2 + x, middle.y - side / 2 + y), CSize(length, length));
        FrameRect(dc, &rect, brush);
        const CRect bar(rect.left, rect.top, rect.right, rect.top + 2);
        FillRect(dc, &bar, brush);
    };
    if (zoomed) {
        outline(side / 4, 0, side - side / 4);
        outline(0, side / 4, side - side / 4);
    } else {
        outline(0, 0, side);
    }
    DeleteObject(brush);
}

}  // namespace

Gdiplus::Status BandSkin::DrawBitmapPart(Gdiplus::Graphics* graphics, Gdiplus::Bitmap* bitmap, CRect source, CRect target) {
    CRect shared;
    return shared.IntersectRect(target, visible) ? CSkin::DrawBitmapPart(graphics, bitmap, source, target) : Gdiplus::Ok;
}

bool SkinFrame::Load(const SkinInfo& info) {
    m_info = info;
    SkinCaptionBitmapInfo none;
    m_loaded = m_frame.SetWindowBitmapInfo(m_info.windowFrame) && m_maximizeBox.SetButtonBitmapInfo(m_info.captionButton, none) &&
               m_closeBox.SetButtonBitmapInfo(m_info.captionButton, m_info.closeGlyph) &&
               m_minimizeBox.SetButtonBitmapInfo(m_info.captionButton, m_info.minimizeGlyph);
    return m_loaded;
}

void SkinFrame::SetCaptionLook(CFont* font, COLORREF active, COLORREF inactive) {
    m_font = font;
    m_activeText = active;
    m_inactiveText = inactive;
}

FrameLayout SkinFrame::Layout() const {
    const CSkinWndInfo info(m_owner.GetHookedWnd());
    FrameLayout layout = {};
    layout.window = info.GetBorderRect();
    layout.client = info.GetClientRect();
    const bool captioned = (GetWindowLongW(Window(), GWL_STYLE) & WS_CAPTION) == static_cast<LONG>(WS_CAPTION);
    const CRect caption = captioned ? info.GetCaptionRect() : CRect();
    const CRect inside(info.GetLeftBorderRect().right, captioned ? caption.bottom : info.GetTopBorderRect().bottom,
                       info.GetRightBorderRect().left, info.GetBottomBorderRect().top);
    layout.inner = inside;
    layout.inner.InflateRect(GetSystemMetrics(SM_CXBORDER), GetSystemMetrics(SM_CYBORDER));
    layout.inner &= layout.window;
    const CRect& all = layout.window;
    layout.bands = {CRect(all.left, all.top, all.right, inside.top), CRect(all.left, inside.top, inside.left, inside.bottom),
                    CRect(inside.right, inside.top, all.right, inside.bottom),
                    CRect(all.left, inside.bottom, all.right, all.bottom)};
    if (captioned) {
        PlaceBoxes(layout, info, caption);
    }
    return layout;
}

// In the middle of border and caption; the border of a maximised window lies outside of the screen. The title's middle is that of
// the window, where there is room for it.
void SkinFrame::PlaceBoxes(FrameLayout& layout, const CSkinWndInfo& info, const CRect& caption) const {
    CRect band = caption;
    band.top = IsZoomed(Window()) ? caption.top : layout.window.top;
    const int width = static_cast<int>(m_info.nCaptionButtonWidth);
    const int height = std::min(static_cast<int>(m_info.nCaptionButtonHeight), band.Height());
    const int top = band.top + (band.Height() - height) / 2;
    int right = caption.right;
    std::size_t count = 0;
    const auto place = [&](int hit, BOOL wanted) {
        if (wanted && right - width > caption.left) {
            layout.boxes[count++] = {hit, CRect(right - width, top, right, top + height)};
            right -= width + static_cast<int>(m_info.nCaptionButtonGap);
        }
    };
    place(HTCLOSE, info.HasSysMenu());
    place(HTMAXBUTTON, info.HasSysMenu() && info.HasMaximizeBox());
    place(HTMINBUTTON, info.HasSysMenu() && info.HasMinimizeBox());
    right -= TITLE_GAP;
    const int mirrored = layout.window.left + layout.window.right - right;
    layout.title = CRect(mirrored < right - band.Width() / 3 ? mirrored : caption.left, band.top, right, band.bottom);
}

int SkinFrame::BoxAt(CPoint screen) const {
    const CSkinWindowRect window(Window());
    for (const FrameBox& box : Layout().boxes) {
        if (box.rect.PtInRect(screen - CSize(window.left, window.top))) {
            return box.hit;
        }
    }
    return HTNOWHERE;
}

CSkin::ESkinBitmapType SkinFrame::StateOf(int box) const {
    const int kind = box == HTCLOSE ? CSkin::SkinDefault : CSkin::SkinNormal;
    const bool isHot = m_hot == box && (m_pressed == box || m_pressed == HTNOWHERE);
    const int state = isHot      ? (m_pressed == box ? CSkin::SkinPressed : CSkin::SkinHot)
                      : m_active ? CSkin::SkinNormal
                                 : CSkin::SkinDisabled;
    return static_cast<CSkin::ESkinBitmapType>(kind + state);
}

void SkinFrame::DrawOnWindow() {
    if (m_loaded && IsWindowVisible(Window())) {
        Draw(WindowContext(Window()));
    }
}

void SkinFrame::Draw(HDC target) {
    CRgn covered;
    covered.Attach(CSkinWndInfo(m_owner.GetHookedWnd()).GetClipRGN(FALSE));
    const Clipped clipped(target, covered);
    const FrameLayout layout = Layout();
    bool isFirst = true;
    for (const CRect& band : layout.bands) {
        if (!band.IsRectEmpty()) {
            DrawBand(target, layout, band, isFirst);
        }
        isFirst = false;
    }
}

// Off screen, and copied at once.
void SkinFrame::DrawBand(HDC target, FrameLayout layout, const CRect& band, bool withCaption) {
    CBitmap bitmap;
    bitmap.Attach(CreateCompatibleBitmap(target, band.Width(), band.Height()));
    const BitmapContext memory(target, bitmap);
    if (!memory) {
        return;
    }
    for (CRect* const rect : {&layout.window, &layout.client, &layout.inner}) {
        rect->OffsetRect(-band.left, -band.top);
    }
    const CRect whole(CPoint(), band.Size());
    FillRect(memory, &whole, GetSysColorBrush(m_active ? COLOR_GRADIENTACTIVECAPTION : COLOR_GRADIENTINACTIVECAPTION));
    m_frame.visible = whole;
    {
        Gdiplus::Graphics graphics(memory);
        m_frame.DrawWindowBitmap(&graphics, m_active ? CSkin::SkinActive : CSkin::SkinInactive, layout.window, layout.inner,
                                 layout.client);
        if (withCaption) {  // the first band begins in the window's corner
            DrawCaption(graphics, memory, layout);
        }
    }
    BitBlt(target, band.left, band.top, band.Width(), band.Height(), memory, 0, 0, SRCCOPY);
}

void SkinFrame::DrawCaption(Gdiplus::Graphics& graphics, HDC target, const FrameLayout& layout) {
    CFont system;
    if (m_font == nullptr) {
        MakeCaptionFont(system);
    }
    CFont* const font = m_font != nullptr ? m_font : &system;
    CDC dc;
    dc.Attach(target);
    m_frame.SetCaptionTextColors(m_active ? m_activeText : m_inactiveText, SYSTEM_COLOR, SYSTEM_COLOR, SYSTEM_COLOR);
    m_frame.DrawWindowCaption(&graphics, CSkin::SkinNormal, layout.title, TitleOf(Window()), font, &dc);
    for (const FrameBox& box : layout.boxes) {
        if (!box.rect.IsRectEmpty()) {
            DrawBox(graphics, dc, *font, box);
        }
    }
    dc.Detach();
}

// Of a box that is neither hot nor pressed there is the glyph only: the caption shows through.
void SkinFrame::DrawBox(Gdiplus::Graphics& graphics, CDC& dc, CFont& font, const FrameBox& box) {
    const CSkin::ESkinBitmapType state = StateOf(box.hit);
    CSkin& skin = box.hit == HTCLOSE ? m_closeBox : box.hit == HTMINBUTTON ? m_minimizeBox : m_maximizeBox;
    if (m_hot == box.hit) {
        skin.DrawButtonBitmap(&graphics, state, box.rect);
    }
    if (box.hit != HTMAXBUTTON) {
        skin.DrawButtonCaption(&graphics, state, box.rect, CString(), &font, nullptr);
        return;
    }
    graphics.Flush(Gdiplus::FlushIntentionSync);
    DWORD text = 0;
    DWORD disabled = 0;
    DWORD other = 0;
    m_frame.GetCaptionTextColors(text, disabled, other, other);
    DrawMaximizeGlyph(dc, box.rect.CenterPoint(), static_cast<int>(m_info.minimizeGlyph.nGlyphWidth), IsZoomed(Window()),
                      m_active ? text : disabled);
}

}  // namespace kadata
