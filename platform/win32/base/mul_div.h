#pragma once

// One product and one quotient without losing what does not fit 32 bits between them.

#include "types.h"

// number * numerator / denominator, rounded to the nearest, halves away from 0. -1 when the denominator is 0 or the result does
// not fit, as documented.
KADATA_API int MulDiv(int number, int numerator, int denominator) noexcept;
