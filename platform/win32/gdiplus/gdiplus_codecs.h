#pragma once

// What pictures can be saved as: BMP and PNG.

#include "gdiplus_types.h"

namespace Gdiplus {

inline constexpr GUID ImageFormatBMP = {0xB96B3CAB, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
inline constexpr GUID ImageFormatPNG = {0xB96B3CAF, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

enum ImageCodecFlags {
    ImageCodecFlagsEncoder = 0x00000001,
    ImageCodecFlagsDecoder = 0x00000002,
    ImageCodecFlagsSupportBitmap = 0x00000004,
    ImageCodecFlagsSupportVector = 0x00000008,
    ImageCodecFlagsSeekableEncode = 0x00000010,
    ImageCodecFlagsBlockingDecode = 0x00000020,
    ImageCodecFlagsBuiltin = 0x00010000
};

struct ImageCodecInfo {
    CLSID Clsid;    // what Image::Save takes
    GUID FormatID;  // ImageFormatBMP or ImageFormatPNG
    const WCHAR* CodecName;
    const WCHAR* DllName;  // null
    const WCHAR* FormatDescription;
    const WCHAR* FilenameExtension;  // patterns with ';' between
    const WCHAR* MimeType;
    DWORD Flags;
    DWORD Version;
    DWORD SigCount;  // signatures at a file's start
    DWORD SigSize;   // bytes of each
    const BYTE* SigPattern;
    const BYTE* SigMask;
};

// How many encoders there are, and the bytes that GetImageEncoders needs. InvalidParameter for null.
KADATA_API Status GetImageEncodersSize(UINT* count, UINT* size) noexcept;

// Exactly the count and the size that GetImageEncodersSize gave, else GenericError. The texts stay.
KADATA_API Status GetImageEncoders(UINT count, UINT size, ImageCodecInfo* encoders) noexcept;

}  // namespace Gdiplus
