#include "box_sheet.h"

#include <kadata/skin_message_box.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "picture_file.h"
#include "skin/skin_ids.h"
#include "skin_setup.h"

namespace {

constexpr int WIDTH = 1640;  // of the sheet, in pixels at 100 %
constexpr int GAP = 14;
constexpr COLORREF TABLE = RGB(0x8A, 0x96, 0x9C);  // what the boxes lie on
const UINT TAKE_PICTURE = WM_APP + 1;

struct SBox {
    UINT text;
    UINT style;
    UINT seconds = 0;
    BOOL disabled = FALSE;
};

// Opens, is taken a picture of, and closes.
class CPicturedBox : public CSkinMessageBox {
public:
    CPicturedBox(const SBox& box, int percent, LANGID language)
        : CSkinMessageBox(nullptr, LoadText(box.text, language), LoadText(IDS_BOX_TITLE, language), box.style),
          m_skin(MakeSkinInfo(percent)),
          m_large(percent == 200) {
        for (int i = 0; i < STRINGS; ++i) {
            SetString(static_cast<EString>(i), LoadText(IDS_OK + static_cast<UINT>(i), language));
        }
        SetTimeout(box.seconds, box.disabled);
    }

    // Null when there was no box.
    std::unique_ptr<CPicture> Take() {
        DoModal();
        return std::move(m_picture);
    }

protected:
    LPCTSTR GetIDD() const override { return m_large ? _T("CD_SKINMESSAGEBOX_LARGE") : CSkinMessageBox::GetIDD(); }
    const SkinInfo& GetSkinInfo() const override { return m_skin; }
    BOOL OnInitDialog() override {
        const BOOL result = CSkinMessageBox::OnInitDialog();
        PostMessage(TAKE_PICTURE);
        return result;
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == TAKE_PICTURE) {
            TakePicture();
            EndDialog(IDCANCEL);
            return 0;
        }
        return CSkinMessageBox::WindowProc(message, wParam, lParam);
    }

private:
    void TakePicture() {
        ShowWindow(SW_SHOW);
        SendMessage(WM_NCACTIVATE, TRUE);
        RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
        CRect rect;
        GetWindowRect(rect);
        CWindowDC source(this);
        m_picture = std::make_unique<CPicture>(&source, rect.Width(), rect.Height());
        m_picture->Context().BitBlt(0, 0, rect.Width(), rect.Height(), &source, 0, 0, SRCCOPY);
    }

    SkinInfo m_skin;
    bool m_large;
    std::unique_ptr<CPicture> m_picture;
};

CSize SizeOf(CPicture& picture) {
    BITMAP description = {};
    picture.Bitmap().GetBitmap(&description);
    return {description.bmWidth, description.bmHeight};
}

// Each type of buttons, each of its buttons being the default one.
void AddTypes(std::vector<SBox>& boxes) {
    constexpr UINT BUTTONS[] = {1, 2, 3, 5, 4, 2, 3, 2, 3, 3};
    constexpr UINT ICONS[] = {MB_ICONASTERISK, MB_ICONQUESTION, MB_ICONHAND, MB_ICONEXCLAMATION, 0};
    constexpr UINT TEXTS[] = {IDS_BOX_DONE, IDS_BOX_DELETE, IDS_BOX_LOST,    IDS_BOX_SAVE, IDS_BOX_DELETE,
                              IDS_BOX_LOST, IDS_BOX_LOST,   IDS_BOX_MILLING, IDS_BOX_SAVE, IDS_BOX_LOST};
    for (UINT type = 0; type < std::size(BUTTONS); ++type) {
        for (UINT button = 0; button < BUTTONS[type]; ++button) {
            const UINT further = type == MB_YESNO || type == MB_YESNOCANCEL ? MB_YESTOALL | MB_NOTOALL : 0;
            const UINT icon = ICONS[(type + button) % std::size(ICONS)];
            boxes.push_back({TEXTS[type], type | icon | button * MB_DEFBUTTON2 | further});
        }
    }
}

std::vector<SBox> AllBoxes() {
    std::vector<SBox> boxes;
    AddTypes(boxes);
    const SBox others[] = {
        {IDS_BOX_DELETE, MB_YESNO | MB_YESTOALL | MB_ICONQUESTION},
        {IDS_BOX_DELETE, MB_YESNO | MB_NOTOALL | MB_ICONQUESTION},
        {IDS_BOX_DELETE, MB_YESNO | MB_ICONQUESTION | MB_HELP},
        {IDS_BOX_DONE, MB_OK | MB_DONOTSHOWAGAIN | MB_ICONASTERISK},
        {IDS_BOX_SAVE, MB_YESNOCANCEL | MB_REMEMBERANSWER | MB_ICONQUESTION},
        {IDS_BOX_MILLING, MB_OKCANCEL | MB_ICONEXCLAMATION, 10, FALSE},
        {IDS_BOX_MILLING, MB_OKCANCEL | MB_ICONEXCLAMATION | MB_DONOTSHOWAGAIN, 10, TRUE},
        {IDS_BOX_LONG, MB_OK | MB_ICONHAND},
        {IDS_BOX_LONG, MB_OKCANCEL | MB_BUTTONSRIGHT},
        {IDS_BOX_LONG, MB_RETRYCANCEL | MB_RIGHT | MB_BUTTONSRIGHT | MB_ICONHAND | MB_REMEMBERANSWER},
    };
    boxes.insert(boxes.end(), std::begin(others), std::end(others));
    return boxes;
}

// In rows, as many in each as there is room for; the height of all of them.
int PlaceInRows(const std::vector<CSize>& sizes, int width, int gap, std::vector<CPoint>& places) {
    CPoint at(gap, gap);
    int row = 0;
    for (const CSize& size : sizes) {
        if (at.x > gap && at.x + size.cx + gap > width) {
            at = CPoint(gap, at.y + row + gap);
            row = 0;
        }
        places.push_back(at);
        at.x += size.cx + gap;
        row = std::max<int>(row, size.cy);
    }
    return at.y + row + gap;
}

}  // namespace

BOOL SaveBoxPicture(int percent, LANGID language, const CString& path) {
    const SBox box = {IDS_BOX_BIRTHDAY, MB_YESNOCANCEL | MB_ICONEXCLAMATION | MB_DONOTSHOWAGAIN | MB_HELP};
    const std::unique_ptr<CPicture> picture = CPicturedBox(box, percent, language).Take();
    return picture != nullptr && SaveBitmapPicture(picture->Bitmap(), path);
}

BOOL SaveBoxSheet(int percent, LANGID language, const CString& path) {
    std::vector<std::unique_ptr<CPicture>> pictures;
    std::vector<CSize> sizes;
    for (const SBox& box : AllBoxes()) {
        std::unique_ptr<CPicture> picture = CPicturedBox(box, percent, language).Take();
        if (picture == nullptr) {
            return FALSE;
        }
        sizes.push_back(SizeOf(*picture));
        pictures.push_back(std::move(picture));
    }
    std::vector<CPoint> places;
    const int width = WIDTH * percent / 100;
    const int height = PlaceInRows(sizes, width, GAP * percent / 100, places);
    CPicture sheet(&pictures.front()->Context(), width, height);
    sheet.Context().FillSolidRect(0, 0, width, height, TABLE);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        sheet.Context().BitBlt(places[i].x, places[i].y, sizes[i].cx, sizes[i].cy, &pictures[i]->Context(), 0, 0, SRCCOPY);
    }
    return SaveBitmapPicture(sheet.Bitmap(), path);
}
