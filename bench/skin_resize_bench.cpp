// A skinned window that is dragged larger and smaller, off screen: frame, background and the controls on it, at each step.

#include <benchmark/benchmark.h>
#include <kadata/skin_window.h>

#include <array>
#include <memory>

#include "picture_file.h"
#include "skin_setup.h"

namespace {

constexpr int kSteps = 100;
constexpr int kWidth = 800;
constexpr int kHeight = 600;
constexpr int kLabels = 8;

class Window : public CWnd {
public:
    bool Make() {
        SetEnvironmentVariableW(_T("KADATA_SCREEN"), _T("1920x1080"));
        const CRect rect(CPoint(50, 50), CSize(kWidth, kHeight));
        if (!CreateEx(0, AfxRegisterWndClass(0), _T("Drag"), WS_OVERLAPPEDWINDOW, rect, nullptr, 0) ||
            !m_skin.SetSkinInfo(MakeSkinInfo(100)) || !m_skin.Apply(this)) {
            return false;
        }
        int top = 10;
        for (CStatic& label : m_labels) {
            label.Create(_T("A label over the background"), WS_CHILD | WS_VISIBLE, CRect(10, top, 240, top + 20), this);
            top += 30;
        }
        ShowWindow(SW_SHOWNOACTIVATE);
        UpdateWindow();
        return true;
    }

    void SizeTo(int width, int height) {
        SetWindowPos(nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        RedrawWindow(nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }

private:
    std::array<CStatic, kLabels> m_labels;
    CSkinStubWnd m_skin{CSkinStubWnd::SkinFrame | CSkinStubWnd::SkinBackground};
};

void KaDataDrag(benchmark::State& state) {
    const CGdiPlus started;
    Window window;
    if (!window.Make()) {
        state.SkipWithError("there is no window to be had");
        return;
    }
    for (auto _ : state) {
        for (int step = 0; step < kSteps; ++step) {
            const int grown = 2 * (step < kSteps / 2 ? step : kSteps - step);
            window.SizeTo(kWidth + 2 * grown, kHeight + grown);
        }
    }
    window.DestroyWindow();
}

BENCHMARK(KaDataDrag)->Name("skin/resize/kadata/drag100")->Unit(benchmark::kMillisecond);

}  // namespace
