#pragma once

// Structures and numbers that the drawing headers share. Units are pixels unless said otherwise.

#include "../base/types.h"

// 0x00BBGGRR.
constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16);
}
constexpr BYTE GetRValue(COLORREF color) {
    return static_cast<BYTE>(color);
}
constexpr BYTE GetGValue(COLORREF color) {
    return static_cast<BYTE>(color >> 8);
}
constexpr BYTE GetBValue(COLORREF color) {
    return static_cast<BYTE>(color >> 16);
}
constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;

constexpr int LF_FACESIZE = 32;

// A font as it is asked for and described.
struct LOGFONTW {
    LONG lfHeight;  // above 0: of the cell; below 0: of the characters without internal leading; 0: default
    LONG lfWidth;
    LONG lfEscapement;  // tenths of a degree, counter-clockwise
    LONG lfOrientation;
    LONG lfWeight;  // 0 to 1000; 400 is normal, 700 bold
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    WCHAR lfFaceName[LF_FACESIZE];
};
using LOGFONT = LOGFONTW;
using LPLOGFONTW = LOGFONTW*;

// Kinds of objects, as GetObjectType tells them.
constexpr DWORD OBJ_PEN = 1;
constexpr DWORD OBJ_BRUSH = 2;
constexpr DWORD OBJ_DC = 3;
constexpr DWORD OBJ_FONT = 6;
constexpr DWORD OBJ_BITMAP = 7;
constexpr DWORD OBJ_REGION = 8;
constexpr DWORD OBJ_MEMDC = 10;

constexpr DWORD GDI_ERROR = 0xFFFFFFFF;
inline const HGDIOBJ HGDI_ERROR = reinterpret_cast<HGDIOBJ>(static_cast<LONG_PTR>(-1));
