#include "message_text.h"

#include <algorithm>

namespace kadata {
namespace {

constexpr int FIRST_PREFIX = 512;  // characters; the search for what fits begins here
constexpr int FIRST_PIECE = 128;   // of a word, the search for what goes into a line
constexpr TCHAR ELLIPSIS[] = _T("\x2026");

bool IsSpace(TCHAR unit) {
    return unit == _T(' ') || unit == _T('\n') || unit == _T('\r');
}

bool IsSecondOfPair(TCHAR unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// How many characters of the word at `from` go into one line; at least one. No more of the word is measured than the line needs.
int CharactersIn(CDC& dc, const CString& text, int from, int to, int width) {
    int fit = 0;
    for (int asked = FIRST_PIECE; fit == 0; asked *= 2) {
        const int count = std::min(asked, to - from);
        SIZE size = {};
        ::GetTextExtentExPointW(dc.GetSafeHdc(), text.GetString() + from, count, width, &fit, nullptr, &size);
        if (fit >= count && count < to - from) {
            fit = 0;  // there is room for more
        } else {
            fit = std::clamp(fit, 1, count);
        }
    }
    const bool splits = from + fit < to && IsSecondOfPair(text[from + fit]);
    return !splits ? fit : fit > 1 ? fit - 1 : 2;
}

// With line ends inside of the words that are wider than `width`.
CString BreakWords(CDC& dc, const CString& text, int width) {
    CString result;
    int begin = 0;
    while (begin < text.GetLength()) {
        int end = begin;
        while (end < text.GetLength() && !IsSpace(text[end])) {
            ++end;
        }
        while (end > begin) {
            const int fit = CharactersIn(dc, text, begin, end, width);
            result += text.Mid(begin, fit);
            begin += fit;
            if (begin < end) {
                result += _T('\n');
            }
        }
        for (; begin < text.GetLength() && IsSpace(text[begin]); ++begin) {
            result += text[begin];
        }
    }
    return result;
}

class Fitting {
public:
    Fitting(CDC& dc, const CString& text, int wrapWidth, CSize room)
        : dc_(dc), text_(text), wrapWidth_(std::min<int>(wrapWidth, room.cx)), room_(room) {}

    // The first `length` characters, with dots if these are not all.
    bool Fits(int length) {
        shown_ = text_.Left(length);
        if (length < text_.GetLength()) {
            shown_.TrimRight();
            shown_ += ELLIPSIS;
        }
        Measure();
        if (size_.cx > room_.cx) {
            shown_ = BreakWords(dc_, shown_, room_.cx);
            Measure();
        }
        return size_.cy <= room_.cy;
    }

    const CString& Shown() const { return shown_; }
    CSize Size() const { return size_; }

private:
    void Measure() {
        CRect rect(0, 0, wrapWidth_, 0);
        dc_.DrawText(shown_, rect, MESSAGE_FORMAT | DT_CALCRECT);
        size_ = rect.Size();
    }

    CDC& dc_;
    const CString& text_;
    int wrapWidth_;
    CSize room_;
    CString shown_;
    CSize size_;
};

}  // namespace

// Never more than twice of what fits is measured, however long the text is.
CString FitMessage(CDC& dc, const CString& text, int wrapWidth, CSize room, CSize& size) {
    Fitting fitting(dc, text, wrapWidth, room);
    const int length = text.GetLength();
    int fits = 0;
    int beyond = std::min(length, FIRST_PREFIX);
    while (fitting.Fits(beyond) && beyond < length) {
        fits = beyond;
        beyond = beyond > length / 2 ? length : 2 * beyond;
    }
    if (fitting.Size().cy > room.cy) {
        while (fits + 1 < beyond) {
            const int middle = fits + (beyond - fits) / 2;
            (fitting.Fits(middle) ? fits : beyond) = middle;
        }
        fitting.Fits(fits);
    }
    size = CSize(std::min<int>(fitting.Size().cx, room.cx), std::min<int>(fitting.Size().cy, room.cy));
    return fitting.Shown();
}

LRESULT MessageText::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: {
            CPaintDC dc(this);
            DrawOn(dc);
            return 0;
        }
        case WM_PRINTCLIENT:
            DrawOn(*CDC::FromHandle(reinterpret_cast<HDC>(wParam)));
            return 0;
        case WM_ERASEBKGND:
            return TRUE;
        default:
            return CStatic::WindowProc(message, wParam, lParam);
    }
}

void MessageText::DrawOn(CDC& dc) {
    CRect rect;
    GetClientRect(rect);
    const int depth = dc.SaveDC();
    CFont* const font = GetFont();
    if (font != nullptr) {
        dc.SelectObject(font);
    }
    const auto context = reinterpret_cast<WPARAM>(dc.GetSafeHdc());
    const LRESULT brush = GetParent()->SendMessage(WM_CTLCOLORSTATIC, context, reinterpret_cast<LPARAM>(m_hWnd));
    ::FillRect(dc.GetSafeHdc(), rect, reinterpret_cast<HBRUSH>(brush));
    dc.DrawText(shown_, rect, format_);
    dc.RestoreDC(depth);
}

}  // namespace kadata
