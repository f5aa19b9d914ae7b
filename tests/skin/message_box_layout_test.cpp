// Where everything is in the message box. The sizes are asked from the controls, since each system has its own fonts.

#include <algorithm>

#include "message_box_fixture.h"

using namespace test;

namespace {

CRect WorkArea() {
    CRect rect;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &rect, 0);
    return rect;
}

CSize TextSize(Box& box, const CString& text, UINT format, int width) {
    CClientDC dc(&box);
    CFont* const before = dc.SelectObject(box.GetFont());
    CRect rect(0, 0, width, 0);
    dc.DrawText(text, rect, format | DT_CALCRECT);
    dc.SelectObject(before);
    return rect.Size();
}

CString LongText() {
    CString text;
    for (int i = 0; i < 60; ++i) {
        text += _T("The crown does not fit & the bridge neither. ");
    }
    return text;
}

struct Row {
    LPCSTR name;
    UINT style;
    bool isLong;
    bool countdown = false;
};

const Row ROWS[] = {
    {"plain", MB_OK, false},
    {"long", MB_OKCANCEL, true},
    {"icon", MB_YESNO | MB_ICONQUESTION, false},
    {"icon, long", MB_YESNOCANCEL | MB_ICONHAND, true},
    {"text to the right", MB_OK | MB_RIGHT | MB_ICONASTERISK, true},
    {"buttons to the right", MB_OK | MB_BUTTONSRIGHT, true},
    {"many buttons", MB_YESNOCANCEL | MB_YESTOALL | MB_NOTOALL | MB_HELP, false},
    {"many to the right", MB_YESNOCANCEL | MB_YESTOALL | MB_NOTOALL | MB_BUTTONSRIGHT, false},
    {"check box", MB_OK | MB_DONOTSHOWAGAIN, false},
    {"the other check box", MB_OK | MB_REMEMBERANSWER | MB_ICONEXCLAMATION, false},
    {"all", MB_ABORTRETRYIGNORE | MB_REMEMBERANSWER | MB_ICONHAND | MB_HELP | MB_BUTTONSRIGHT, true, true},
    {"countdown", MB_OKCANCEL | MB_DEFBUTTON2, false, true},
};

// What the rules say of the places, in the units of the box's font.
class Places {
public:
    Places(Box& box, const Row& row) : box_(box), row_(row) {
        CRect units(0, 0, 1000, 1000);
        box.MapDialogRect(units);
        unit_ = units.Size();
        box.GetClientRect(client_);
        icon_ = box.RectOf(Box::ControlIcon);
        message_ = box.RectOf(Box::ControlMessage);
        check_ = box.RectOf(Box::ControlCheckBox);
    }

    void Expect() {
        ExpectIcon();
        ExpectMessage();
        ExpectCheckBox();
        ExpectButtons();
        const bool hasIcon = !icon_.IsRectEmpty();
        int width = (hasIcon ? 4 * X(8) + icon_.Width() : 3 * X(8)) + message_.Width();
        int height = std::max((hasIcon ? 3 * Y(8) + icon_.Height() : 2 * Y(8)), 2 * Y(8) + Y(4) + message_.Height());
        if (!check_.IsRectEmpty()) {
            width = std::max(width, X(8) + check_.Width() + static_cast<int>(message_.left));
            height = std::max(height, Y(8) + check_.Height() + static_cast<int>(check_.top));
        }
        EXPECT_EQ(client_.Width(), std::max(width, static_cast<int>(row_ends_ - row_begins_) + 2 * X(8)));
        EXPECT_EQ(client_.Height(), height + Y(8) + button_.cy);
        ExpectInTheMiddle();
    }

private:
    int X(int n) const { return n * unit_.cx / 1000; }
    int Y(int n) const { return n * unit_.cy / 1000; }

    void ExpectIcon() {
        const bool wanted = (row_.style & MB_ICONMASK) != 0;
        EXPECT_EQ(!icon_.IsRectEmpty(), wanted);
        if (wanted) {
            EXPECT_EQ(icon_.TopLeft(), CPoint(X(8), Y(8)));
            EXPECT_EQ(icon_.Size(), CSize(GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON)));
        }
    }
    void ExpectMessage() {
        const int left = icon_.IsRectEmpty() ? X(8) : 2 * X(8) + icon_.Width();
        EXPECT_EQ(message_.TopLeft(), CPoint(left, Y(8)));
        const int most = GetSystemMetrics(SM_CXSCREEN) / 2 + 100 - (icon_.IsRectEmpty() ? 0 : 2 * X(8) + icon_.Width());
        EXPECT_EQ(message_.Size(), TextSize(box_, box_.GetMessage(), DT_WORDBREAK | DT_NOPREFIX, most));
        const DWORD style = box_.GetDlgItem(Box::ControlMessage)->GetStyle();
        EXPECT_EQ(style & SS_TYPEMASK, static_cast<DWORD>((row_.style & MB_RIGHT) != 0 ? SS_RIGHT : SS_LEFT));
        EXPECT_EQ(message_.Height() > 40, row_.isLong);  // it wraps
    }
    void ExpectCheckBox() {
        const bool wanted = (row_.style & 0x03000000) != 0;
        EXPECT_EQ(!check_.IsRectEmpty(), wanted);
        if (wanted) {
            const CString caption = (row_.style & MB_DONOTSHOWAGAIN) != 0 ? _T("T14") : _T("T15");
            const CSize text = TextSize(box_, caption, DT_SINGLELINE, 0);
            EXPECT_EQ(box_.TextOf(Box::ControlCheckBox), caption);
            EXPECT_EQ(check_.TopLeft(), CPoint(message_.left, 2 * Y(8) + Y(4) + message_.Height()));
            EXPECT_EQ(check_.Size(), CSize(text.cx + X(14), text.cy));
        }
    }
    // One row of buttons of one size with gaps of one width.
    void ExpectButtons() {
        CRect last;
        CSize largest(X(40), Y(14));
        int count = 0;
        for (const int id : {IDOK, IDABORT, IDRETRY, IDIGNORE, IDYES, 14, IDNO, 15, IDCANCEL, IDHELP}) {
            const CRect rect = box_.RectOf(id);
            if (rect.IsRectEmpty()) {
                continue;
            }
            const CSize text = TextSize(box_, box_.TextOf(id), DT_SINGLELINE, 0);
            largest = CSize(std::max(largest.cx, text.cx), std::max(largest.cy, text.cy));
            EXPECT_EQ(rect.bottom, client_.bottom - Y(8));
            row_begins_ = count == 0 ? rect.left : row_begins_;
            EXPECT_TRUE(count == 0 || (rect.Size() == last.Size() && rect.left == last.right + X(4))) << id;
            last = rect;
            ++count;
        }
        row_ends_ = last.right;
        button_ = last.Size();
        EXPECT_EQ(button_, largest + CSize(2 * X(4), 2 * X(1)));
        const LONG left = row_begins_;
        const LONG right = client_.right - row_ends_;
        const bool toTheRight = (row_.style & MB_BUTTONSRIGHT) != 0;
        EXPECT_TRUE(toTheRight ? right == X(8) : left == right || left + 1 == right);
    }
    void ExpectInTheMiddle() {
        const CRect window = box_.Window();
        const CSize off = window.CenterPoint() - WorkArea().CenterPoint();
        EXPECT_TRUE(std::abs(off.cx) <= 1 && std::abs(off.cy) <= 1);
        CRect frame = client_;
        box_.CalcWindowRect(frame);
        EXPECT_EQ(frame.Size(), window.Size());
    }

    Box& box_;
    const Row& row_;
    CSize unit_;
    CRect client_, icon_, message_, check_;
    CSize button_;
    LONG row_begins_ = 0;
    LONG row_ends_ = 0;
};

using BoxLayout = MessageBoxTest;

TEST_F(BoxLayout, FollowsSizesOfTheControls) {
    for (const bool skinned : {false, true}) {
        for (const Row& row : ROWS) {
            SCOPED_TRACE(std::string(row.name) + (skinned ? ", skinned" : ""));
            Box box(row.style, row.isLong ? LongText() : CString(_T("Done & saved.")));
            for (int i = 0; i < Box::STRINGS; ++i) {
                CString caption;
                caption.Format(_T("T%d"), i);
                box.SetString(static_cast<Box::EString>(i), i == Box::StringAbort ? CString(_T("Do not go on at all")) : caption);
            }
            box.SetTimeout(row.countdown ? 100 : 0, FALSE);
            box.m_skin = skinned ? AnySkin() : SkinInfo();
            box.Run({box.StopClock(), [&] {
                         EXPECT_EQ(box.IsSkinned(), skinned);
                         Places(box, row).Expect();
                     }});
        }
    }
}

TEST_F(BoxLayout, NeverLeavesTheWorkArea) {
    const CString word(_T('W'), 20000);
    CString lines;
    for (int i = 0; i < 3000; ++i) {
        lines.AppendFormat(_T("Line %d\n"), i);
    }
    const struct {
        LPCSTR name;
        CString text;
        CString caption;
    } rows[] = {{"a million characters", CString(_T('x'), 1000000), CString()},
                {"many lines", lines, CString()},
                {"one word", word.Left(1500), CString()},
                {"long captions", _T("Text"), word.Left(3000)}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Box box(MB_YESNOCANCEL | MB_ICONHAND | MB_DONOTSHOWAGAIN, row.text);
        box.m_skin = AnySkin();
        if (!row.caption.IsEmpty()) {
            box.SetString(Box::StringYes, row.caption);
            box.SetString(Box::StringDoNotShowAgain, row.caption);
        }
        box.Run({[&] {
            const CRect window = box.Window();
            CRect all;
            all.UnionRect(window, WorkArea());
            EXPECT_EQ(all, WorkArea());
            CRect client;
            box.GetClientRect(client);
            for (const int id : {+IDYES, +IDNO, +IDCANCEL, +Box::ControlMessage, +Box::ControlCheckBox}) {
                all.UnionRect(box.RectOf(id), client);
                EXPECT_EQ(all, client) << id;
            }
        }});
    }
}

TEST_F(BoxLayout, ShowsTheIconOfTheCallerFirst) {
    const HICON own = LoadIconW(nullptr, IDI_APPLICATION);
    const std::tuple<UINT, HICON, HICON> rows[] = {{MB_ICONHAND, nullptr, LoadIconW(nullptr, IDI_HAND)},
                                                   {MB_ICONQUESTION, nullptr, LoadIconW(nullptr, IDI_QUESTION)},
                                                   {MB_ICONEXCLAMATION, nullptr, LoadIconW(nullptr, IDI_EXCLAMATION)},
                                                   {MB_ICONASTERISK, nullptr, LoadIconW(nullptr, IDI_ASTERISK)},
                                                   {MB_ICONHAND, own, own},
                                                   {MB_OK, own, own},
                                                   {0x50, nullptr, nullptr}};
    for (const auto& [style, set, shown] : rows) {
        Box box(style);
        EXPECT_FALSE(box.SetMessageIcon(9999U));
        box.SetMessageIcon(set);
        box.Run({[&, expected = shown] {
            CWnd* const icon = box.GetDlgItem(Box::ControlIcon);
            EXPECT_EQ(icon != nullptr, expected != nullptr);
            if (icon != nullptr) {
                EXPECT_EQ(icon->SendMessage(STM_GETICON), reinterpret_cast<LRESULT>(expected));
            }
        }});
    }
}

TEST_F(BoxLayout, TakesTheStyleOfTheWindow) {
    Box box(MB_OK | MB_SYSTEMMODAL | MB_TOPMOST | MB_SETFOREGROUND);
    box.Run({[&] {
        EXPECT_TRUE(GetWindowLongW(box, GWL_STYLE) & DS_SYSMODAL);
        EXPECT_TRUE(box.GetExStyle() & WS_EX_TOPMOST);
        EXPECT_EQ(GetForegroundWindow(), box.m_hWnd);
    }});
    Box plain;
    plain.Run({[&] { EXPECT_FALSE((GetWindowLongW(plain, GWL_STYLE) & DS_SYSMODAL) || (plain.GetExStyle() & WS_EX_TOPMOST)); }});
}

}  // namespace
