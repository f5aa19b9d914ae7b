#pragma once

// The binary operators of formulas. Internal to the library.

#include <array>
#include <cmath>
#include <cstddef>

#include "formula.h"

namespace kadata::formula {

// How tight an operator binds. An open bracket is the loosest of all: what is inside never reaches out.
enum Level : unsigned char {
    LEVEL_OPEN,
    LEVEL_ALL,
    LEVEL_SUM,
    LEVEL_PERCENT,
    LEVEL_WHOLE,
    LEVEL_PRODUCT,
    LEVEL_POWER,
    LEVEL_NONE
};

inline constexpr std::array<Level, 128> LEVELS = [] {
    std::array<Level, 128> levels{};  // LEVEL_OPEN for all that is no operator
    levels['+'] = levels['-'] = LEVEL_SUM;
    levels['%'] = LEVEL_PERCENT;
    levels['\\'] = LEVEL_WHOLE;
    levels['*'] = levels['/'] = LEVEL_PRODUCT;
    levels['^'] = LEVEL_POWER;
    return levels;
}();

inline Level LevelOf(TCHAR c) {
    return c < LEVELS.size() ? LEVELS[c] : LEVEL_OPEN;
}

inline double Combine(double left, TCHAR op, double right) {
    switch (op) {
        case _T('+'):
            return left + right;
        case _T('-'):
            return left - right;
        case _T('*'):
            return left * right;
        case _T('/'):
            return left / right;
        case _T('%'):
            return left * (right / 100);
        case _T('\\'):
            return std::floor(left / right);
        default:
            return std::pow(left, right);
    }
}

}  // namespace kadata::formula
