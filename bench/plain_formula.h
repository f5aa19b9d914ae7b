#pragma once

// An evaluator of formulas that is as simple as it can be: one pass, and no look at what is wrong.

#include <afx.h>

// Of formulas of numbers, v1 to v3, + - * / ^ ( ), sin, cos, tan and exp, without mistakes.
double PlainFormulaValue(const CString& formula, double x, double y, double z);
