// The demo skin's button and background, beside the same draws by Cairo and by QPainter. "first": no scaled piece is there from
// before; "repeated": the same again, as when a window is painted again. Then a whole repaint of the demo's main window.
//
// For "first" all go round so many bitmaps and sizes that ours finds nothing in its cache, and pays for keeping what it made.

#include <benchmark/benchmark.h>
#include <cairo/cairo.h>
#include <gdiplus.h>
#include <kadata/skin.h>

#include <QImage>
#include <QPainter>
#include <array>
#include <cstring>
#include <deque>
#include <vector>

#include "main_window.h"
#include "skin/skin_ids.h"
#include "skin_setup.h"
#include "texts.h"

namespace {

constexpr int kCellWidth = 96;
constexpr int kCellHeight = 48;
constexpr int kCells = 8;
constexpr int kCorner = 12;
constexpr int kBackgroundWidth = 640;
constexpr int kBackgroundHeight = 400;
constexpr int kScreenWidth = 1920;
constexpr int kScreenHeight = 1080;

// What is drawn one after the other: every size upon every bitmap. 240x64 is the middle of the buttons' sizes. Their pieces take
// more than the cache holds, and no piece comes again before all others have been.
struct SSchedule {
    std::size_t bitmaps;
    int sizes;

    CSize Button(std::size_t draw) const {
        const int step = static_cast<int>(draw / bitmaps) % sizes - sizes / 2;
        return {240 + step, 64 + step / 2};
    }
    CSize Background(std::size_t draw) const { return {kScreenWidth - static_cast<int>(draw / bitmaps) % sizes, kScreenHeight}; }
};
constexpr SSchedule kFirstButton{24, 41};
constexpr SSchedule kFirstBackground{9, 1};
constexpr SSchedule kRepeated{1, 1};

struct SPiece {
    CRect source;
    CRect target;
};

// The pieces of a button in the order and with the trims in which it is drawn, in the top left of the picture.
std::array<SPiece, 9> ButtonPieces(CSize size) {
    constexpr int w = kCellWidth;
    constexpr int h = kCellHeight;
    constexpr int m = kCorner;
    const int r = size.cx;
    const int b = size.cy;
    return {{{{0, 0, m, m}, {0, 0, m, m}},
             {{w - m, 0, w, m}, {r - m, 0, r, m}},
             {{0, h - m, m, h}, {0, b - m, m, b}},
             {{w - m, h - m, w, h}, {r - m, b - m, r, b}},
             {{0, m, m, h - m - 1}, {0, m, m, b - m}},
             {{w - m, m, w, h - m - 1}, {r - m, m, r, b - m}},
             {{m, 0, w - m - 1, m}, {m, 0, r - m, m}},
             {{m, h - m, w - m - 1, h}, {m, b - m, r - m, b}},
             {{m + 1, m + 1, w - m - 1, h - m - 1}, {m, m, r - m, b - m}}}};
}

SPiece BackgroundPiece(CSize size) {
    return {{0, 0, kBackgroundWidth - 1, kBackgroundHeight - 1}, CRect(CPoint(), size)};
}

class GdiPlus {
public:
    GdiPlus() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&m_token, &input, nullptr);
    }
    ~GdiPlus() { Gdiplus::GdiplusShutdown(m_token); }

private:
    ULONG_PTR m_token = 0;
};

// A picture in memory to draw on, as a window has one.
class Target {
public:
    Target() : m_bitmap(kScreenWidth, kScreenHeight, PixelFormat32bppRGB), m_graphics(&m_bitmap) {}
    Gdiplus::Graphics* Graphics() { return &m_graphics; }

private:
    GdiPlus m_start;
    Gdiplus::Bitmap m_bitmap;
    Gdiplus::Graphics m_graphics;
};

void KaDataButton(benchmark::State& state, const SSchedule& schedule) {
    Target target;
    std::vector<CSkin> skins(schedule.bitmaps);
    for (CSkin& skin : skins) {
        SkinBitmapInfo info = {IDB_BUTTON, kCellWidth, kCellHeight, kCorner, 0, 0};
        SkinCaptionBitmapInfo none;
        skin.SetButtonBitmapInfo(info, none);
    }
    std::size_t draw = 0;
    for (auto _ : state) {
        const CRect rect(CPoint(), schedule.Button(draw));
        if (skins[draw++ % skins.size()].DrawButtonBitmap(target.Graphics(), CSkin::SkinNormal, rect) != Gdiplus::Ok) {
            state.SkipWithError("the button was not drawn");
        }
    }
}

void KaDataBackground(benchmark::State& state, const SSchedule& schedule) {
    Target target;
    std::vector<CSkin> skins(schedule.bitmaps);
    for (CSkin& skin : skins) {
        SkinBitmapInfo info = {IDB_WINDOW_BACKGROUND, kBackgroundWidth, kBackgroundHeight, 0, 0, 0};
        skin.SetWindowBackgroundBitmapInfo(info);
    }
    std::size_t draw = 0;
    for (auto _ : state) {
        const CRect rect(CPoint(), schedule.Background(draw));
        if (skins[draw++ % skins.size()].DrawWindowBackgroundBitmap(target.Graphics(), rect) != Gdiplus::Ok) {
            state.SkipWithError("the background was not drawn");
        }
    }
}

class Cairo {
public:
    Cairo(int width, int height) : m_surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)) {
        std::memset(cairo_image_surface_get_data(m_surface), 0x5A,
                    static_cast<std::size_t>(height) * static_cast<std::size_t>(cairo_image_surface_get_stride(m_surface)));
        cairo_surface_mark_dirty(m_surface);
        m_context = cairo_create(m_surface);
    }
    Cairo(const Cairo&) = delete;
    Cairo& operator=(const Cairo&) = delete;
    ~Cairo() {
        cairo_destroy(m_context);
        cairo_surface_destroy(m_surface);
    }

    void Draw(const Cairo& from, const SPiece& piece) {
        const CRect& source = piece.source;
        const CRect& target = piece.target;
        cairo_surface_t* const part =
            cairo_surface_create_for_rectangle(from.m_surface, source.left, source.top, source.Width(), source.Height());
        cairo_save(m_context);
        cairo_translate(m_context, target.left, target.top);
        cairo_rectangle(m_context, 0, 0, target.Width(), target.Height());
        cairo_scale(m_context, double(target.Width()) / source.Width(), double(target.Height()) / source.Height());
        cairo_set_source_surface(m_context, part, 0, 0);
        cairo_pattern_set_filter(cairo_get_source(m_context), CAIRO_FILTER_BILINEAR);
        cairo_pattern_set_extend(cairo_get_source(m_context), CAIRO_EXTEND_PAD);
        cairo_fill(m_context);
        cairo_restore(m_context);
        cairo_surface_destroy(part);
    }

private:
    cairo_surface_t* m_surface;
    cairo_t* m_context = nullptr;
};

class Painter {
public:
    Painter(int width, int height) : m_image(width, height, QImage::Format_RGB32) {
        m_image.fill(0x5A5A5A);
        m_painter.begin(&m_image);
        m_painter.setRenderHint(QPainter::SmoothPixmapTransform);
    }

    void Draw(const Painter& from, const SPiece& piece) {
        m_painter.drawImage(QRectF(piece.target.left, piece.target.top, piece.target.Width(), piece.target.Height()),
                            from.m_image,
                            QRectF(piece.source.left, piece.source.top, piece.source.Width(), piece.source.Height()));
    }

private:
    QImage m_image;
    QPainter m_painter;
};

template <class Drawing>
std::deque<Drawing> Sources(std::size_t count, int width, int height) {
    std::deque<Drawing> sources;
    while (sources.size() < count) {
        sources.emplace_back(width, height);
    }
    return sources;
}

template <class Drawing>
void PeerButton(benchmark::State& state, const SSchedule& schedule) {
    const auto sources = Sources<Drawing>(schedule.bitmaps, kCellWidth, kCellHeight * kCells);
    Drawing target(kScreenWidth, kScreenHeight);
    std::size_t draw = 0;
    for (auto _ : state) {
        for (const SPiece& piece : ButtonPieces(schedule.Button(draw))) {
            target.Draw(sources[draw % sources.size()], piece);
        }
        ++draw;
    }
}

template <class Drawing>
void PeerBackground(benchmark::State& state, const SSchedule& schedule) {
    const auto sources = Sources<Drawing>(schedule.bitmaps, kBackgroundWidth, kBackgroundHeight);
    Drawing target(kScreenWidth, kScreenHeight);
    std::size_t draw = 0;
    for (auto _ : state) {
        target.Draw(sources[draw % sources.size()], BackgroundPiece(schedule.Background(draw)));
        ++draw;
    }
}

void KaDataWindow(benchmark::State& state, int percent) {
    const GdiPlus start;
    SetEnvironmentVariableW(_T("KADATA_SCREEN"), _T("3840x2160"));
    CMainWindow window(MakeSkinInfo(percent), percent, ENGLISH, {}, CString());
    if (!window.Create()) {
        state.SkipWithError("no window");
        return;
    }
    window.MoveWindow(0, 0, kScreenWidth * percent / 100, kScreenHeight * percent / 100);
    window.ShowWindow(SW_SHOWNA);
    for (auto _ : state) {
        window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW);
    }
}

constexpr auto kCairoButton = PeerButton<Cairo>;
constexpr auto kCairoBackground = PeerBackground<Cairo>;
constexpr auto kPainterButton = PeerButton<Painter>;
constexpr auto kPainterBackground = PeerBackground<Painter>;

// "button" is 240x64 from a cell of 96x48 with corners of 12, "background" 1920x1080 from 640x400.
#define KADATA_SKIN_BENCHMARKS(workload, button, background)                                              \
    BENCHMARK_CAPTURE(KaDataButton, workload, button)->Name("skin/button/kadata/" #workload);             \
    BENCHMARK_CAPTURE(kCairoButton, workload, button)->Name("skin/button/cairo/" #workload);              \
    BENCHMARK_CAPTURE(kPainterButton, workload, button)->Name("skin/button/qpainter/" #workload);         \
    BENCHMARK_CAPTURE(KaDataBackground, workload, background)->Name("skin/background/kadata/" #workload); \
    BENCHMARK_CAPTURE(kCairoBackground, workload, background)->Name("skin/background/cairo/" #workload);  \
    BENCHMARK_CAPTURE(kPainterBackground, workload, background)->Name("skin/background/qpainter/" #workload)
KADATA_SKIN_BENCHMARKS(first, kFirstButton, kFirstBackground);
KADATA_SKIN_BENCHMARKS(repeated, kRepeated, kRepeated);
BENCHMARK_CAPTURE(KaDataWindow, normal, 100)->Name("skin/repaint/kadata/1920x1080");
BENCHMARK_CAPTURE(KaDataWindow, large, 200)->Name("skin/repaint/kadata/3840x2160");

}  // namespace
