#pragma once

// The demo's texts, in the language that is asked for.

#include <afx.h>

inline constexpr LANGID ENGLISH = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
inline constexpr LANGID GERMAN = MAKELANGID(LANG_GERMAN, SUBLANG_DEFAULT);

// Of the program's string table; empty when there is none of that number in that language.
CString LoadText(UINT id, LANGID language);

// The language of the user, as far as the demo speaks it.
LANGID UserLanguage();
