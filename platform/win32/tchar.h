#pragma once

// Text literals that are UTF-16 on every platform.

#include "base/types.h"

#define KADATA_UTF16_LITERAL(text) u##text
#define _T(text) KADATA_UTF16_LITERAL(text)
#define _TEXT(text) KADATA_UTF16_LITERAL(text)
#define TEXT(text) KADATA_UTF16_LITERAL(text)
