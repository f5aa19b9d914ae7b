#include "mul_div.h"

#include <climits>

int MulDiv(int number, int numerator, int denominator) noexcept {
    if (denominator == 0) {
        return -1;
    }
    LONGLONG product = LONGLONG{number} * numerator;
    LONGLONG divisor = denominator;
    if (divisor < 0) {
        product = -product;
        divisor = -divisor;
    }
    const LONGLONG result = (product < 0 ? product - divisor / 2 : product + divisor / 2) / divisor;
    return result < INT_MIN || result > INT_MAX ? -1 : static_cast<int>(result);
}
