#pragma once

// Drawing objects: pens, brushes, fonts, bitmaps and regions as objects that own a handle of the system.
//
// A Create... or Load... function gives an object without handle a new one and returns TRUE; FALSE, and nothing has changed, when
// the object has one already or the system refuses. Destroying the object deletes the handle. An object must not be destroyed
// while it is selected into a device context.
//
// FromHandle gives the object that owns the handle, or a temporary one of the right class; null for a null handle, or one of
// another kind. A temporary object stays valid until its thread is idle or calls DeleteTempMap, is not to be deleted, and does
// not own the handle. One object is used by one thread at a time.

#include "afx_object.h"
#include "afx_string.h"
#include "atltypes.h"

class CBitmap;
class CDC;

class KADATA_API CGdiObject : public CObject {
    DECLARE_DYNCREATE(CGdiObject)

public:
    CGdiObject() = default;
    ~CGdiObject() override;

    // Null without a handle.
    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    operator HGDIOBJ() const { return m_hObject; }

    static CGdiObject* FromHandle(HGDIOBJ object);
    // The temporary objects of the calling thread go.
    static void DeleteTempMap();

    // The handle becomes the object's, to be deleted with it. FALSE for null and when the object has a handle already.
    BOOL Attach(HGDIOBJ object);
    // Gives the handle up to the caller; null when there was none.
    HGDIOBJ Detach();
    // Deletes the handle. FALSE without one, or when the system refuses; the object has none afterwards.
    BOOL DeleteObject();

    // Fills `data` with the structure that belongs to the handle's kind (LOGPEN, BITMAP, ...); the bytes written, 0 on failure.
    int GetObject(int size, LPVOID data) const { return ::GetObjectW(m_hObject, size, data); }
    // OBJ_PEN and the like; 0 without a handle.
    UINT GetObjectType() const { return m_hObject != nullptr ? ::GetObjectType(m_hObject) : 0; }
    // WHITE_BRUSH and the like.
    BOOL CreateStockObject(int index) { return Own(::GetStockObject(index)); }
    // A brush's origin may be set anew before the next SelectObject.
    BOOL UnrealizeObject() { return ::UnrealizeObject(m_hObject); }

    HGDIOBJ m_hObject = nullptr;

protected:
    // Attach of a new handle, which is deleted where that fails.
    BOOL Own(HGDIOBJ made);
    void OwnOrThrow(HGDIOBJ made);  // CResourceException*
};

inline bool operator==(const CGdiObject& a, const CGdiObject& b) {
    return a.m_hObject == b.m_hObject;
}

// The object as one of a more special class; null where it is none.
template <class Object>
Object* AfxGdiCast(CGdiObject* object) {
    return dynamic_cast<Object*>(object);
}

class KADATA_API CPen : public CGdiObject {
    DECLARE_DYNCREATE(CPen)

public:
    CPen() = default;
    // PS_SOLID and the like; the width in logical units, 0 for one pixel. Throws CResourceException* on failure.
    CPen(int style, int width, COLORREF color) { OwnOrThrow(::CreatePen(style, width, color)); }

    static CPen* FromHandle(HPEN pen) { return AfxGdiCast<CPen>(CGdiObject::FromHandle(pen)); }
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }

    BOOL CreatePen(int style, int width, COLORREF color) { return Own(::CreatePen(style, width, color)); }
    BOOL CreatePenIndirect(const LOGPEN* pen) { return Own(::CreatePenIndirect(pen)); }
    // The bytes written, 0 on failure.
    int GetLogPen(LOGPEN* pen) const { return GetObject(sizeof(LOGPEN), pen); }
};

class KADATA_API CBrush : public CGdiObject {
    DECLARE_DYNCREATE(CBrush)

public:
    CBrush() = default;
    // These throw CResourceException* on failure. HS_CROSS and the like; the bitmap's pixels are copied.
    explicit CBrush(COLORREF color) { OwnOrThrow(::CreateSolidBrush(color)); }
    CBrush(int hatch, COLORREF color) { OwnOrThrow(::CreateHatchBrush(hatch, color)); }
    explicit CBrush(CBitmap* bitmap);

    static CBrush* FromHandle(HBRUSH brush) { return AfxGdiCast<CBrush>(CGdiObject::FromHandle(brush)); }
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }

    BOOL CreateSolidBrush(COLORREF color) { return Own(::CreateSolidBrush(color)); }
    BOOL CreateHatchBrush(int hatch, COLORREF color) { return Own(::CreateHatchBrush(hatch, color)); }
    BOOL CreateBrushIndirect(const LOGBRUSH* brush) { return Own(::CreateBrushIndirect(brush)); }
    BOOL CreatePatternBrush(CBitmap* bitmap);
    // COLOR_WINDOW and the like.
    BOOL CreateSysColorBrush(int index) { return Own(::GetSysColorBrush(index)); }
    int GetLogBrush(LOGBRUSH* brush) const { return GetObject(sizeof(LOGBRUSH), brush); }
};

class KADATA_API CFont : public CGdiObject {
    DECLARE_DYNCREATE(CFont)

public:
    CFont() = default;

    static CFont* FromHandle(HFONT font) { return AfxGdiCast<CFont>(CGdiObject::FromHandle(font)); }
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }

    BOOL CreateFontIndirect(const LOGFONT* font) { return Own(::CreateFontIndirectW(font)); }
    BOOL CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic, BYTE underline,
                    BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision, BYTE quality, BYTE pitchAndFamily,
                    LPCTSTR face);
    // A font of `tenths` tenths of a point on the context, or on the screen without one. In the indirect form lfHeight holds the
    // tenths.
    BOOL CreatePointFont(int tenths, LPCTSTR face, CDC* dc = nullptr);
    BOOL CreatePointFontIndirect(const LOGFONT* font, CDC* dc = nullptr);
    int GetLogFont(LOGFONT* font) const { return GetObject(sizeof(LOGFONT), font); }
};

class KADATA_API CBitmap : public CGdiObject {
    DECLARE_DYNCREATE(CBitmap)

public:
    CBitmap() = default;

    static CBitmap* FromHandle(HBITMAP bitmap) { return AfxGdiCast<CBitmap>(CGdiObject::FromHandle(bitmap)); }
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }

    // A bitmap resource of the module that AfxFindResourceHandle tells.
    BOOL LoadBitmap(LPCTSTR name);
    BOOL LoadBitmap(UINT id) { return LoadBitmap(MAKEINTRESOURCEW(static_cast<WORD>(id))); }
    BOOL CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits) {
        return Own(::CreateBitmap(width, height, planes, bitsPerPixel, bits));
    }
    BOOL CreateBitmapIndirect(const BITMAP* bitmap) { return Own(::CreateBitmapIndirect(bitmap)); }
    BOOL CreateCompatibleBitmap(CDC* dc, int width, int height);

    int GetBitmap(BITMAP* bitmap) const { return GetObject(sizeof(BITMAP), bitmap); }
    // Bytes copied, 0 on failure. Rows are a multiple of two bytes.
    DWORD GetBitmapBits(DWORD size, LPVOID bits) const;
    DWORD SetBitmapBits(DWORD size, const void* bits);
};

class KADATA_API CRgn : public CGdiObject {
    DECLARE_DYNCREATE(CRgn)

public:
    CRgn() = default;

    static CRgn* FromHandle(HRGN region) { return AfxGdiCast<CRgn>(CGdiObject::FromHandle(region)); }
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }

    BOOL CreateRectRgn(int left, int top, int right, int bottom) { return Own(::CreateRectRgn(left, top, right, bottom)); }
    BOOL CreateRectRgnIndirect(LPCRECT rect) { return Own(::CreateRectRgnIndirect(rect)); }
    BOOL CreateEllipticRgn(int left, int top, int right, int bottom) {
        return Own(::CreateEllipticRgn(left, top, right, bottom));
    }
    BOOL CreatePolygonRgn(const POINT* points, int count, int mode) { return Own(::CreatePolygonRgn(points, count, mode)); }
    BOOL CreateRoundRectRgn(int left, int top, int right, int bottom, int width, int height) {
        return Own(::CreateRoundRectRgn(left, top, right, bottom, width, height));
    }
    BOOL CreateFromData(const XFORM* transform, int size, const RGNDATA* data) {
        return Own(::ExtCreateRegion(transform, static_cast<DWORD>(size), data));
    }

    void SetRectRgn(int left, int top, int right, int bottom) { ::SetRectRgn(*this, left, top, right, bottom); }
    void SetRectRgn(LPCRECT rect) { SetRectRgn(rect->left, rect->top, rect->right, rect->bottom); }
    // NULLREGION, SIMPLEREGION or COMPLEXREGION, ERROR on failure. RGN_AND and the like; the region must exist already, and may
    // be one of the two.
    int CombineRgn(const CRgn* a, const CRgn* b, int mode);
    int CopyRgn(const CRgn* other) { return CombineRgn(other, nullptr, RGN_COPY); }
    BOOL EqualRgn(const CRgn* other) const { return ::EqualRgn(*this, *other); }
    int OffsetRgn(int x, int y) { return ::OffsetRgn(*this, x, y); }
    int OffsetRgn(POINT by) { return OffsetRgn(by.x, by.y); }
    int GetRgnBox(LPRECT box) const { return ::GetRgnBox(*this, box); }
    BOOL PtInRegion(int x, int y) const { return ::PtInRegion(*this, x, y); }
    BOOL PtInRegion(POINT point) const { return PtInRegion(point.x, point.y); }
    BOOL RectInRegion(LPCRECT rect) const { return ::RectInRegion(*this, rect); }
    // Bytes needed or written, 0 on failure.
    int GetRegionData(LPRGNDATA data, int size) const {
        return static_cast<int>(::GetRegionData(*this, static_cast<DWORD>(size), data));
    }
};
