// Dialog templates of both kinds.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>

#include "win32/desktop/dialog_template.h"

namespace {

constexpr std::size_t kSmallestItem = 24;  // with an empty text for its class and its title, and no data

void Require(bool good) {
    if (!good) {
        std::abort();
    }
}

bool LiesIn(std::span<const std::byte> part, std::span<const std::byte> whole) {
    const std::less_equal<const std::byte*> before;
    return part.empty() || (before(whole.data(), part.data()) && before(part.data() + part.size(), whole.data() + whole.size()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::byte> bytes(reinterpret_cast<const std::byte*>(data), size);
    const auto dialog = kawin::ReadDialogTemplate(bytes);
    if (!dialog) {
        return 0;
    }
    Require(dialog->items.size() <= size / kSmallestItem + 1);  // the first may be short of a padding
    std::size_t units = dialog->title.size() + dialog->menu.text.size() + dialog->window_class.text.size();
    units += dialog->font ? dialog->font->face.size() : 0;
    for (const kawin::TemplateItem& item : dialog->items) {
        units += item.window_class.AsText().size() * (item.window_class.number ? 0 : 1);
        units += item.title.AsText().size() * (item.title.number ? 0 : 1);
        units += item.data.size() / sizeof(WORD);
        Require(LiesIn(item.data, bytes));
    }
    Require(units <= size / sizeof(WORD));  // nothing is read twice
    return 0;
}
