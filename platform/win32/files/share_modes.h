#pragma once

// Share modes between handles and processes, as locks of the open file on six bytes far behind any content. They go with the
// last descriptor of the open file. Internal to the layer.

#include "../base/types.h"

namespace kawin {

// Enters that `fd` uses its file with `access` (specific rights) and what it lets others do, unless another open file objects
// or does what this one does not allow: then false. An access that neither reads, writes nor deletes takes no part. Where the
// file system knows no locks, or `fd` is not readable, nothing is entered and the result is true unless somebody is seen to
// object.
bool ClaimShare(int fd, DWORD access, DWORD share) noexcept;

}  // namespace kawin
