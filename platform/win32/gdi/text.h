#pragma once

// Text: measured and drawn with what is selected into a context, the colours included.
//
// A text is UTF-16 and a count of units. Characters that belong together (a surrogate pair, a letter and its marks) are one: all
// of their units have the same extent, and nothing is cut between them. A surrogate without its other half is drawn as U+FFFD, a
// control character as a blank. Right-to-left scripts run as they do; characters are not kerned, so that widths add up. Of long
// texts pieces of some hundred characters are arranged on their own, one to the right of the other.
//
// Coordinates are logical. What is drawn is cut to what the context may draw on; a context without a bitmap measures, and draws
// nothing. On a monochrome bitmap text is not smoothed. Contexts of different threads may measure and draw at once: arranging
// glyphs takes turns in the process, drawing them does not.
//
// Functions fail with ERROR_INVALID_HANDLE when the context is null or none, with ERROR_INVALID_PARAMETER for a null text or
// result or a negative count, and with ERROR_NOT_ENOUGH_MEMORY.

#include "gdi_types.h"

// ExtTextOutW.
constexpr UINT ETO_OPAQUE = 0x0002;
constexpr UINT ETO_CLIPPED = 0x0004;
constexpr UINT ETO_RTLREADING = 0x0080;

// DrawTextW.
constexpr UINT DT_TOP = 0x00000000;
constexpr UINT DT_LEFT = 0x00000000;
constexpr UINT DT_CENTER = 0x00000001;
constexpr UINT DT_RIGHT = 0x00000002;
constexpr UINT DT_VCENTER = 0x00000004;  // this and the next: of a DT_SINGLELINE
constexpr UINT DT_BOTTOM = 0x00000008;
constexpr UINT DT_WORDBREAK = 0x00000010;
constexpr UINT DT_SINGLELINE = 0x00000020;
constexpr UINT DT_EXPANDTABS = 0x00000040;  // a tab stop each eight mean widths
constexpr UINT DT_TABSTOP = 0x00000080;     // a tab stop each so many as bits 8 to 15 say, or iTabLength
constexpr UINT DT_NOCLIP = 0x00000100;
constexpr UINT DT_EXTERNALLEADING = 0x00000200;
constexpr UINT DT_CALCRECT = 0x00000400;
constexpr UINT DT_NOPREFIX = 0x00000800;
constexpr UINT DT_INTERNAL = 0x00001000;  // measures of SYSTEM_FONT
constexpr UINT DT_EDITCONTROL = 0x00002000;
constexpr UINT DT_PATH_ELLIPSIS = 0x00004000;
constexpr UINT DT_END_ELLIPSIS = 0x00008000;
constexpr UINT DT_MODIFYSTRING = 0x00010000;
constexpr UINT DT_RTLREADING = 0x00020000;
constexpr UINT DT_WORD_ELLIPSIS = 0x00040000;
constexpr UINT DT_NOFULLWIDTHCHARBREAK = 0x00080000;
constexpr UINT DT_HIDEPREFIX = 0x00100000;
constexpr UINT DT_PREFIXONLY = 0x00200000;

// Margins and tab stops in mean character widths.
struct DRAWTEXTPARAMS {
    UINT cbSize;
    int iTabLength;
    int iLeftMargin;
    int iRightMargin;
    UINT uiLengthDrawn;  // receives how many units were drawn or measured
};
using LPDRAWTEXTPARAMS = DRAWTEXTPARAMS*;

// Draws a line; x and y are its reference point, as SetTextAlign says: with TA_UPDATECP the position of the pen, which moves on
// to where the next text would begin (with TA_CENTER it stays). Where the background is OPAQUE, the text's cell is filled first.
KADATA_API BOOL TextOutW(HDC context, int x, int y, LPCWSTR text, int count) noexcept;

// The same; ETO_OPAQUE fills the rectangle with the background colour first, ETO_CLIPPED cuts the text to it (a null rectangle:
// neither). `widths`, unless null, is how far each unit moves on; of characters that belong together their sum counts.
// ERROR_INVALID_PARAMETER for options that are not listed above.
KADATA_API BOOL ExtTextOutW(HDC context, int x, int y, UINT options, const RECT* rect, LPCWSTR text, UINT count,
                            const INT* widths) noexcept;

// Width of the text and height of a line, of text that is not turned; 0 and 0 for a count of 0.
KADATA_API BOOL GetTextExtentPoint32W(HDC context, LPCWSTR text, int count, SIZE* size) noexcept;

// The same for the whole text; `fit` receives how many units are in `limit` pixels (-1: no limit) and `extents` the extents from
// the text's begin to the end of each of those. Null: not wanted; without `fit` there is no limit.
KADATA_API BOOL GetTextExtentExPointW(HDC context, LPCWSTR text, int count, int limit, int* fit, int* extents,
                                      SIZE* size) noexcept;

// Draws text into a rectangle, or with DT_CALCRECT only measures: then the rectangle keeps left and top and becomes as wide as
// the longest line and as high as all of them (an empty text: the empty rectangle, one line high with DT_SINGLELINE). A count of
// -1 is text up to its terminator.
//
// CR, LF and both together end a line; a DT_SINGLELINE has them as blanks. DT_WORDBREAK breaks lines at blanks, which are drawn
// on neither side, and beside full-width characters; a word that is too long stays whole, with DT_EDITCONTROL it is broken
// anywhere.
// "&" underlines the character after it and "&&" is one of it; an "&" at the end stays.
// DT_END_ELLIPSIS cuts the last line, DT_WORD_ELLIPSIS any line that is too wide and ends it with "..."; DT_PATH_ELLIPSIS cuts
// before the last "\" or "/", or in the middle when there is none. DT_MODIFYSTRING then puts what is drawn into `text`, which has
// room for four more units. Lines that begin below the rectangle are left out, those that end there too with DT_EDITCONTROL,
// unless with DT_NOCLIP or DT_CALCRECT.
//
// Returns the height of the lines, with DT_VCENTER and DT_BOTTOM from the rectangle's top to the line's bottom; 0 on failure,
// which is a null rectangle and a `cbSize` that is wrong, too. The alignment of the context does not count.
KADATA_API int DrawTextW(HDC context, LPCWSTR text, int count, RECT* rect, UINT format) noexcept;

// `params` may be null.
KADATA_API int DrawTextExW(HDC context, LPWSTR text, int count, RECT* rect, UINT format, DRAWTEXTPARAMS* params) noexcept;
