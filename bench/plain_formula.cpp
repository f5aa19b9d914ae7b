#include "plain_formula.h"

#include <cmath>

namespace {

class Formula {
public:
    Formula(const TCHAR* text, double x, double y, double z) : m_at(text), m_variables{x, y, z} {}

    double Sum() {
        double value = Product();
        for (;;) {
            if (Take(_T('+'))) {
                value += Product();
            } else if (Take(_T('-'))) {
                value -= Product();
            } else {
                return value;
            }
        }
    }

private:
    double Product() {
        double value = Power();
        for (;;) {
            if (Take(_T('*'))) {
                value *= Power();
            } else if (Take(_T('/'))) {
                value /= Power();
            } else {
                return value;
            }
        }
    }

    double Power() {
        double value = Operand();
        while (Take(_T('^'))) {
            value = std::pow(value, Operand());
        }
        return value;
    }

    double Operand() {
        if (Take(_T('-'))) {
            return -Operand();
        }
        if (Take(_T('('))) {
            return Bracketed();
        }
        if (*m_at == _T('v')) {
            m_at += 2;
            return m_variables[m_at[-1] - _T('1')];
        }
        return IsDigit(*m_at) ? Number() : Call();
    }

    double Bracketed() {
        const double value = Sum();
        Take(_T(')'));
        return value;
    }

    double Call() {
        const TCHAR name = *m_at;
        while (!Take(_T('('))) {
            ++m_at;
        }
        const double argument = Bracketed();
        switch (name) {
            case _T('s'):
                return std::sin(argument);
            case _T('c'):
                return std::cos(argument);
            case _T('t'):
                return std::tan(argument);
            default:
                return std::exp(argument);
        }
    }

    double Number() {
        double value = 0;
        for (; IsDigit(*m_at); ++m_at) {
            value = value * 10 + (*m_at - _T('0'));
        }
        double unit = 1;
        if (Take(_T('.'))) {
            for (; IsDigit(*m_at); ++m_at) {
                value = value * 10 + (*m_at - _T('0'));
                unit *= 10;
            }
        }
        return value / unit;
    }

    static bool IsDigit(TCHAR c) { return c >= _T('0') && c <= _T('9'); }
    bool Take(TCHAR c) {
        const bool here = *m_at == c;
        m_at += here ? 1 : 0;
        return here;
    }

    const TCHAR* m_at;
    const double m_variables[3];
};

}  // namespace

double PlainFormulaValue(const CString& formula, double x, double y, double z) {
    return Formula(formula, x, y, z).Sum();
}
