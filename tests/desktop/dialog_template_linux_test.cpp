// Dialog templates that are cut, lie, or stand at an odd address.

#include <algorithm>
#include <span>

#include "dialog_template.h"
#include "support/temp_folder.h"
#include "win32/desktop/dialog_template.h"
#include "win32/gdi/gdi_objects.h"

namespace {

using desktop_test::DialogSpec;
using desktop_test::kControl;
using desktop_test::kStatic;

DialogSpec Spec(bool extended) {
    return {.style = WS_POPUP | DS_SETFONT,
            .items = {{.text = _T("&Ok"), .id = 1},
                      {.atom = kStatic, .style = kControl, .id = 2, .resource = 99},
                      {.text = _T("own"), .id = 3, .class_name = _T("A class"), .data = {1, 2, 3}},
                      {.text = _T("last"), .id = 4}},
            .extended = extended};
}

std::string BytesOf(const DialogSpec& spec) {
    const std::vector<WORD> words = MakeTemplate(spec);
    return {reinterpret_cast<const char*>(words.data()), words.size() * sizeof(WORD)};
}

// From memory that ends with the bytes, `offset` bytes behind an aligned address.
std::optional<kawin::DialogTemplate> Read(const std::string& bytes, std::size_t offset, std::vector<std::byte>& memory) {
    memory.resize(offset + bytes.size());
    memory.shrink_to_fit();
    std::ranges::copy(std::as_bytes(std::span(bytes)), memory.begin() + static_cast<std::ptrdiff_t>(offset));
    return kawin::ReadDialogTemplate(std::span(memory).subspan(offset));
}

TEST(LinuxDialogTemplate, IsReadAtAnyAddressAndRefusedWhenItEndsEarly) {
    for (const bool extended : {false, true}) {
        const std::string whole = BytesOf(Spec(extended));
        for (const std::size_t offset : {0, 1, 2, 3}) {
            std::vector<std::byte> memory;
            const auto read = Read(whole, offset, memory);
            ASSERT_TRUE(read);
            EXPECT_EQ(read->title, u"Title");
            EXPECT_EQ(read->font.value().points, 8);
            EXPECT_EQ(read->font.value().face, u"MS Shell Dlg");
            ASSERT_EQ(read->items.size(), 4u);
            EXPECT_EQ(read->items[0].title.text, u"&Ok");
            EXPECT_EQ(read->items[0].window_class.number, desktop_test::kButton);
            EXPECT_EQ(read->items[1].title.number, 99);
            EXPECT_EQ(read->items[2].window_class.text, u"A class");
            EXPECT_EQ(read->items[2].data.size(), 8u);
            EXPECT_EQ(read->items[3].title.text, u"last");
            EXPECT_EQ(read->items[3].rect.height, 14);
        }
        for (std::size_t length = 0; length < whole.size(); ++length) {
            std::vector<std::byte> memory;
            EXPECT_FALSE(Read(whole.substr(0, length), 0, memory)) << length;
        }
        std::string lying = whole;
        lying.replace(extended ? 16 : 8, 2, "\xFF\xFF");  // items
        std::vector<std::byte> memory;
        EXPECT_FALSE(Read(lying, 0, memory));
    }
}

// A compiled resource file with one dialog, number 1.
std::string Compiled(const std::string& dialog) {
    const auto dword = [](std::size_t value) {
        return std::string{static_cast<char>(value), static_cast<char>(value >> 8), 0, 0};
    };
    const std::string zeros(16, '\0');
    return dword(0) + dword(32) + "\xFF\xFF" + std::string(2, '\0') + "\xFF\xFF" + std::string(2, '\0') + zeros +  //
           dword(dialog.size()) + dword(32) + "\xFF\xFF" + std::string("\5\0", 2) + "\xFF\xFF" + std::string("\1\0", 2) + zeros +
           dialog + std::string((4 - dialog.size() % 4) % 4, '\0');
}

class LinuxDialogResource : public desktop_test::DialogTest {};

TEST_F(LinuxDialogResource, LeaveNoFontsAndImagesBehind) {
    DialogSpec spec = Spec(true);
    spec.style |= DS_NOFAILCREATE;
    std::size_t before = 0;
    for (int round = 0; round < 3; ++round) {  // the first makes what stays for ever
        DestroyWindow(Create(spec));
        spec.style ^= DS_NOFAILCREATE;
        EXPECT_EQ(Create(spec) != nullptr, round == 1);
        DestroyWindow(dialog);
        EXPECT_TRUE(round == 0 || kawin::CountGdiObjects() == before) << round;
        before = kawin::CountGdiObjects();
    }
}

TEST_F(LinuxDialogResource, OfAResourceEndWithIt) {
    const test::TempFolder folder;
    DialogSpec spec = Spec(true);
    spec.items.erase(spec.items.begin() + 2);  // nobody has its class
    const std::string whole = BytesOf(spec);
    for (const bool damaged : {false, true}) {
        const auto path =
            folder.Write(damaged ? _T("cut.res") : _T("whole.res"), Compiled(damaged ? whole.substr(0, 99) : whole));
        const HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_IMAGE_RESOURCE);
        ASSERT_TRUE(module);
        const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(1), RT_DIALOG);
        const auto* const in_memory = static_cast<LPCDLGTEMPLATE>(LockResource(LoadResource(module, found)));
        for (const bool by_name : {false, true}) {
            SetLastError(0);
            const HWND made = by_name ? CreateDialogParamW(module, MAKEINTRESOURCEW(1), nullptr, nullptr, 0)
                                      : CreateDialogIndirectParamW(module, in_memory, nullptr, nullptr, 0);
            EXPECT_EQ(made == nullptr, damaged);
            EXPECT_EQ(damaged ? GetLastError() : DWORD{ERROR_INVALID_DATA}, DWORD{ERROR_INVALID_DATA});
            DestroyWindow(made);
        }
        EXPECT_TRUE(FreeLibrary(module));
    }
    SetLastError(0);
    EXPECT_FALSE(CreateDialogIndirectParamW(nullptr, nullptr, nullptr, nullptr, 0));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
}

}  // namespace
