#include "text_engine.h"

#include <cstring>
#include <list>
#include <mutex>
#include <string>

#include "contexts.h"
#include "font_object.h"

namespace kawin {
namespace {

// Enough for the dialogs on a screen, and about 2 MB at the very most.
constexpr std::size_t kMostFonts = 32;
constexpr std::size_t kMostTexts = 256;
constexpr std::size_t kLongestKeptText = 128;

// The values used last, the last one first.
template <class Value, std::size_t most>
class RecentlyUsed {
public:
    // The value that `matches`, else the one that `make` returns. Nothing changes when `make` throws.
    template <class Matches, class Make>
    const Value& Get(Matches&& matches, Make&& make) {
        for (auto value = values_.begin(); value != values_.end(); ++value) {
            if (matches(*value)) {
                values_.splice(values_.begin(), values_, value);
                return values_.front();
            }
        }
        values_.push_front(make());
        if (values_.size() > most) {
            values_.pop_back();
        }
        return values_.front();
    }

private:
    std::list<Value> values_;
};

struct KeptText {
    std::shared_ptr<const RealizedFont> font;
    std::u16string text;
    bool right_to_left;
    std::shared_ptr<const ShapedText> shaped;
};

PangoContext* NewContext() noexcept {
    PangoFontMap* const map = pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT);
    PangoContext* const context = pango_font_map_create_context(map);
    g_object_unref(map);
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_FULL);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context, TRUE);
    return context;
}

struct Engine {
    std::mutex mutex;
    PangoContext* const context = NewContext();                           // guarded by mutex
    RecentlyUsed<std::shared_ptr<const RealizedFont>, kMostFonts> fonts;  // guarded by mutex
    RecentlyUsed<KeptText, kMostTexts> texts;                             // guarded by mutex
};

// Never destroyed: text may be drawn while the process ends.
Engine& TheEngine() {
    static Engine* const engine = new Engine;
    return *engine;
}

std::shared_ptr<const RealizedFont> RealizeFont(const LOGFONTW& asked) {
    Engine& engine = TheEngine();
    const std::lock_guard lock(engine.mutex);
    return engine.fonts.Get([&](const auto& font) { return std::memcmp(&font->asked, &asked, sizeof asked) == 0; },
                            [&] { return MatchFont(engine.context, asked); });
}

}  // namespace

std::shared_ptr<const RealizedFont> RealizeFont(const FontObject* font) {
    if (font != nullptr) {
        return RealizeFont(font->description);
    }
    const std::shared_ptr<FontObject> system = MakeStockFont(SYSTEM_FONT);
    return RealizeFont(system ? system->description : LOGFONTW{});
}

std::shared_ptr<const ShapedText> ShapeText(const std::shared_ptr<const RealizedFont>& font, std::u16string_view text,
                                            bool right_to_left) {
    Engine& engine = TheEngine();
    const std::lock_guard lock(engine.mutex);
    const auto shape = [&] { return std::make_shared<const ShapedText>(Shape(engine.context, *font, text, right_to_left)); };
    if (text.size() > kLongestKeptText) {
        return shape();
    }
    const auto matches = [&](const KeptText& kept) {
        return kept.text == text && kept.font == font && kept.right_to_left == right_to_left;
    };
    return engine.texts.Get(matches, [&] { return KeptText{font, std::u16string(text), right_to_left, shape()}; }).shaped;
}

}  // namespace kawin
