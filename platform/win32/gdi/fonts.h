#pragma once

// Fonts: made from a description, selected into a context with SelectObject, ended with DeleteObject.
//
// A face is looked up among the installed fonts by its name; a name that is not there stands for a sans-serif face, or, by name
// or by lfPitchAndFamily, a fixed-pitch or a serif one. A character that a face lacks comes from another font. Without any font
// installed everything here and in text.h still answers, with measures derived from the height, and text leaves no ink. Measures
// are whole pixels at any height. Functions of a context fail with ERROR_INVALID_HANDLE when it is null or none.

#include "gdi_types.h"

// lfWeight.
constexpr int FW_DONTCARE = 0;
constexpr int FW_THIN = 100;
constexpr int FW_EXTRALIGHT = 200;
constexpr int FW_LIGHT = 300;
constexpr int FW_NORMAL = 400;
constexpr int FW_REGULAR = FW_NORMAL;
constexpr int FW_MEDIUM = 500;
constexpr int FW_SEMIBOLD = 600;
constexpr int FW_BOLD = 700;
constexpr int FW_EXTRABOLD = 800;
constexpr int FW_HEAVY = 900;

// lfCharSet. Text is UTF-16 whatever it is; it is only handed on to TEXTMETRICW.
constexpr BYTE ANSI_CHARSET = 0;
constexpr BYTE DEFAULT_CHARSET = 1;
constexpr BYTE SYMBOL_CHARSET = 2;
constexpr BYTE SHIFTJIS_CHARSET = 128;
constexpr BYTE GREEK_CHARSET = 161;
constexpr BYTE TURKISH_CHARSET = 162;
constexpr BYTE HEBREW_CHARSET = 177;
constexpr BYTE ARABIC_CHARSET = 178;
constexpr BYTE RUSSIAN_CHARSET = 204;
constexpr BYTE EASTEUROPE_CHARSET = 238;
constexpr BYTE OEM_CHARSET = 255;

// lfOutPrecision and lfClipPrecision, which change nothing.
constexpr BYTE OUT_DEFAULT_PRECIS = 0;
constexpr BYTE OUT_TT_PRECIS = 4;
constexpr BYTE CLIP_DEFAULT_PRECIS = 0;

// lfQuality. Edges are smoothed in shades of grey unless it is NONANTIALIASED_QUALITY.
constexpr BYTE DEFAULT_QUALITY = 0;
constexpr BYTE DRAFT_QUALITY = 1;
constexpr BYTE PROOF_QUALITY = 2;
constexpr BYTE NONANTIALIASED_QUALITY = 3;
constexpr BYTE ANTIALIASED_QUALITY = 4;
constexpr BYTE CLEARTYPE_QUALITY = 5;

// lfPitchAndFamily: a pitch and a family.
constexpr BYTE DEFAULT_PITCH = 0;
constexpr BYTE FIXED_PITCH = 1;
constexpr BYTE VARIABLE_PITCH = 2;
constexpr BYTE FF_DONTCARE = 0x00;
constexpr BYTE FF_ROMAN = 0x10;
constexpr BYTE FF_SWISS = 0x20;
constexpr BYTE FF_MODERN = 0x30;
constexpr BYTE FF_SCRIPT = 0x40;
constexpr BYTE FF_DECORATIVE = 0x50;

// tmPitchAndFamily: these and a family.
constexpr BYTE TMPF_FIXED_PITCH = 0x01;  // deliberate, as documented: set when the pitch is not fixed
constexpr BYTE TMPF_VECTOR = 0x02;
constexpr BYTE TMPF_TRUETYPE = 0x04;

// Pixels, of horizontal text.
struct TEXTMETRICW {
    LONG tmHeight;  // of a line: ascent and descent
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading;  // what tmHeight is more than the em square
    LONG tmExternalLeading;  // to add between lines
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    WCHAR tmFirstChar;
    WCHAR tmLastChar;
    WCHAR tmDefaultChar;
    WCHAR tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
};
using TEXTMETRIC = TEXTMETRICW;
using LPTEXTMETRICW = TEXTMETRICW*;

// Pixels to the right of where the character begins: before its ink (below 0 when that reaches out), its ink, and after it.
struct ABC {
    int abcA;
    UINT abcB;
    int abcC;
};
using LPABC = ABC*;

// lfHeight above 0 gives the largest face whose cell is not higher, below 0 one with that em square, 0 one with a cell of 16; an
// em square has at least 1 and at most 1,000 pixels. lfWidth other than 0 widens or narrows the characters to that mean width;
// lfEscapement turns the line and its characters, counter-clockwise and by any angle; lfOrientation does not count. Null for a
// null description, and with ERROR_NOT_ENOUGH_MEMORY.
KADATA_API HFONT CreateFontIndirectW(const LOGFONTW* description) noexcept;

// The same with a description of these; a null face is an empty one, a longer one is cut.
KADATA_API HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline,
                             DWORD strikeout, DWORD charset, DWORD out_precision, DWORD clip_precision, DWORD quality,
                             DWORD pitch_and_family, LPCWSTR face) noexcept;

// Of the selected font. ERROR_INVALID_PARAMETER for a null target.
KADATA_API BOOL GetTextMetricsW(HDC context, TEXTMETRICW* metrics) noexcept;

// The installed face that the selected font stands for, cut to the capacity; the count copied, the terminator included. With a
// null target the capacity needed. 0 on failure: ERROR_INVALID_PARAMETER for no capacity.
KADATA_API int GetTextFaceW(HDC context, int capacity, LPWSTR face) noexcept;

// Of the characters `first` to `last` of the Basic Multilingual Plane, each on its own. `target` has room for all of them.
// ERROR_INVALID_PARAMETER for a null target or a range that is empty or ends beyond 0xFFFF.
KADATA_API BOOL GetCharWidth32W(HDC context, UINT first, UINT last, int* target) noexcept;
KADATA_API BOOL GetCharABCWidthsW(HDC context, UINT first, UINT last, ABC* target) noexcept;
