#include "codecs.h"

#include <algorithm>
#include <iterator>

#include "startup.h"

namespace {

constexpr DWORD kCodecVersion = 1;
constexpr DWORD kCodecFlags = Gdiplus::ImageCodecFlagsEncoder | Gdiplus::ImageCodecFlagsDecoder |
                              Gdiplus::ImageCodecFlagsSupportBitmap | Gdiplus::ImageCodecFlagsBuiltin;

constexpr BYTE kBmpStart[] = {'B', 'M'};
constexpr BYTE kPngStart[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr BYTE kWholeBytes[] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

constexpr CLSID kBmpEncoder = {0x557CF400, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr CLSID kPngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

constexpr Gdiplus::ImageCodecInfo kEncoders[] = {
    {kBmpEncoder, Gdiplus::ImageFormatBMP, u"Built-in BMP", nullptr, u"BMP", u"*.BMP;*.DIB;*.RLE", u"image/bmp", kCodecFlags,
     kCodecVersion, 1, sizeof(kBmpStart), kBmpStart, kWholeBytes},
    {kPngEncoder, Gdiplus::ImageFormatPNG, u"Built-in PNG", nullptr, u"PNG", u"*.PNG", u"image/png", kCodecFlags, kCodecVersion,
     1, sizeof(kPngStart), kPngStart, kWholeBytes},
};

}  // namespace

namespace kawin {

MakeFile FindEncoder(const CLSID& encoder) noexcept {
    if (encoder == kPngEncoder) {
        return MakePng;
    }
    return encoder == kBmpEncoder ? MakeBmp : nullptr;
}

}  // namespace kawin

namespace Gdiplus {

Status GetImageEncodersSize(UINT* count, UINT* size) noexcept {
    if (!kawin::IsGdiplusStarted()) {
        return GdiplusNotInitialized;
    }
    if (count == nullptr || size == nullptr) {
        return InvalidParameter;
    }
    *count = static_cast<UINT>(std::size(kEncoders));
    *size = sizeof(kEncoders);
    return Ok;
}

Status GetImageEncoders(UINT count, UINT size, ImageCodecInfo* encoders) noexcept {
    if (!kawin::IsGdiplusStarted()) {
        return GdiplusNotInitialized;
    }
    if (encoders == nullptr || count != std::size(kEncoders) || size != sizeof(kEncoders)) {
        return GenericError;
    }
    std::copy(std::begin(kEncoders), std::end(kEncoders), encoders);
    return Ok;
}

}  // namespace Gdiplus
