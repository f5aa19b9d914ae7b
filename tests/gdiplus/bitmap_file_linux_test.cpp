// Bitmap files of every depth and coding, and such that lie.

#include <vector>

#include "gdiplus/pictures.h"
#include "support/temp_folder.h"

namespace {

using namespace test;

void Put(std::string& bytes, DWORD value, int count) {
    for (int i = 0; i < count; ++i) {
        bytes += static_cast<char>(value >> (8 * i));
    }
}

// What a BITMAPINFOHEADER says, and what follows it.
struct File {
    LONG width = 2;
    LONG height = 1;
    WORD depth = 24;
    DWORD coding = BI_RGB;
    DWORD colors = 0;
    std::vector<DWORD> table = {};  // masks and colours
    std::string pixels = {};
    DWORD pixels_at = 0;  // 0: behind the table
    WORD planes = 1;
    DWORD header = 40;

    std::string Bytes() const {
        const DWORD tables = static_cast<DWORD>(table.size() * 4);
        std::string bytes = "BM";
        Put(bytes, 14 + 40 + tables + static_cast<DWORD>(pixels.size()), 4);
        Put(bytes, 0, 4);
        Put(bytes, pixels_at != 0 ? pixels_at : 14 + 40 + tables, 4);
        Put(bytes, header, 4);
        Put(bytes, static_cast<DWORD>(width), 4);
        Put(bytes, static_cast<DWORD>(height), 4);
        Put(bytes, planes, 2);
        Put(bytes, depth, 2);
        Put(bytes, coding, 4);
        Put(bytes, static_cast<DWORD>(pixels.size()), 4);
        Put(bytes, 0, 4);
        Put(bytes, 0, 4);
        Put(bytes, colors, 4);
        Put(bytes, 0, 4);
        for (const DWORD entry : table) {
            Put(bytes, entry, 4);
        }
        return bytes + pixels;
    }
};

std::string Chars(std::initializer_list<int> values) {
    std::string chars;
    for (const int value : values) {
        chars += static_cast<char>(value);
    }
    return chars;
}

class LinuxBitmapFileTest : public GdiplusTest {
protected:
    std::unique_ptr<Bitmap> Read(const File& file) const {
        return std::make_unique<Bitmap>(folder_.Write(_T("picture"), file.Bytes()).c_str());
    }

private:
    TempFolder folder_;
};

TEST_F(LinuxBitmapFileTest, EveryDepthIsRead) {
    const DWORD red = 0xFF0000, green = 0x00FF00, blue = 0x0000FF;
    const std::vector<DWORD> rgb565 = {0xF800, 0x07E0, 0x001F};
    const struct {
        const char* what;
        File file;
        std::vector<ARGB> pixels;
    } cases[] = {
        {"1 bit", {.depth = 1, .table = {red, green}, .pixels = Chars({0x40, 0, 0, 0})}, {0xFFFF0000, 0xFF00FF00}},
        {"4 bits",
         {.depth = 4, .colors = 3, .table = {red, green, blue}, .pixels = Chars({0x21, 0, 0, 0})},
         {0xFF0000FF, 0xFF00FF00}},
        {"8 bits", {.depth = 8, .colors = 2, .table = {red, green}, .pixels = Chars({1, 0, 0, 0})}, {0xFF00FF00, 0xFFFF0000}},
        {"16 bits", {.depth = 16, .pixels = Chars({0x1F, 0x7C, 0xE0, 0x03})}, {0xFFFF00FF, 0xFF00FF00}},
        {"16 bits with masks",
         {.depth = 16, .coding = BI_BITFIELDS, .table = rgb565, .pixels = Chars({0x1F, 0xF8, 0xE0, 0x07})},
         {0xFFFF00FF, 0xFF00FF00}},
        {"24 bits", {.pixels = Chars({1, 2, 3, 4, 5, 6, 0, 0})}, {0xFF030201, 0xFF060504}},
        {"32 bits", {.depth = 32, .pixels = Chars({1, 2, 3, 99, 4, 5, 6, 0})}, {0xFF030201, 0xFF060504}},
        {"32 bits with masks",
         {.depth = 32, .coding = BI_BITFIELDS, .table = {0xFF0000, 0xFF00, 0xFF}, .pixels = Chars({1, 2, 3, 99, 4, 5, 6, 0})},
         {0xFF030201, 0xFF060504}},
        {"upwards", {.width = 1, .height = 2, .pixels = Chars({1, 2, 3, 0, 4, 5, 6, 0})}, {0xFF060504, 0xFF030201}},
        {"downwards", {.width = 1, .height = -2, .pixels = Chars({1, 2, 3, 0, 4, 5, 6, 0})}, {0xFF030201, 0xFF060504}},
        {"runs of 8 bits",
         {.width = 4,
          .height = 2,
          .depth = 8,
          .coding = BI_RLE8,
          .colors = 3,
          .table = {red, green, blue},
          .pixels = Chars({3, 1, 1, 2, 0, 0, 0, 3, 2, 1, 2, 0, 0, 1})},
         {0xFF0000FF, 0xFF00FF00, 0xFF0000FF, 0xFFFF0000, 0xFF00FF00, 0xFF00FF00, 0xFF00FF00, 0xFF0000FF}},
        {"runs of 4 bits",
         {.width = 4,
          .height = 1,
          .depth = 4,
          .coding = BI_RLE4,
          .colors = 3,
          .table = {red, green, blue},
          .pixels = Chars({3, 0x12, 1, 0x20, 0, 1})},
         {0xFF00FF00, 0xFF0000FF, 0xFF00FF00, 0xFF0000FF}},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.what);
        const auto bitmap = Read(row.file);
        ASSERT_EQ(bitmap->GetLastStatus(), Ok);
        const INT width = static_cast<INT>(bitmap->GetWidth());
        ASSERT_EQ(static_cast<std::size_t>(width) * bitmap->GetHeight(), row.pixels.size());
        for (INT i = 0; i < static_cast<INT>(row.pixels.size()); ++i) {
            EXPECT_EQ(PixelAt(*bitmap, i % width, i / width), row.pixels[static_cast<std::size_t>(i)]) << i;
        }
    }
}

TEST_F(LinuxBitmapFileTest, FilesThatLieAreRefused) {
    const std::string row = Chars({1, 2, 3, 4, 5, 6, 0, 0});
    const struct {
        const char* what;
        File file;
    } cases[] = {
        {"no width", {.width = 0, .pixels = row}},
        {"no height", {.height = 0, .pixels = row}},
        {"a width below 0", {.width = -2, .pixels = row}},
        {"the lowest height there is", {.height = LONG{-0x7FFFFFFF} - 1, .pixels = row}},
        {"more pixels than memory", {.width = 0x7FFFFFFF, .height = 0x7FFFFFFF, .pixels = row}},
        {"sizes whose product is small again", {.width = 0x10001, .height = 0x10000, .pixels = row}},
        {"a row short", {.height = 2, .pixels = row}},
        {"a byte short", {.pixels = row.substr(1)}},
        {"pixels behind the end", {.pixels = row, .pixels_at = 0x7FFFFFF0}},
        {"more colours than 4 bits can name", {.depth = 4, .colors = 17, .table = std::vector<DWORD>(17), .pixels = row}},
        {"a table behind the end", {.depth = 8, .colors = 0x40000001, .pixels = row}},
        {"no such depth", {.depth = 7, .pixels = row}},
        {"no such coding", {.coding = 77, .pixels = row}},
        {"runs of 24 bits", {.coding = BI_RLE8, .pixels = row}},
        {"no such header", {.pixels = row, .header = 41}},
        {"masks that overlap", {.depth = 32, .coding = BI_BITFIELDS, .table = {0xFF0000, 0xFF0000, 0xFF}, .pixels = row}},
        {"masks with gaps", {.depth = 32, .coding = BI_BITFIELDS, .table = {0xF0F000, 0x0F00, 0xFF}, .pixels = row}},
        {"runs without an end", {.depth = 8, .coding = BI_RLE8, .colors = 2, .table = {1, 2}, .pixels = Chars({1, 1})}},
        {"runs that end in the middle",
         {.width = 4, .depth = 8, .coding = BI_RLE8, .colors = 2, .table = {1, 2}, .pixels = Chars({0, 4, 1, 1})}},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        const auto bitmap = Read(one.file);
        EXPECT_EQ(bitmap->GetWidth(), 0U);
        EXPECT_NE(bitmap->GetLastStatus(), Ok);
    }
}

// Runs may go on outside of the picture: nothing there is written.
TEST_F(LinuxBitmapFileTest, RunsOutsideOfThePictureAreLeftOut) {
    const auto bitmap = Read({.width = 2,
                              .height = 2,
                              .depth = 8,
                              .coding = BI_RLE8,
                              .colors = 2,
                              .table = {0, 0xFF0000},
                              .pixels = Chars({255, 1, 0, 2, 200, 0, 9, 1, 0, 2, 0, 200, 255, 1, 0, 1})});
    EXPECT_EQ(RowText(*bitmap, 1, 2), "255 255");
    EXPECT_EQ(RowText(*bitmap, 0, 2), "0 0");
}

}  // namespace
