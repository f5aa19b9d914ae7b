#include "picture_files.h"

#include <new>

#include "../base/handle.h"
#include "../files/attributes.h"
#include "../files/file_io.h"
#include "../gdi/dib_reader.h"
#include "../resources/resources.h"
#include "png_picture.h"
#include "startup.h"

namespace kawin {
namespace {

constexpr LONGLONG kLongestFile = LONGLONG{1} << 29;
constexpr std::size_t kBmpHeaders = 14 + 40;

// A file that is open.
class File {
public:
    File(const WCHAR* path, DWORD access, DWORD share, DWORD disposition) noexcept
        : handle_(CreateFileW(path, access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() {
        if (IsOpen()) {
            const DWORD error = GetLastError();
            CloseHandle(handle_);
            SetLastError(error);
        }
    }

    bool IsOpen() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const noexcept { return handle_; }

private:
    HANDLE handle_;
};

Gdiplus::Status ReadWholeFile(const WCHAR* path, std::vector<std::byte>& bytes) {
    const File file(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    LARGE_INTEGER size = {};
    if (!file.IsOpen() || !GetFileSizeEx(file.Get(), &size)) {
        return Gdiplus::FileNotFound;
    }
    if (size.QuadPart > kLongestFile) {
        return Gdiplus::OutOfMemory;
    }
    bytes.resize(static_cast<std::size_t>(size.QuadPart));
    DWORD read = 0;
    if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
        return Gdiplus::GenericError;
    }
    bytes.resize(read);
    return Gdiplus::Ok;
}

Gdiplus::PixelFormat FormatOf(const DibPicture& picture) noexcept {
    if (picture.has_alpha) {
        return Gdiplus::PixelFormat32bppARGB;
    }
    return picture.bits_per_pixel == 32 ? Gdiplus::PixelFormat32bppRGB : Gdiplus::PixelFormat24bppRGB;
}

ReadPicture FromDib(const DibPicture& dib, Gdiplus::PixelFormat format) {
    auto store = PixelStore::Make(dib.width, dib.height, format);
    for (int y = 0; store && y < dib.height; ++y) {
        store->Write(0, y, dib.width, &dib.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(dib.width)]);
    }
    return {store, store ? Gdiplus::Ok : Gdiplus::OutOfMemory};
}

void Put(std::vector<std::byte>& bytes, DWORD value, int count) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
    }
}

}  // namespace

ReadPicture ReadPictureFile(const WCHAR* path) noexcept try {
    if (!IsGdiplusStarted()) {
        return {nullptr, Gdiplus::GdiplusNotInitialized};
    }
    std::vector<std::byte> bytes;
    const Gdiplus::Status status = path != nullptr ? ReadWholeFile(path, bytes) : Gdiplus::InvalidParameter;
    if (status != Gdiplus::Ok) {
        return {nullptr, status};
    }
    if (IsPng(bytes)) {
        return ReadPng(bytes);
    }
    const auto dib = ReadBitmapFile(bytes);
    return dib ? FromDib(*dib, FormatOf(*dib)) : ReadPicture{nullptr, Gdiplus::UnknownImageFormat};
} catch (const std::bad_alloc&) {
    return {nullptr, Gdiplus::OutOfMemory};
}

ReadPicture ReadBitmapResource(HINSTANCE module, const WCHAR* name) noexcept {
    if (!IsGdiplusStarted()) {
        return {nullptr, Gdiplus::GdiplusNotInitialized};
    }
    const HRSRC resource = FindResourceW(module, name, RT_BITMAP);
    const void* const data = resource != nullptr ? LockResource(LoadResource(module, resource)) : nullptr;
    if (data == nullptr) {
        return {nullptr, Gdiplus::InvalidParameter};
    }
    const auto dib = ReadDib({static_cast<const std::byte*>(data), SizeofResource(module, resource)});
    if (!dib) {
        return {nullptr, Gdiplus::InvalidParameter};
    }
    return FromDib(*dib, dib->bits_per_pixel == 32 ? Gdiplus::PixelFormat32bppRGB : Gdiplus::PixelFormat24bppRGB);
}

// The BITMAPFILEHEADER and BITMAPINFOHEADER of the platform's documentation, little-endian, and rows from the lowest.
std::vector<std::byte> MakeBmp(const PixelStore& store) {
    const std::size_t width = static_cast<std::size_t>(store.Width());
    const std::size_t stride = (width * 3 + 3) / 4 * 4;
    const DWORD size = static_cast<DWORD>(stride * static_cast<std::size_t>(store.Height()));
    std::vector<std::byte> file;
    file.reserve(kBmpHeaders + size);
    Put(file, 'B' | 'M' << 8, 2);
    Put(file, kBmpHeaders + size, 4);
    Put(file, 0, 4);
    Put(file, kBmpHeaders, 4);
    Put(file, 40, 4);
    Put(file, static_cast<DWORD>(store.Width()), 4);
    Put(file, static_cast<DWORD>(store.Height()), 4);
    Put(file, 1, 2);
    Put(file, 24, 2);
    Put(file, 0, 4);
    Put(file, size, 4);
    file.resize(kBmpHeaders + size);
    std::vector<Argb> scratch(width);
    for (int y = 0; y < store.Height(); ++y) {
        WritePixels(Gdiplus::PixelFormat24bppRGB, store.StraightRow(y, scratch.data()), store.Width(),
                    &file[kBmpHeaders + stride * static_cast<std::size_t>(store.Height() - 1 - y)]);
    }
    return file;
}

bool WriteWholeFile(const WCHAR* path, std::span<const std::byte> bytes) noexcept {
    const File file(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
    DWORD written = 0;
    return file.IsOpen() && WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}

}  // namespace kawin
