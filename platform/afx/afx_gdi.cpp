#include "afx_gdi.h"

#include "afx_dc.h"
#include "afx_exception.h"
#include "afx_handle_map.h"
#include "afx_resource.h"

IMPLEMENT_DYNCREATE(CGdiObject, CObject)
IMPLEMENT_DYNCREATE(CPen, CGdiObject)
IMPLEMENT_DYNCREATE(CBrush, CGdiObject)
IMPLEMENT_DYNCREATE(CFont, CGdiObject)
IMPLEMENT_DYNCREATE(CBitmap, CGdiObject)
IMPLEMENT_DYNCREATE(CRgn, CGdiObject)

namespace {

using ObjectMap = afx::HandleMap<CGdiObject, &CGdiObject::m_hObject>;

constexpr DWORD kExtendedPen = 11;  // OBJ_EXTPEN, which not every system header names
constexpr LONG kTenthsPerInch = 720;

CRuntimeClass* ClassOf(HGDIOBJ object) {
    switch (::GetObjectType(object)) {
        case OBJ_PEN:
        case kExtendedPen:
            return RUNTIME_CLASS(CPen);
        case OBJ_BRUSH:
            return RUNTIME_CLASS(CBrush);
        case OBJ_FONT:
            return RUNTIME_CLASS(CFont);
        case OBJ_BITMAP:
            return RUNTIME_CLASS(CBitmap);
        case OBJ_REGION:
            return RUNTIME_CLASS(CRgn);
        default:
            return RUNTIME_CLASS(CGdiObject);
    }
}

// For the time that the context of the screen is asked something.
class ScreenContext {
public:
    ScreenContext() = default;
    ScreenContext(const ScreenContext&) = delete;
    ScreenContext& operator=(const ScreenContext&) = delete;
    ~ScreenContext() { ::ReleaseDC(nullptr, m_dc); }
    HDC Get() const { return m_dc; }

private:
    const HDC m_dc = ::GetDC(nullptr);
};

LONG PixelsOfTenths(HDC dc, LONG tenths) {
    const LONG pixels = (::GetDeviceCaps(dc, LOGPIXELSY) * tenths + kTenthsPerInch / 2) / kTenthsPerInch;
    POINT points[2] = {{0, pixels}, {0, 0}};
    ::DPtoLP(dc, points, 2);
    const LONG height = points[0].y - points[1].y;
    return height < 0 ? height : -height;  // negative is the height of the characters
}

}  // namespace

CGdiObject::~CGdiObject() {
    CGdiObject::DeleteObject();
}

CGdiObject* CGdiObject::FromHandle(HGDIOBJ object) {
    CGdiObject* const permanent = object != nullptr ? ObjectMap::FindPermanent(object) : nullptr;
    if (object == nullptr || permanent != nullptr) {
        return permanent;
    }
    CRuntimeClass* const type = ClassOf(object);
    CGdiObject* const known = ObjectMap::FindTemporary(object);
    if (known != nullptr && known->GetRuntimeClass() == type) {
        return known;
    }
    return ObjectMap::Keep(std::unique_ptr<CGdiObject>(static_cast<CGdiObject*>(type->CreateObject())), object);
}

void CGdiObject::DeleteTempMap() {
    ObjectMap::DeleteTemporaries();
}

BOOL CGdiObject::Attach(HGDIOBJ object) {
    return ObjectMap::Attach(*this, object);
}

HGDIOBJ CGdiObject::Detach() {
    return ObjectMap::Detach(*this);
}

BOOL CGdiObject::DeleteObject() {
    const HGDIOBJ object = Detach();
    return object != nullptr && ::DeleteObject(object);
}

BOOL CGdiObject::Own(HGDIOBJ made) {
    if (Attach(made)) {
        return TRUE;
    }
    if (made != nullptr) {
        ::DeleteObject(made);
    }
    return FALSE;
}

void CGdiObject::OwnOrThrow(HGDIOBJ made) {
    if (!Own(made)) {
        AfxThrowResourceException();
    }
}

CBrush::CBrush(CBitmap* bitmap) {
    OwnOrThrow(bitmap != nullptr ? ::CreatePatternBrush(*bitmap) : nullptr);
}

BOOL CBrush::CreatePatternBrush(CBitmap* bitmap) {
    return bitmap != nullptr && Own(::CreatePatternBrush(*bitmap));
}

BOOL CFont::CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic, BYTE underline,
                       BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision, BYTE quality, BYTE pitchAndFamily,
                       LPCTSTR face) {
    LOGFONT font = {};
    font.lfHeight = height;
    font.lfWidth = width;
    font.lfEscapement = escapement;
    font.lfOrientation = orientation;
    font.lfWeight = weight;
    font.lfItalic = italic;
    font.lfUnderline = underline;
    font.lfStrikeOut = strikeOut;
    font.lfCharSet = charSet;
    font.lfOutPrecision = outPrecision;
    font.lfClipPrecision = clipPrecision;
    font.lfQuality = quality;
    font.lfPitchAndFamily = pitchAndFamily;
    CString(face).Left(LF_FACESIZE - 1).View().copy(font.lfFaceName, LF_FACESIZE - 1);
    return CreateFontIndirect(&font);
}

BOOL CFont::CreatePointFont(int tenths, LPCTSTR face, CDC* dc) {
    LOGFONT font = {};
    font.lfHeight = tenths;
    font.lfCharSet = DEFAULT_CHARSET;
    CString(face).Left(LF_FACESIZE - 1).View().copy(font.lfFaceName, LF_FACESIZE - 1);
    return CreatePointFontIndirect(&font, dc);
}

BOOL CFont::CreatePointFontIndirect(const LOGFONT* font, CDC* dc) {
    LOGFONT scaled = *font;
    scaled.lfHeight =
        dc != nullptr ? PixelsOfTenths(dc->m_hAttribDC, font->lfHeight) : PixelsOfTenths(ScreenContext().Get(), font->lfHeight);
    return CreateFontIndirect(&scaled);
}

BOOL CBitmap::LoadBitmap(LPCTSTR name) {
    return Own(::LoadBitmapW(AfxFindResourceHandle(name, RT_BITMAP), name));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height) {
    return dc != nullptr && Own(::CreateCompatibleBitmap(dc->m_hDC, width, height));
}

DWORD CBitmap::GetBitmapBits(DWORD size, LPVOID bits) const {
    return static_cast<DWORD>(::GetBitmapBits(*this, static_cast<LONG>(size), bits));
}

DWORD CBitmap::SetBitmapBits(DWORD size, const void* bits) {
    return static_cast<DWORD>(::SetBitmapBits(*this, size, bits));
}

int CRgn::CombineRgn(const CRgn* a, const CRgn* b, int mode) {
    return ::CombineRgn(*this, a != nullptr ? HRGN(*a) : nullptr, b != nullptr ? HRGN(*b) : nullptr, mode);
}
