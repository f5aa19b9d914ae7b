#pragma once

// Text for the clipboard.

#include <afxwin.h>

namespace kadata {

// Replaces what the clipboard holds. FALSE when somebody else has it open, or memory runs out.
BOOL CopyTextToClipboard(HWND owner, const CString& text);

// Each end of a line as CR and LF.
CString WithReturns(const CString& text);

// Without the "&" that marks a key; two of them are one.
CString WithoutMnemonic(const CString& caption);

}  // namespace kadata
