#pragma once

// Formulas evaluated in the plainest way: split at the loosest operator, and again. For comparison.

#include <optional>
#include <string>

namespace test {

// Thrown for what is not understood.
struct NotUnderstood {
    std::string part;
};

double PlainFormula(std::string text, double x, double y, double z);

}  // namespace test
