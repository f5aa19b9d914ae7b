// skin_pictures FOLDER: the demo's skin as pictures without text, which both builds have to draw alike (scripts/compare-skin).
//
// unscaled-N.png shows every bitmap as it is and the corners of all buttons, scaled-N.png the whole sheet; N is 100 or 200.

#include <kadata/directory.h>

#include <algorithm>

#include "picture_file.h"
#include "skin/skin_ids.h"
#include "skin_setup.h"
#include "skin_sheet.h"

namespace {

constexpr int kWidth = 1000;
constexpr int kHeight = 1500;
constexpr int kGap = 4;

// Puts pieces beside each other, and into a new row where there is no more room.
class Rows {
public:
    CPoint Place(CSize size) {
        if (m_at.x + size.cx > kWidth) {
            m_at = CPoint(0, m_bottom);
        }
        const CPoint at = m_at;
        m_at.x += size.cx + kGap;
        m_bottom = std::max<LONG>(m_bottom, at.y + size.cy + kGap);
        return at;
    }
    bool Fit() const { return m_bottom <= kHeight; }

private:
    CPoint m_at;
    LONG m_bottom = 0;
};

bool DrawWhole(CPicture& picture, CSkin& surface, const SkinBitmapInfo& info, Rows& rows) {
    Gdiplus::Bitmap bitmap(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(info.nBitmapID));
    const CSize size(static_cast<int>(bitmap.GetWidth()), static_cast<int>(bitmap.GetHeight()));
    const CRect target(rows.Place(size), size);
    return size.cx > 0 && surface.DrawBitmapPart(&picture.Graphics(), &bitmap, CRect(CPoint(), size), target) == Gdiplus::Ok;
}

bool DrawCorners(CPicture& picture, CSkin& surface, const SkinBitmapInfo& info, Rows& rows) {
    const int side = static_cast<int>(2 * info.nCorner);
    bool good = true;
    for (int state = CSkin::SkinNormal; state <= CSkin::SkinDefaultDisabled; ++state) {
        const CRect target(rows.Place(CSize(side, side)), CSize(side, side));
        good &= surface.DrawButtonBitmap(&picture.Graphics(), static_cast<CSkin::ESkinBitmapType>(state), target) == Gdiplus::Ok;
    }
    return good;
}

bool SaveUnscaled(CDC* screen, int percent, const CString& path) {
    const SkinInfo info = MakeSkinInfo(percent);
    SSurfaces skin;
    CPicture picture(screen, kWidth, kHeight);
    Rows rows;
    bool good = skin.Load(info) && DrawWhole(picture, skin.window, info.windowFrame, rows);
    const struct {
        CSkin& surface;
        const SkinBitmapInfo& bitmap;
    } buttons[] = {{skin.button, info.button},
                   {skin.closeBox, info.captionButton},
                   {skin.toolBarButton, info.toolBarButton},
                   {skin.statusBarPane, info.statusBarPane}};
    for (const auto& row : buttons) {
        good = good && DrawWhole(picture, row.surface, row.bitmap, rows) && DrawCorners(picture, row.surface, row.bitmap, rows);
    }
    return good && rows.Fit() && SaveBitmapPicture(picture.Bitmap(), path);
}

CString Path(const CString& folder, LPCTSTR kind, int percent) {
    CString name;
    name.Format(_T("%s-%d.png"), kind, percent);
    return CDirectory::Concat(folder, name);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        return 2;
    }
    SetEnvironmentVariableW(_T("KADATA_SCREEN"), _T("1920x1080"));
    const CGdiPlus gdiplus;
    const CString folder(arguments[1]);
    CDC screen;
    bool good = screen.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr) != FALSE;
    for (const int percent : {100, 200}) {
        good = good && SaveUnscaled(&screen, percent, Path(folder, _T("unscaled"), percent)) &&
               SaveSkinSheet(percent, NO_TEXT, Path(folder, _T("scaled"), percent));
    }
    return good ? 0 : 1;
}
