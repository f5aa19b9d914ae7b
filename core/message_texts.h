#pragma once

// The host's texts for errors.

#include <afx.h>

#include <optional>

namespace message_texts {

constexpr UINT kTwoPartMessage = 21;
constexpr UINT kTwoPartMessageRest = 1064;
constexpr UINT kFileLabel = 199;
constexpr UINT kLineLabel = 200;
constexpr UINT kAskForDetails = 227;
constexpr UINT kDetailsHead = 228;
constexpr UINT kHintForData = 229;
constexpr UINT kHint = 230;
constexpr UINT kDetailsEnd = 346;

// Empty when the host does not have it.
CString Load(UINT id);

// The text of a message number; `suffix` ends the two-part message.
CString Resolve(UINT id, LPCTSTR suffix);

// Cut to `size` units with the terminator, never inside a surrogate pair. Nothing is written with a size of 0.
void Copy(const CString& text, LPTSTR buffer, UINT size);
CString Cut(const CString& text, UINT size);

}  // namespace message_texts
