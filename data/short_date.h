#pragma once

// Days as the records show them. Internal to the library.

#include <afx.h>

namespace kadata {

// In the user's short date form, the year always with four digits. Empty for a day that no month has, and when the system fails.
CString ShortDate(const SYSTEMTIME& day);

}  // namespace kadata
