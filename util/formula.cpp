#include "formula.h"

#include <kadata/math_expression.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "formula_operators.h"
#include "formula_stack.h"
#include "formula_words.h"

namespace kadata::formula {
namespace {

enum class Kind : unsigned char { OTHER, END, BLANK, DIGIT, SIGN, OPERATOR, OPEN, CLOSE };

constexpr std::array<Kind, 128> kKinds = [] {
    std::array<Kind, 128> kinds{};
    kinds[0] = Kind::END;
    kinds[' '] = kinds['\t'] = Kind::BLANK;
    kinds['.'] = kinds[','] = Kind::DIGIT;
    for (std::size_t digit = '0'; digit <= '9'; ++digit) {
        kinds[digit] = Kind::DIGIT;
    }
    kinds['+'] = kinds['-'] = Kind::SIGN;
    kinds['*'] = kinds['/'] = kinds['\\'] = kinds['%'] = kinds['^'] = Kind::OPERATOR;
    kinds['('] = Kind::OPEN;
    kinds[')'] = Kind::CLOSE;
    return kinds;
}();

constexpr std::size_t kShortestCall = 6;  // units, as sin(1)

bool IsBlank(TCHAR c) {
    return c == _T(' ') || c == _T('\t');
}

// What may stand before a number, as the C functions have it.
bool IsWhiteSpace(TCHAR c) {
    return c == _T(' ') || (c >= _T('\t') && c <= _T('\r'));
}

TextView ViewOf(const TCHAR* begin, const TCHAR* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

// An operand that is not one of the plain kinds is decided on when its end is seen, for what is behind a bracket may make
// something else of all that was read in it. Functions that are unknown are therefore remembered, not reported, until then.
class Evaluator {
public:
    Evaluator(TextView text, const Variables& variables);
    Outcome Run();

private:
    struct Operation {
        double left;
        TCHAR op;
        Level level;
    };
    struct Bracket {
        const TCHAR* start;  // of the operand: the name or the bracket itself
        const TCHAR* open;
        bool negative;  // a sign is before the operand
    };

    Kind KindHere() const {
        const Kind kind = *m_at < kKinds.size() ? kKinds[*m_at] : Kind::OTHER;
        return kind == Kind::END && m_at != m_end ? Kind::OTHER : kind;
    }
    void SkipBlanks() {
        while (IsBlank(*m_at)) {
            ++m_at;
        }
    }
    bool EndsOperand();
    void ReadOperand();
    bool ReadPlain(bool negative);
    bool ReadWord(const TCHAR* start, bool negative);
    void Open(const TCHAR* start, bool negative);
    void Close();
    bool SkipRest();
    void EvaluateSideBySide(const Bracket& bracket);
    void Call(const Bracket& bracket, TextView call);
    double WordValue(TextView word) const;
    void Push(TCHAR op, Level level) { m_operations.Push({m_value, op, level}); }
    void Reduce(Level least);
    void Remember(Fault fault, TextView where);
    void Forget(const TCHAR* from);
    void GiveUp(Fault fault);

    const TextView m_text;
    const Variables& m_variables;
    const TCHAR* m_at;
    const TCHAR* m_end;
    double m_value = 0;  // of the operand that was read last
    Outcome m_fault;     // the first one, or that for which it was given up
    bool m_given_up = false;

    // The usual formula needs no more than these first entries.
    Stack<Operation, 24> m_operations;
    Stack<Bracket, 8> m_brackets;
};

Evaluator::Evaluator(TextView text, const Variables& variables)
    : m_text(text), m_variables(variables), m_at(text.data()), m_end(text.data() + text.size()) {
    Push(0, LEVEL_OPEN);
}

Outcome Evaluator::Run() {
    for (;;) {
        ReadOperand();
        Kind kind = KindHere();
        for (; kind == Kind::CLOSE; kind = KindHere()) {
            Close();
        }
        if (kind == Kind::END) {
            break;
        }
        const Level level = LevelOf(*m_at);
        Reduce(level);
        Push(*m_at++, level);
    }
    if (!m_brackets.IsEmpty() && !m_given_up) {
        GiveUp(Fault::UNCLOSED);
    }
    Reduce(LEVEL_ALL);
    return m_fault.fault == Fault::NONE ? Outcome{m_value} : m_fault;
}

// Behind an operand a + or - is an operator.
bool Evaluator::EndsOperand() {
    SkipBlanks();
    const Kind kind = KindHere();
    return kind == Kind::SIGN || kind == Kind::OPERATOR || kind == Kind::CLOSE || kind == Kind::END;
}

// Opens the brackets before it, and stops at what ends it.
void Evaluator::ReadOperand() {
    for (bool negative = false;;) {
        switch (KindHere()) {
            case Kind::BLANK:
                ++m_at;
                break;
            case Kind::SIGN:
                negative = negative != (*m_at++ == _T('-'));
                break;
            case Kind::OPEN:
                Open(m_at, negative);
                negative = false;
                break;
            case Kind::DIGIT:
            case Kind::OTHER: {
                if (ReadPlain(negative)) {
                    return;
                }
                negative = false;
                break;
            }
            default:
                m_value = negative ? -0.0 : 0.0;
                return;
        }
    }
}

// Numbers and variables with nothing behind them, and all the rest by ReadWord.
bool Evaluator::ReadPlain(bool negative) {
    const TCHAR* const start = m_at;
    if (*m_at == _T('v') && m_at[1] >= _T('1') && m_at[1] <= _T('3')) {
        const double values[] = {m_variables.x, m_variables.y, m_variables.z};
        m_value = values[m_at[1] - _T('1')];
        m_at += 2;
    } else {
        m_value = ReadNumber(m_at);
    }
    if (m_at == start || !EndsOperand()) {
        return ReadWord(start, negative);
    }
    m_value = negative ? -m_value : m_value;
    return true;
}

// The rest of an operand that does not begin with a bracket. False when it is the name before one, which is then open.
bool Evaluator::ReadWord(const TCHAR* start, bool negative) {
    Kind kind = KindHere();
    while (kind == Kind::OTHER || kind == Kind::DIGIT || kind == Kind::BLANK) {
        ++m_at;
        kind = KindHere();
    }
    if (kind == Kind::OPEN) {
        Open(start, negative);
        return false;
    }
    const double value = WordValue(Trimmed(ViewOf(start, m_at)));
    m_value = negative ? -value : value;
    return true;
}

void Evaluator::Open(const TCHAR* start, bool negative) {
    if (m_brackets.Size() == CMathExpression::MAX_NESTING) {
        GiveUp(Fault::TOO_DEEP);
        return;
    }
    m_brackets.Push({start, m_at++, negative});
    Push(0, LEVEL_OPEN);
}

// At a closing bracket: what began before the opening one becomes an operand, up to its end.
void Evaluator::Close() {
    if (m_brackets.IsEmpty()) {
        GiveUp(Fault::TOO_MANY_CLOSED);
        return;
    }
    Reduce(LEVEL_ALL);
    m_operations.Pop();
    const Bracket bracket = m_brackets.Top();
    m_brackets.Pop();
    const TextView operand = ViewOf(bracket.start, ++m_at);
    if (!EndsOperand()) {
        EvaluateSideBySide(bracket);
    } else if (bracket.start != bracket.open) {
        Call(bracket, operand);
    }
    m_value = bracket.negative ? -m_value : m_value;
}

// To the end of an operand, whatever is in it. False when a bracket stays open.
bool Evaluator::SkipRest() {
    for (std::size_t depth = 0; depth != 0 || !EndsOperand(); ++m_at) {
        const Kind kind = KindHere();
        if (kind == Kind::END) {
            GiveUp(Fault::UNCLOSED);
            return false;
        }
        depth += kind == Kind::OPEN ? 1 : 0;
        depth -= kind == Kind::CLOSE ? 1 : 0;
    }
    return true;
}

// Something is behind the closing bracket. With another one at the end, what is between the first and the last is taken for a
// formula, and that closes a bracket which it does not open.
void Evaluator::EvaluateSideBySide(const Bracket& bracket) {
    if (!SkipRest()) {
        return;
    }
    const TextView operand = Trimmed(ViewOf(bracket.start, m_at));
    Forget(bracket.start);
    m_value = WordValue(operand);
    if (operand.ends_with(_T(')')) && (bracket.start == bracket.open || operand.size() >= kShortestCall)) {
        Remember(Fault::TOO_MANY_CLOSED, Trimmed(ViewOf(bracket.open + 1, &operand.back())));
    }
}

void Evaluator::Call(const Bracket& bracket, TextView call) {
    if (call.size() < kShortestCall) {
        m_value = WordValue(call);
        return;
    }
    const std::optional<double> value = CallFunction(ViewOf(bracket.start, bracket.open), m_value);
    if (!value) {
        Remember(Fault::UNKNOWN_FUNCTION, call);
    }
    m_value = value.value_or(0);
}

// The number at its begin; plain variables have been seen before.
double Evaluator::WordValue(TextView word) const {
    const TCHAR* at = std::find_if_not(word.data(), word.data() + word.size(), IsWhiteSpace);
    return ReadNumber(at);
}

// Carries out what binds at least as tight and waits for its right operand.
void Evaluator::Reduce(Level least) {
    while (m_operations.Top().level >= least) {
        m_value = Combine(m_operations.Top().left, m_operations.Top().op, m_value);
        m_operations.Pop();
    }
}

void Evaluator::Remember(Fault fault, TextView where) {
    if (m_fault.fault == Fault::NONE) {
        m_fault = {0, fault, where};
    }
}

// What was read from there on is not evaluated after all.
void Evaluator::Forget(const TCHAR* from) {
    if (m_fault.fault != Fault::NONE && m_fault.where.data() >= from) {
        m_fault = {};
    }
}

// For the whole text. It goes before anything that was remembered, and nothing more is read.
void Evaluator::GiveUp(Fault fault) {
    m_fault = {0, fault, Trimmed(m_text)};
    m_given_up = true;
    m_at = m_end;
}

}  // namespace

bool IsOperator(TCHAR c) {
    const Kind kind = c < kKinds.size() ? kKinds[c] : Kind::OTHER;
    return kind == Kind::SIGN || kind == Kind::OPERATOR;
}

TextView Trimmed(TextView text) {
    const std::size_t first = std::min(text.find_first_not_of(_T(" \t")), text.size());
    return text.substr(first, text.find_last_not_of(_T(" \t")) + 1 - first);
}

Outcome Evaluate(TextView text, const Variables& variables) {
    return Evaluator(text, variables).Run();
}

}  // namespace kadata::formula
