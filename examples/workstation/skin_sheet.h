#pragma once

// A sheet that shows all of a skin at once.

#include <afxwin.h>

#include "texts.h"

// Writes the sheet as PNG. FALSE when the skin is not complete, or the file cannot be written.
BOOL SaveSkinSheet(int percent, LANGID language, const CString& path);
