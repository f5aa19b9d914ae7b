#pragma once

// A formula that the user types, evaluated.

#include <afx.h>

#include <vector>

// Prints the value of the formula, or the part that is not understood on the error output. The values are those of v1, v2 and v3,
// formulas without variables themselves; more than three do not count. The result is the program's.
int EvaluateFormula(const CString& formula, const std::vector<CString>& values);
