#pragma once

// Boxes and dialogs that a test opens and uses: what it does is done while the modal loop runs, one step after the other, and
// whatever a step has posted is handled before the next one.

#include <gtest/gtest.h>
#include <kadata/skin_message_box.h>

#include <deque>
#include <functional>
#include <utility>

#include "skin_fixture.h"

namespace test {

// In data/resources.rc.
inline constexpr UINT BOX_TEXTS = 300;  // to 315, in the order of the captions: "T0" to "T15"
inline constexpr UINT DIALOG = 400;

inline constexpr int STAYED = 4711;  // the result of a box that nothing has ended
inline const UINT NEXT_STEP = WM_APP + 7;

// All bitmaps are the one whose colours tell the place.
inline SkinInfo AnySkin() {
    SkinInfo skin;
    for (auto* const bitmap : {&skin.button, &skin.windowBackground, &skin.captionButton, &skin.windowFrame, &skin.toolBar,
                               &skin.toolBarButton, &skin.statusBar, &skin.statusBarPane}) {
        *bitmap = {POSITIONS, 32, 16, 4, 2, 1};
    }
    skin.buttonGlyph = {TWO_BY_TWO, 2, 2, TRUE, SKIN_NO_COLOR_KEY};
    skin.nFrameWidth = 5;
    skin.nCaptionHeight = 30;
    skin.nSmallCaptionHeight = 20;
    skin.nCaptionButtonWidth = skin.nCaptionButtonHeight = 18;
    skin.nCaptionButtonGap = skin.nToolBarHeight = skin.nStatusBarHeight = 9;
    skin.nButtonHeight = skin.nButtonGap = skin.nContentMargin = 9;
    UINT* const texts[] = {
        &skin.nOKTextID,       &skin.nCancelTextID,    &skin.nAbortTextID,          &skin.nRetryTextID,
        &skin.nIgnoreTextID,   &skin.nIgnoreAllTextID, &skin.nContinueTextID,       &skin.nYesTextID,
        &skin.nYesToAllTextID, &skin.nNoTextID,        &skin.nNoToAllTextID,        &skin.nSaveTextID,
        &skin.nDiscardTextID,  &skin.nHelpTextID,      &skin.nDoNotShowAgainTextID, &skin.nRememberAnswerTextID};
    for (UINT i = 0; i < std::size(texts); ++i) {
        *texts[i] = BOX_TEXTS + i;
    }
    return skin;
}

template <class Base>
class Stepped : public Base {
public:
    using Base::Base;
    using Step = std::function<void()>;

    // Opens it and does the steps; it is ended with STAYED when the last one has not ended it.
    INT_PTR Run(std::deque<Step> steps) {
        m_steps = std::move(steps);
        m_patience = 4;
        return Base::DoModal();
    }
    BOOL OnInitDialog() override {
        const BOOL result = Base::OnInitDialog();
        ::PostMessageW(this->m_hWnd, NEXT_STEP, 0, 0);
        return result;
    }

    SkinInfo m_skin;  // none

protected:
    const SkinInfo& GetSkinInfo() const override { return m_skin; }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != NEXT_STEP) {
            return Base::WindowProc(message, wParam, lParam);
        }
        if (!m_steps.empty()) {
            const Step step = std::move(m_steps.front());
            m_steps.pop_front();
            step();
        } else if (m_patience-- == 0) {
            Base::EndDialog(STAYED);
            return 0;
        }
        ::PostMessageW(this->m_hWnd, NEXT_STEP, 0, 0);
        return 0;
    }

private:
    std::deque<Step> m_steps;
    int m_patience = 0;  // rounds for messages that lead to further ones
};

class Box : public Stepped<CSkinMessageBox> {
public:
    explicit Box(UINT style = MB_OK, const CString& text = _T("Message"), CWnd* parent = nullptr)
        : Stepped(parent, text, _T("Title"), style) {}

    // To whatever has the focus, as the keyboard does.
    void PostKey(WPARAM key) { ::PostMessageW(::GetFocus(), WM_KEYDOWN, key, 1); }
    void PostClick(int id) {
        GetDlgItem(id)->PostMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
        GetDlgItem(id)->PostMessage(WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    }
    void Tick() { SendMessage(WM_TIMER, TIMER_COUNTDOWN); }
    // The ticks of the test count, and no others.
    Step StopClock() {
        return [this] { KillTimer(TIMER_COUNTDOWN); };
    }
    CString TextOf(int id) {
        CString text;
        GetDlgItemText(id, text);
        return text;
    }
    CRect RectOf(int id) {
        CRect rect;
        if (CWnd* const control = GetDlgItem(id)) {
            control->GetWindowRect(rect);
            ScreenToClient(rect);
        }
        return rect;
    }
    CRect Window() const {
        CRect rect;
        GetWindowRect(rect);
        return rect;
    }

    int m_helps = 0;

protected:
    void OnHelp() override {
        ++m_helps;
        CSkinMessageBox::OnHelp();
    }
};

// GDI+ for as long as a test runs.
class MessageBoxTest : public testing::Test {
protected:
    MessageBoxTest() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    }
    ~MessageBoxTest() override { Gdiplus::GdiplusShutdown(token_); }

private:
    ULONG_PTR token_ = 0;
};

}  // namespace test
