// Formulas as they usually are, the shortest way: nothing is left out, nothing stands where it does not belong, and brackets are
// few.

#include <algorithm>

#include "formula.h"
#include "formula_operators.h"
#include "formula_words.h"

namespace kadata::formula {
namespace {

constexpr int kMostNesting = 32;          // each takes some frames of the caller's stack
constexpr std::ptrdiff_t kShortCall = 5;  // units, up to which it is none

class UsualFormula {
public:
    UsualFormula(TextView text, const Variables& variables)
        : m_at(text.data()), m_end(text.data() + text.size()), m_values{variables.x, variables.y, variables.z} {}

    std::optional<UsualOutcome> Evaluate() {
        const double value = Expression(LEVEL_ALL);
        return m_usual && m_at == m_end ? std::optional(UsualOutcome{value, m_variables}) : std::nullopt;
    }

private:
    // Up to the first operator that is looser.
    double Expression(int least) {
        double left = Operand();
        for (;;) {
            SkipBlanks();
            const Level level = LevelOf(*m_at);
            if (level < least || level == LEVEL_OPEN) {
                return left;
            }
            const TCHAR op = *m_at++;
            left = Combine(left, op, Expression(level + 1));
        }
    }

    double Operand() {
        bool negative = false;
        for (SkipBlanks(); *m_at == _T('-') || *m_at == _T('+'); SkipBlanks()) {
            negative = negative != (*m_at++ == _T('-'));
        }
        const double value = Unsigned();
        return negative ? -value : value;
    }

    double Unsigned() {
        if (*m_at == _T('v') && m_at[1] >= _T('1') && m_at[1] <= _T('3')) {
            const int number = m_at[1] - _T('0');
            m_variables = std::max(m_variables, number);
            m_at += 2;
            return m_values[number - 1];
        }
        if (*m_at == _T('(')) {
            return Bracketed();
        }
        const TCHAR* const start = m_at;
        const double number = ReadNumber(m_at);
        return m_at != start ? number : Call();
    }

    // At an opening bracket.
    double Bracketed() {
        if (*m_at != _T('(') || ++m_nesting > kMostNesting) {
            return GiveUp();
        }
        ++m_at;
        const double value = Expression(LEVEL_ALL);
        if (*m_at != _T(')')) {
            return GiveUp();
        }
        ++m_at;
        --m_nesting;
        return value;
    }

    double Call() {
        const TCHAR* const start = m_at;
        while ((*m_at >= _T('a') && *m_at <= _T('z')) || (*m_at >= _T('A') && *m_at <= _T('Z'))) {
            ++m_at;
        }
        const TextView name(start, static_cast<std::size_t>(m_at - start));
        const double argument = Bracketed();
        const std::optional<double> value = m_at - start > kShortCall ? CallFunction(name, argument) : std::nullopt;
        return value ? *value : GiveUp();
    }

    void SkipBlanks() {
        while (*m_at == _T(' ') || *m_at == _T('\t')) {
            ++m_at;
        }
    }

    // Everything ends at the end of the text, which is where it now is.
    double GiveUp() {
        m_usual = false;
        m_at = m_end;
        return 0;
    }

    const TCHAR* m_at;
    const TCHAR* const m_end;
    const double m_values[3];
    int m_variables = 0;
    int m_nesting = 0;
    bool m_usual = true;
};

}  // namespace

std::optional<UsualOutcome> EvaluateUsual(TextView text, const Variables& variables) {
    return UsualFormula(text, variables).Evaluate();
}

}  // namespace kadata::formula
