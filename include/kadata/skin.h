#pragma once

// Draws buttons, window frames, window backgrounds and captions from the bitmaps of a skin.
//
// A skinned window owns one object for each of its skinned surfaces. The host has to have started GDI+ (GdiplusStartup) before it
// sets a bitmap, and to keep it started until the last object is gone; without it no bitmap can be set. One thread at a time,
// usually the one of the user interface. Nothing here throws anything but std::bad_alloc.
//
// Drawing
//   Everything is drawn into a Graphics of the caller, whose modes (smoothing, interpolation, pixel offset) are afterwards as
//   they were. The result is Ok, or InvalidParameter where there is nothing to draw: an empty rectangle, a bitmap that is not
//   loaded, a null argument. Unless said otherwise failures of single pieces are not reported, and a rectangle whose edges stand
//   in the wrong order counts as empty.

#include <afxwin.h>
#include <gdiplus.h>
#include <kadata/export.h>
#include <kadata/skin_info.h>

#include <memory>

namespace kadata {
struct NineSlice;
}

class KADATA_API CSkin : public CObject {
    DECLARE_DYNAMIC(CSkin)

public:
    // The state of what is drawn, and the row of its cell in a bitmap of states. "Default" is the button that Enter presses, or
    // the one with the keyboard's focus. The content of a pressed thing stands one pixel further right and down; the text of a
    // disabled one is embossed.
    enum ESkinBitmapType {
        SkinNormal = 0,
        SkinHot = 1,
        SkinPressed = 2,
        SkinDisabled = 3,
        SkinDefault = 4,
        SkinDefaultHot = 5,
        SkinDefaultPressed = 6,
        SkinDefaultDisabled = 7,
        // Window frames know two states.
        SkinActive = 0,
        SkinInactive = 1,
    };

    // Parts of a window's frame and their two states, numbered as the visual styles do it.
    enum EFramePart {
        FrameCaption = 1,
        FrameSmallCaption = 2,
        FrameLeft = 7,
        FrameRight = 8,
        FrameBottom = 9,
        FrameSmallLeft = 10,
        FrameSmallRight = 11,
        FrameSmallBottom = 12,
    };
    enum EFrameState {
        FrameActive = 1,
        FrameInactive = 2,
    };

    // Without bitmaps, and with the system's colours for captions.
    CSkin();
    ~CSkin() override;

    // Without bitmaps and descriptions again; the colours of captions stay.
    virtual void Release();

    // What was set last. The bitmaps themselves belong to this object.
    //
    // The setters load the bitmap from the module that has it as AfxFindResourceHandle finds it, and copy the description. FALSE
    // when the number is 0 or the bitmap is missing or damaged; then bitmap and description are those from before.
    virtual const SkinBitmapInfo& GetButtonBitmapInfo() const;
    // As if SetButtonCaptionBitmapInfo followed, whose result it has. When only the glyph fails the new button bitmap stays.
    virtual BOOL SetButtonBitmapInfo(SkinBitmapInfo& bitmapInfo, SkinCaptionBitmapInfo& captionInfo);
    virtual const SkinCaptionBitmapInfo& GetButtonCaptionBitmapInfo() const;
    // Deliberate: with the number 0 this succeeds, and a glyph from before stays loaded but is not drawn.
    virtual BOOL SetButtonCaptionBitmapInfo(SkinCaptionBitmapInfo& captionInfo);
    virtual const SkinBitmapInfo& GetWindowBitmapInfo() const;
    virtual BOOL SetWindowBitmapInfo(SkinBitmapInfo& bitmapInfo);
    virtual const SkinBitmapInfo& GetWindowBackgroundBitmapInfo() const;
    virtual BOOL SetWindowBackgroundBitmapInfo(SkinBitmapInfo& bitmapInfo);

    // Draws the part `source` of the bitmap scaled into `target`, in the Graphics' own modes, and returns what DrawImage
    // returned. A target of negative width or height is Ok and draws nothing. Everything else is drawn through this function.
    virtual Gdiplus::Status DrawBitmapPart(Gdiplus::Graphics* graphics, Gdiplus::Bitmap* bitmap, CRect source, CRect target);

    // The cell of a state in nine pieces. `inner` becomes `rect` without its corners, for the caption; in a rectangle that is
    // smaller than two corners its edges stand in the wrong order. Where the result is InvalidParameter it is left alone.
    // Deliberate: a rectangle with edges in the wrong order is drawn too, as far as its pieces have a size.
    virtual Gdiplus::Status DrawButtonBitmap(Gdiplus::Graphics* graphics, ESkinBitmapType type, CRect rect, CRect& inner);
    virtual Gdiplus::Status DrawButtonBitmap(Gdiplus::Graphics* graphics, ESkinBitmapType type, CRect rect);
    // With an empty `targetRect`: draws at `drawRect`. Else without flicker: draws at `drawRect` into a picture of the size of
    // `drawRect`, and copies that, from its top left corner on, to `targetRect`; so `drawRect` usually begins at 0, 0. TRUE when
    // there could be drawn into the device context, or into the picture.
    virtual BOOL DrawButtonBitmap(CDC& dc, ESkinBitmapType type, const CRect& drawRect, const CRect& targetRect);
    // Upon a button: the glyph in the middle of `rect` or stretched over it, then the text (one line, in the middle, "&" marks
    // the key) in a copy of `font`. The device context has to draw into the same picture as the Graphics; it is not needed
    // without text. InvalidParameter without button bitmap too.
    virtual Gdiplus::Status DrawButtonCaption(Gdiplus::Graphics* graphics, ESkinBitmapType type, CRect rect, CString text,
                                              CFont* font, CDC* dc);

    // One part (EFramePart) of the frame, stretched over `rect`. Captions are the top edge of the outer frame, and the small
    // parts are the same pieces as the others. Other parts give InvalidParameter; a state other than FrameInactive is active.
    virtual Gdiplus::Status DrawWindowBitmap(Gdiplus::Graphics* graphics, int part, int state, CRect rect);
    // The whole frame: the outer part in `outer`, the inner one in `inner`, either of which may be empty. By as much as `client`
    // lies inside of `inner` on a side, that side's pieces lose their outermost pixels; the last one stays.
    virtual Gdiplus::Status DrawWindowBitmap(Gdiplus::Graphics* graphics, ESkinBitmapType type, CRect outer, CRect inner,
                                             CRect client);
    // A window's title, as DrawButtonCaption draws text, but "&" is an ordinary character, and a title that is too long ends in
    // dots. InvalidParameter without window bitmap too.
    virtual Gdiplus::Status DrawWindowCaption(Gdiplus::Graphics* graphics, ESkinBitmapType type, CRect rect, CString text,
                                              CFont* font, CDC* dc);
    // Stretched over `rect`. The result is that of DrawBitmapPart.
    virtual Gdiplus::Status DrawWindowBackgroundBitmap(Gdiplus::Graphics* graphics, CRect rect);

    // Whether the bitmap is loaded.
    virtual BOOL HasButtonBitmap();
    virtual BOOL HasButtonCaptionBitmap();
    virtual BOOL HasWindowBitmap();
    virtual BOOL HasWindowBackgroundBitmap();

    // 0xFFFFFFFF is the system's colour: button text; button shadow, twice; button highlight. The third is kept and not used.
    virtual void SetCaptionTextColors(DWORD text, DWORD disabledText, DWORD third, DWORD disabledHighlight);
    virtual void GetCaptionTextColors(DWORD& text, DWORD& disabledText, DWORD& third, DWORD& disabledHighlight);

private:
    void DrawNineSlice(Gdiplus::Graphics* graphics, Gdiplus::Bitmap* bitmap, const kadata::NineSlice& source,
                       const CRect& target);
    void DrawGlyph(Gdiplus::Graphics* graphics, ESkinBitmapType type, const CRect& rect);
    void DrawStateText(CDC& dc, ESkinBitmapType type, CRect rect, const CString& text, const LOGFONT& font, UINT format);

    std::unique_ptr<Gdiplus::Bitmap> m_ButtonBitmap;
    std::unique_ptr<Gdiplus::Bitmap> m_ButtonCaptionBitmap;
    std::unique_ptr<Gdiplus::Bitmap> m_WindowBitmap;
    std::unique_ptr<Gdiplus::Bitmap> m_WindowBackgroundBitmap;

    SkinBitmapInfo m_ButtonBitmapInfo;
    SkinCaptionBitmapInfo m_ButtonCaptionBitmapInfo;
    SkinBitmapInfo m_WindowBitmapInfo;
    SkinBitmapInfo m_WindowBackgroundBitmapInfo;

    // 0x00BBGGRR
    DWORD m_CaptionTextColor;
    DWORD m_DisabledTextColor;
    DWORD m_ThirdTextColor;
    DWORD m_DisabledHighlightColor;
};
