#pragma once

// Dialog templates, both kinds, as plain values. Nothing of the bytes is trusted: every read is bounded.

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "dialogs.h"

namespace kawin {

// A number, or a text that may be empty.
struct KADATA_API TemplateName {
    std::optional<WORD> number;
    std::u16string text;

    bool IsNone() const noexcept { return !number && text.empty(); }
    // As functions take it that look for classes.
    LPCWSTR Name() const noexcept { return number ? reinterpret_cast<LPCWSTR>(ULONG_PTR{*number}) : text.c_str(); }
    // As a window's text has it: a number is "#" and the number, as resources are named.
    std::u16string AsText() const;
};

struct TemplateRect {  // dialog units
    SHORT x;
    SHORT y;
    SHORT width;
    SHORT height;
};

struct TemplateItem {
    DWORD style;
    DWORD extended_style;
    TemplateRect rect;
    DWORD id;
    TemplateName window_class;
    TemplateName title;
    std::span<const std::byte> data;  // for the control's WM_CREATE, behind a word that is its size; empty: none. In the template
};

// Of the points kMessageFont the system's font of message boxes stands for all the rest.
constexpr WORD kMessageFont = 0x7FFF;
struct TemplateFont {
    WORD points;
    LONG weight;
    bool italic;
    BYTE charset;
    std::u16string face;
};

struct DialogTemplate {
    DWORD style;
    DWORD extended_style;
    TemplateRect rect;
    TemplateName menu;
    TemplateName window_class;  // none: WC_DIALOG
    std::u16string title;
    std::optional<TemplateFont> font;
    std::vector<TemplateItem> items;
};

// Nothing when the bytes end too early or are of no known kind. Throws std::bad_alloc.
KADATA_API std::optional<DialogTemplate> ReadDialogTemplate(std::span<const std::byte> bytes);

}  // namespace kawin
