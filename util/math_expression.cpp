#include <kadata/math_expression.h>
#include <kadata/tarvo_exception.h>

#include <algorithm>

#include "formula.h"

using namespace kadata::formula;

namespace {

constexpr UINT kNotUnderstood = 243;  // of the host's messages
constexpr char kSource[] = "MathExpression";
constexpr TCHAR kLastDigit = _T('9');

TextView View(const CString& text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

CString WithPoints(TextView part) {
    CString text(part.data(), static_cast<int>(part.size()));
    text.Replace(_T(','), _T('.'));
    return text;
}

// From a line of its own for each, which is what a log tells of it.
[[noreturn]] void Throw(Fault fault, TextView where) {
    const CString text = WithPoints(where);
    switch (fault) {
        case Fault::TOO_MANY_CLOSED:
            throw new CTarvoException(0, kNotUnderstood, text, kSource, __LINE__);
        case Fault::UNCLOSED:
            throw new CTarvoException(0, kNotUnderstood, text, kSource, __LINE__);
        case Fault::TOO_DEEP:
            throw new CTarvoException(0, kNotUnderstood, text, kSource, __LINE__);
        default:
            throw new CTarvoException(0, kNotUnderstood, text, kSource, __LINE__);
    }
}

}  // namespace

double CMathExpression::Calculate(const CString& expression, int numberOfVariables, double x, double y, double z) {
    constexpr double kTooManyVariables = -1;
    if (const auto usual = EvaluateUsual(View(expression), {x, y, z})) {
        return usual->variables > numberOfVariables ? kTooManyVariables : usual->value;
    }
    return CountVars(expression) > numberOfVariables ? kTooManyVariables : CalculateIntern(expression, x, y, z);
}

double CMathExpression::CalculateIntern(const CString& expression, double x, double y, double z) {
    const Outcome outcome = Evaluate(View(expression), {x, y, z});
    if (outcome.fault != Fault::NONE) {
        Throw(outcome.fault, outcome.where);
    }
    return outcome.value;
}

int CMathExpression::CountVars(const CString& expression) {
    TCHAR last = _T('0');
    const TextView text = View(expression);
    for (std::size_t i = text.find(_T('v')); i != TextView::npos && i + 1 < text.size(); i = text.find(_T('v'), i + 1)) {
        last = text[i + 1] <= kLastDigit ? std::max(last, text[i + 1]) : last;
    }
    return last - _T('0');
}

int CMathExpression::IsOperator(TCHAR c) {
    return kadata::formula::IsOperator(c) ? 1 : 0;
}
