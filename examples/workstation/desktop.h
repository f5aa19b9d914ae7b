#pragma once

// The demo with windows.

#include "import.h"

inline constexpr int NO_DISPLAY = 3;

// Shows the main window until it is closed. The program's result: NO_DISPLAY when nobody could see it.
int RunMainWindow(const std::vector<SImported>& patients, const CString& data);

// Writes pictures of the main window, of a patient's card and of the skin, in both languages and both sizes, as PNG into
// `folder`, which is made. The program's result: 0 when all of them could be written.
int WritePictures(const std::vector<SImported>& patients, const CString& data, const CString& folder);
