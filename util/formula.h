#pragma once

// Formulas, without the exceptions. Internal to the library; kadata/math_expression.h tells what a formula is.

#include <afx.h>

#include <optional>
#include <string_view>

namespace kadata::formula {

using TextView = std::basic_string_view<TCHAR>;

enum class Fault { NONE, TOO_MANY_CLOSED, UNCLOSED, UNKNOWN_FUNCTION, TOO_DEEP };

struct Variables {
    double x, y, z;
};

struct Outcome {
    double value = 0;
    Fault fault = Fault::NONE;
    TextView where{};  // the part of the text that is at fault
};

struct UsualOutcome {
    double value;
    int variables;  // the largest number of one
};

// As Evaluate, but only for formulas without anything unusual; nothing for all others, faults included. Several times as fast.
std::optional<UsualOutcome> EvaluateUsual(TextView text, const Variables& variables);

// In one pass and without recursion. A zero has to stand behind the text. Throws std::bad_alloc.
Outcome Evaluate(TextView text, const Variables& variables);

bool IsOperator(TCHAR c);

// Without the spaces and tabs at both ends.
TextView Trimmed(TextView text);

}  // namespace kadata::formula
