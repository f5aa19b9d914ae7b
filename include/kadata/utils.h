#pragma once

// Small helpers: texts, numbers, the on-screen keyboard, dumps of bytes. Static functions only; any thread may call any of them.
// Nothing here throws anything but std::bad_alloc.

#include <afx.h>
#include <afxcoll.h>
#include <kadata/export.h>

#include <string>
#include <string_view>

class KADATA_API CKalidoUtils {
public:
    // The string of that number, found as CString::LoadString finds it. Empty when there is none.
    static CString LoadStringW(UINT id);
    // Without its first "&". Deliberate: later ones stay.
    static CString FilterMnemonic(CString text);
    static CString LoadStringFilterMnemonic(UINT id);

    // The same in every locale: decimal, with a point before each group of three digits ("1.234.567"). Deliberate: of a value
    // beyond 32 bits only the low 32 count.
    static CString FormatDWord(ULONGLONG value);

    // Whether at most `maxUlps` steps from one float to the next lie between the two; never for a negative count. +0 and -0 are
    // the same. By bit pattern throughout: infinity is the neighbour of the largest float, and a NaN equals itself.
    static int FloatAlmostEqual(float a, float b, int maxUlps);

    // Adds the pieces of the text to `out`, empty ones included. Deliberate: an empty last piece is not, so a separator at the
    // end adds nothing, and an empty text neither.
    static void StringTokenizer(CString text, TCHAR separator, CStringArray& out);

    // The desktop's on-screen keyboard, under the name that the system gives it: "osk.exe". Starting it again while it runs is
    // the keyboard's own affair. A keyboard that cannot be started is not reported: ask IsVirtualKeyboardRunning.
    static void StartVirtualKeyboard();
    // Looks at the processes that this one may end, among the first 16,384.
    static int IsVirtualKeyboardRunning();
    // Ends the first one at once, as IsVirtualKeyboardRunning finds it. It may still be there for a moment after the return.
    static void CloseVirtualKeyboard();

    // Wide text to bytes and back, for what knows bytes only, scripts above all. The bytes are UTF-8, whatever the system's
    // code page is, so that every character survives the way there and back; a surrogate without its partner becomes U+FFFD.
    // Zeros are kept. Bytes that are not UTF-8 throughout are taken to be in the ANSI code page, as older files are.
    // More than 700 million units are std::bad_alloc.
    static std::string WC2MB(const CString& text);
    static CString MB2WC(std::string_view bytes);
};

class KADATA_API CHexDump {
public:
    // "0a, ff": lower case, two digits a byte. Empty for a count below 1. `flags` is for later and not looked at.
    static CString ToLine(const void* data, int count, DWORD flags);
    // The same in lines of 16 bytes, with "\n" between them.
    static CString ToString(const void* data, int count, DWORD flags);
};

// Texts of elements with points between them ("Mill.Motor.*"), each of which is a pattern.
class KADATA_API CStringArrayEx : public CStringArray {
public:
    // Whether one of the patterns has as many elements as `text`, and each of them is the element in its place or, with "*" at
    // its end, a beginning of it. Case counts; a "*" elsewhere is an ordinary character. The empty text is one empty element.
    BOOL ContainsStringWithWildcards(const CString& text) const;
};
