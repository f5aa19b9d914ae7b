#pragma once

// A sheet that shows all of a skin at once.

#include <afxwin.h>

#include "texts.h"

inline constexpr LANGID NO_TEXT = 0;  // instead of a language: the bitmaps alone

// Writes the sheet as PNG. FALSE when the skin is not complete, or the file cannot be written.
BOOL SaveSkinSheet(int percent, LANGID language, const CString& path);
