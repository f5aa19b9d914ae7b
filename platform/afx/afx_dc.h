#pragma once

// Device contexts. Functions without a comment do what the system's function of the same name does with the context, and return
// what it returns. Null objects (pens, fonts, ...) are allowed where said so. One context is used by one thread at a time; that
// of a window by the window's thread.

#include "afx_gdi.h"

class KADATA_API CDC : public CObject {
    DECLARE_DYNCREATE(CDC)

public:
    CDC() = default;
    // Deletes the handle.
    ~CDC() override;

    HDC GetSafeHdc() const { return m_hDC; }
    operator HDC() const { return m_hDC; }

    // As for drawing objects: the object that owns the handle or a temporary one; null for null.
    static CDC* FromHandle(HDC dc);
    static void DeleteTempMap();
    BOOL Attach(HDC dc);
    HDC Detach();

    // For the screen: "DISPLAY", null, null, null. Printers are not served: FALSE with `initData`.
    BOOL CreateDC(LPCTSTR driver, LPCTSTR device, LPCTSTR output, const void* initData);
    // A memory context, for the screen with a null `dc`.
    BOOL CreateCompatibleDC(CDC* dc);
    // FALSE without a handle or when the system refuses; there is none afterwards.
    BOOL DeleteDC();

    // Drawing goes to m_hDC, questions to m_hAttribDC. Both are the same unless a host sets them apart.
    void SetAttribDC(HDC dc) { m_hAttribDC = dc; }
    void SetOutputDC(HDC dc) { m_hDC = dc; }
    void ReleaseAttribDC() { m_hAttribDC = nullptr; }

    virtual int SaveDC() { return ::SaveDC(m_hDC); }
    virtual BOOL RestoreDC(int saved) { return ::RestoreDC(m_hDC, saved); }
    int GetDeviceCaps(int index) const { return ::GetDeviceCaps(m_hAttribDC, index); }

    // The object selected before, temporary where it is nobody's; null on failure and when `object` is null. A region becomes the
    // clip region, and the result is its kind (SIMPLEREGION and the like).
    CPen* SelectObject(CPen* object) { return Select(object); }
    CBrush* SelectObject(CBrush* object) { return Select(object); }
    virtual CFont* SelectObject(CFont* object) { return Select(object); }
    CBitmap* SelectObject(CBitmap* object) { return Select(object); }
    CGdiObject* SelectObject(CGdiObject* object) { return Select(object); }
    int SelectObject(CRgn* region) { return SelectClipRgn(region); }
    virtual CGdiObject* SelectStockObject(int index);
    CPen* GetCurrentPen() const { return Current<CPen>(OBJ_PEN); }
    CBrush* GetCurrentBrush() const { return Current<CBrush>(OBJ_BRUSH); }
    CFont* GetCurrentFont() const { return Current<CFont>(OBJ_FONT); }
    CBitmap* GetCurrentBitmap() const { return Current<CBitmap>(OBJ_BITMAP); }

    COLORREF GetBkColor() const { return ::GetBkColor(m_hAttribDC); }
    virtual COLORREF SetBkColor(COLORREF color) { return ::SetBkColor(m_hDC, color); }
    int GetBkMode() const { return ::GetBkMode(m_hAttribDC); }
    int SetBkMode(int mode) { return ::SetBkMode(m_hDC, mode); }
    COLORREF GetTextColor() const { return ::GetTextColor(m_hAttribDC); }
    virtual COLORREF SetTextColor(COLORREF color) { return ::SetTextColor(m_hDC, color); }
    UINT GetTextAlign() const { return ::GetTextAlign(m_hAttribDC); }
    UINT SetTextAlign(UINT flags) { return ::SetTextAlign(m_hDC, flags); }
    int GetROP2() const { return ::GetROP2(m_hAttribDC); }
    int SetROP2(int mode) { return ::SetROP2(m_hDC, mode); }
    int GetStretchBltMode() const { return ::GetStretchBltMode(m_hAttribDC); }
    int SetStretchBltMode(int mode) { return ::SetStretchBltMode(m_hDC, mode); }
    // The origin before.
    CPoint GetBrushOrg() const;
    CPoint SetBrushOrg(int x, int y);
    CPoint SetBrushOrg(POINT point) { return SetBrushOrg(point.x, point.y); }

    CPoint GetViewportOrg() const;
    virtual CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT point) { return SetViewportOrg(point.x, point.y); }
    virtual CPoint OffsetViewportOrg(int x, int y);
    CPoint GetWindowOrg() const;
    CPoint SetWindowOrg(int x, int y);
    CPoint SetWindowOrg(POINT point) { return SetWindowOrg(point.x, point.y); }
    CPoint OffsetWindowOrg(int x, int y);
    BOOL DPtoLP(LPPOINT points, int count = 1) const { return ::DPtoLP(m_hAttribDC, points, count); }
    BOOL DPtoLP(LPRECT rect) const { return DPtoLP(reinterpret_cast<LPPOINT>(rect), 2); }
    BOOL LPtoDP(LPPOINT points, int count = 1) const { return ::LPtoDP(m_hAttribDC, points, count); }
    BOOL LPtoDP(LPRECT rect) const { return LPtoDP(reinterpret_cast<LPPOINT>(rect), 2); }

    virtual int GetClipBox(LPRECT box) const { return ::GetClipBox(m_hAttribDC, box); }
    // Null is no clip region: all of the context.
    int SelectClipRgn(const CRgn* region);
    int SelectClipRgn(const CRgn* region, int mode);
    int IntersectClipRect(int l, int t, int r, int b) { return ::IntersectClipRect(m_hDC, l, t, r, b); }
    int IntersectClipRect(LPCRECT rect) { return IntersectClipRect(rect->left, rect->top, rect->right, rect->bottom); }
    int ExcludeClipRect(int l, int t, int r, int b) { return ::ExcludeClipRect(m_hDC, l, t, r, b); }
    int ExcludeClipRect(LPCRECT rect) { return ExcludeClipRect(rect->left, rect->top, rect->right, rect->bottom); }
    int OffsetClipRgn(int x, int y) { return ::OffsetClipRgn(m_hDC, x, y); }
    BOOL PtVisible(int x, int y) const { return ::PtVisible(m_hAttribDC, x, y); }
    BOOL PtVisible(POINT point) const { return PtVisible(point.x, point.y); }
    BOOL RectVisible(LPCRECT rect) const { return ::RectVisible(m_hAttribDC, rect); }

    CPoint GetCurrentPosition() const;
    // The position before.
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    BOOL LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }
    BOOL LineTo(POINT point) { return LineTo(point.x, point.y); }
    BOOL Polyline(const POINT* points, int count) { return ::Polyline(m_hDC, points, count); }
    BOOL Polygon(const POINT* points, int count) { return ::Polygon(m_hDC, points, count); }
    BOOL Rectangle(int l, int t, int r, int b) { return ::Rectangle(m_hDC, l, t, r, b); }
    BOOL Rectangle(LPCRECT rect) { return Rectangle(rect->left, rect->top, rect->right, rect->bottom); }
    BOOL RoundRect(LPCRECT rect, POINT corner) {
        return ::RoundRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom, corner.x, corner.y);
    }
    BOOL Ellipse(int l, int t, int r, int b) { return ::Ellipse(m_hDC, l, t, r, b); }
    BOOL Ellipse(LPCRECT rect) { return Ellipse(rect->left, rect->top, rect->right, rect->bottom); }

    void FillRect(LPCRECT rect, CBrush* brush);
    void FrameRect(LPCRECT rect, CBrush* brush);
    void InvertRect(LPCRECT rect) { ::InvertRect(m_hDC, rect); }
    BOOL FillRgn(CRgn* region, CBrush* brush);
    BOOL FrameRgn(CRgn* region, CBrush* brush, int width, int height);
    BOOL PaintRgn(CRgn* region);
    // In one colour; the background colour stays.
    void FillSolidRect(LPCRECT rect, COLORREF color);
    void FillSolidRect(int x, int y, int width, int height, COLORREF color) {
        FillSolidRect(CRect(x, y, x + width, y + height), color);
    }
    // A frame of one pixel inside the rectangle, two edges in each colour.
    void Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight);
    void Draw3dRect(int x, int y, int width, int height, COLORREF topLeft, COLORREF bottomRight) {
        Draw3dRect(CRect(x, y, x + width, y + height), topLeft, bottomRight);
    }
    void DrawFocusRect(LPCRECT rect) { ::DrawFocusRect(m_hDC, rect); }
    BOOL DrawEdge(LPRECT rect, UINT edge, UINT flags) { return ::DrawEdge(m_hDC, rect, edge, flags); }
    BOOL DrawFrameControl(LPRECT rect, UINT type, UINT state) { return ::DrawFrameControl(m_hDC, rect, type, state); }
    BOOL DrawIcon(int x, int y, HICON icon) { return ::DrawIcon(m_hDC, x, y, icon); }
    BOOL DrawIcon(POINT point, HICON icon) { return DrawIcon(point.x, point.y, icon); }
    BOOL GradientFill(TRIVERTEX* vertices, ULONG vertexCount, void* elements, ULONG elementCount, DWORD mode) {
        return ::GradientFill(m_hDC, vertices, vertexCount, elements, elementCount, mode);
    }

    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }
    COLORREF GetPixel(POINT point) const { return GetPixel(point.x, point.y); }
    COLORREF SetPixel(int x, int y, COLORREF color) { return ::SetPixel(m_hDC, x, y, color); }
    BOOL SetPixelV(int x, int y, COLORREF color) { return ::SetPixelV(m_hDC, x, y, color); }
    BOOL PatBlt(int x, int y, int width, int height, DWORD rop) { return ::PatBlt(m_hDC, x, y, width, height, rop); }
    // The source may be null for raster operations without one.
    BOOL BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, DWORD rop) {
        return ::BitBlt(m_hDC, x, y, width, height, HandleOf(source), sourceX, sourceY, rop);
    }
    BOOL StretchBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, int sourceWidth, int sourceHeight,
                    DWORD rop) {
        return ::StretchBlt(m_hDC, x, y, width, height, HandleOf(source), sourceX, sourceY, sourceWidth, sourceHeight, rop);
    }
    BOOL TransparentBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, int sourceWidth,
                        int sourceHeight, UINT color) {
        return ::TransparentBlt(m_hDC, x, y, width, height, HandleOf(source), sourceX, sourceY, sourceWidth, sourceHeight, color);
    }
    BOOL AlphaBlend(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, int sourceWidth, int sourceHeight,
                    BLENDFUNCTION blend) {
        return ::AlphaBlend(m_hDC, x, y, width, height, HandleOf(source), sourceX, sourceY, sourceWidth, sourceHeight, blend);
    }

    virtual BOOL TextOut(int x, int y, LPCTSTR text, int length) { return ::TextOutW(m_hDC, x, y, text, length); }
    BOOL TextOut(int x, int y, const CString& text) { return TextOut(x, y, text, text.GetLength()); }
    virtual BOOL ExtTextOut(int x, int y, UINT options, LPCRECT rect, LPCTSTR text, UINT length, const INT* widths) {
        return ::ExtTextOutW(m_hDC, x, y, options, rect, text, length, widths);
    }
    BOOL ExtTextOut(int x, int y, UINT options, LPCRECT rect, const CString& text, const INT* widths) {
        return ExtTextOut(x, y, options, rect, text, static_cast<UINT>(text.GetLength()), widths);
    }
    // The text's height; 0 on failure. A length of -1 ends at the terminator. DT_MODIFYSTRING is taken away from `format`.
    virtual int DrawText(LPCTSTR text, int length, LPRECT rect, UINT format);
    int DrawText(const CString& text, LPRECT rect, UINT format) { return DrawText(text, text.GetLength(), rect, format); }
    // Empty on failure.
    CSize GetTextExtent(LPCTSTR text, int length) const;
    CSize GetTextExtent(const CString& text) const { return GetTextExtent(text, text.GetLength()); }
    CSize GetOutputTextExtent(const CString& text) const;
    BOOL GetTextMetrics(TEXTMETRICW* metrics) const { return ::GetTextMetricsW(m_hAttribDC, metrics); }

    HDC m_hDC = nullptr;
    HDC m_hAttribDC = nullptr;

protected:
    // Attach of a new handle, which is deleted where that fails.
    BOOL Own(HDC made);

private:
    static HDC HandleOf(const CDC* dc) { return dc != nullptr ? dc->m_hDC : nullptr; }
    HGDIOBJ SelectHandle(HGDIOBJ object);
    template <class Object>
    Object* Select(Object* object) {
        return object != nullptr ? AfxGdiCast<Object>(CGdiObject::FromHandle(SelectHandle(object->m_hObject))) : nullptr;
    }
    template <class Object>
    Object* Current(UINT type) const {
        return AfxGdiCast<Object>(CGdiObject::FromHandle(::GetCurrentObject(m_hAttribDC, type)));
    }
};
