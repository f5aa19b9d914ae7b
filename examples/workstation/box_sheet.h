#pragma once

// Pictures of the message box.

#include "texts.h"

// All kinds of boxes on one sheet: every type of buttons with each default button and the further ones, the icons, check boxes,
// both countdowns, short and long texts. `percent` is 100 or 200. FALSE when the file cannot be written.
BOOL SaveBoxSheet(int percent, LANGID language, const CString& path);

// One box with all of it.
BOOL SaveBoxPicture(int percent, LANGID language, const CString& path);
