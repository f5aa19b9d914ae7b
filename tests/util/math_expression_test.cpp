#include <gtest/gtest.h>
#include <kadata/math_expression.h>
#include <kadata/tarvo_exception.h>

#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "plain_formula.h"
#include "support/temp_folder.h"

namespace {

using test::Narrow;

constexpr double kX = 2, kY = -0.5, kZ = 1e3;
constexpr double kInf = std::numeric_limits<double>::infinity();

struct Inside : CMathExpression {
    using CMathExpression::CalculateIntern, CMathExpression::CountVars, CMathExpression::IsOperator;
};

// The value, or what is not understood.
struct Result {
    double value = 0;
    std::optional<std::string> part{};
    UINT line = 0;

    // By bit, but any NaN is any other.
    friend bool operator==(const Result& a, const Result& b) {
        const bool same = std::bit_cast<std::uint64_t>(a.value) == std::bit_cast<std::uint64_t>(b.value);
        return a.part == b.part && (same || (std::isnan(a.value) && std::isnan(b.value)));
    }
    friend std::ostream& operator<<(std::ostream& out, const Result& result) {
        return result.part ? out << "not understood: " << *result.part : out << result.value;
    }
};

Result Evaluate(const CString& formula, int variables = 9) {
    try {
        return {CMathExpression::Calculate(formula, variables, kX, kY, kZ)};
    } catch (CTarvoException* e) {
        TCHAR text[512] = {};
        e->GetErrorMessage(text, 512);
        const std::string whole = Narrow(CString(text));
        const std::size_t source = whole.find("MathExpression @ ");
        const bool whole_source = source != std::string::npos && e->GetMessageTextID() == 243;
        const Result result{0, Narrow(e->GetMessageDetails()),
                            whole_source ? static_cast<UINT>(std::stoul(whole.substr(source + 17))) : 0};
        e->Delete();
        return result;
    }
}

Result EvaluatePlainly(const std::string& formula) {
    try {
        return {test::PlainFormula(formula, kX, kY, kZ)};
    } catch (const test::NotUnderstood& error) {
        return {0, error.part};
    }
}

CString Repeated(LPCTSTR text, int count) {
    CString all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

TEST(MathExpression, FollowsItsRules) {
    const std::pair<double, std::vector<const char*>> rows[] = {
        {0,
         {"", " \t", "2*", "*2", "()", "2**3", "+", ".", "0x10", "inf", "nan", "e5", "V1", "v12", "v1 v2", "v0", "word", "v4*2"}},
        {0, {"lg(2)", "ln(5)", "tan((0))", "atan(0)", "a(1)", "v1(1)", "(1)2", "(foo(1))2", "()()1"}},
        {-0.0, {"-", "-sin(0)", "-*3", "-(1)2", "- + -word*-1"}},
        {1, {"-3+4", "7\\2*2", "lg( 10 )", "3 - 2", "1+()", "1e", "1 2", "v4+1"}},
        {2, {" v1 ", "2(3)", "sqr(sqr(16))", "lg(100)", "EXP(0)*2", "2,", "6%50-1", "(((2)))"}},
        {3, {"7\\2", "1,5*2", "--3", "- + - 3", "8-3-2", "(1) 2+3", "3.0000000000000000000000000000000001"}},
        {4, {"-2^2", "-(2)^2", "2*7\\3", "SQR(16)", "sqr(16)", "v1*v1", "1e+3"}},
        {5, {"2--3", "2- -3", "5.", "\n5", "\n 5", "5(1)", "2+3 "}},
        {-2, {"1e-3", "-v1"}},
        {-3, {"(-3)", "3*-1"}},
        {-4, {"-7\\2", "-sqr(16)"}},
        {0.5, {"2^-1", ".5"}},
        {7, {"1+2*3"}},
        {9, {"(1+2)*3"}},
        {64, {"2^3^2"}},
        {1.5, {"9/2/3"}},
        {1.2, {"1.2.3"}},
        {-6, {"2*-3"}},
        {-9, {"-(1+2)*3"}},
        {10, {"2*50%10"}},
        {12, {"12 mm", "12(foo(3))4"}},
        {25, {"100%50%50"}},
        {30, {"200%15"}},
        {100, {"1E2", "1.e2"}},
        {-399, {"1e-400"}},
        {999.5, {"v2 + v3"}},
        {1e22, {"0.1e23"}},
        {9007199254740992.0, {"9007199254740993"}},
        {123456789012345678901234567890.0, {"123456789012345678901234567890"}},
        {kInf, {"1e400", "0.000001e400", "4/0"}},
        {-kInf, {"-4/0"}}};
    for (const auto& [value, formulas] : rows) {
        for (const char* const formula : formulas) {
            EXPECT_EQ(Evaluate(CString(formula)), Result{value}) << formula;
            EXPECT_EQ(Result{Inside::CalculateIntern(CString(formula), kX, kY, kZ)}, Result{value}) << formula;
            EXPECT_EQ(EvaluatePlainly(formula), Result{value}) << formula;
        }
    }
    for (const char* const formula : {"sqr(-1)", "lg(0-1)", "asin(2)", "acos(v3)", "0/0", "ln(0-5)*0"}) {
        EXPECT_TRUE(std::isnan(Evaluate(CString(formula)).value)) << formula;
    }
}

TEST(MathExpression, SaysWhatItDoesNotUnderstand) {
    const UINT closed = Evaluate(_T("1+2)")).line, open = Evaluate(_T("(1+2")).line, unknown = Evaluate(_T("foo(1)")).line;
    EXPECT_EQ((std::set<UINT>{0, closed, open, unknown}.size()), 4U);
    const struct {
        const char *formula, *part;
        UINT line;
    } rows[] = {{" 1,5+2) ", "1.5+2)", closed},
                {"1)+(", "1)+(", closed},
                {"\t(1+2,5", "(1+2.5", open},
                {"foo(1)+(", "foo(1)+(", open},
                {"(1)(", "(1)(", open},
                {"1+ foo( 1,5 )*2", "foo( 1.5 )", unknown},
                {"sqr (4)", "sqr (4)", unknown},
                {"sin(1)(2)", "1)(2", closed},
                {"( 1 )( 2 )", "1 )( 2", closed},
                {"foo(bar(1))", "bar(1)", unknown},
                {"fo1(1)+fo2(2)", "fo1(1)", unknown},
                {"(foo(1))(2)", "foo(1))(2", closed},
                {"foo((1)(2))", "1)(2", closed},
                {"12(345)", "12(345)", unknown},
                {"s\xFCn(1)", "s\xC3\xBCn(1)", unknown},
                {"foo(1)+(bar(2))3", "foo(1)", unknown},
                {"(bar(2))3+foo(1)", "foo(1)", unknown}};
    for (const auto& row : rows) {
        const Result result = Evaluate(CString(row.formula));
        EXPECT_EQ(result, (Result{0, row.part})) << row.formula;
        EXPECT_EQ(result.line, row.line) << row.formula;
    }
}

TEST(MathExpression, CountsVariables) {
    const std::tuple<LPCTSTR, int, double> rows[] = {{_T("v1*v1"), 1, 4},      {_T("v2+1"), 1, -1}, {_T("v2+1"), 2, 0.5},
                                                     {_T("v9"), 8, -1},        {_T("v9"), 9, 0},    {_T("1+("), 0, kInf},
                                                     {_T("foo(v1)+("), 0, -1}, {_T("vv1"), 0, -1},  {_T("v0+v"), 0, 0},
                                                     {_T("V1+v"), 0, 0},       {_T("1"), -1, -1}};
    for (const auto& [formula, variables, value] : rows) {
        const Result result = Evaluate(formula, variables);
        EXPECT_EQ(result.part ? kInf : result.value, value) << Narrow(CString(formula));
    }
    EXPECT_EQ(Inside::CountVars(_T("v3+v7+v1+v")), 7);
    std::string operators;
    for (int c = 0; c <= 0xFFFF; ++c) {
        operators += Inside::IsOperator(static_cast<TCHAR>(c)) != 0 ? static_cast<char>(c) : ' ';
    }
    std::erase(operators, ' ');
    EXPECT_EQ(operators, "%*+-/\\^");
}

// Formulas as people type them, and worse.
class Generator {
public:
    std::string Next() {
        std::string formula = Chance(2) ? Expression(4) : Soup();
        if (Chance(4) && !formula.empty()) {
            formula[Below(formula.size())] = kUnits[Below(kUnits.size())];
        }
        return formula;
    }

private:
    static constexpr std::string_view kUnits = "0123456789.,eEvVxX+-*/\\%^() \t";

    std::size_t Below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random); }
    bool Chance(std::size_t of) { return Below(of) == 0; }
    std::string Blank() { return Chance(6) ? (Chance(2) ? " " : "\t ") : ""; }
    std::string Pick(std::initializer_list<const char*> list) { return list.begin()[Below(list.size())]; }

    std::string Expression(int depth) {
        std::string text = Operand(depth);
        for (std::size_t i = Below(4); i != 0; --i) {
            text += Blank() + Pick({"+", "-", "*", "/", "\\", "%", "^"}) + Blank() + Operand(depth);
        }
        return Blank() + text + Blank();
    }
    std::string Operand(int depth) {
        const std::string sign = Chance(5) ? Pick({"-", "+", "--", "- "}) : "";
        if (depth == 0 || Chance(2)) {
            return sign + Pick({"1", "2", "0.5", "1,25", "3e2", "v1", "v2", "v3", "v4", "12", "7.", "", "1e-2", "word", "v 1"});
        }
        const std::string name = Chance(2) ? "" : Pick({"sin", "Cos", "TAN", "atan", "exp", "lg", "ln", "sqr", "tanh", "2"});
        return sign + name + "(" + Expression(depth - 1) + ")" + (Chance(12) ? Pick({"2", "(1)", " x", "("}) : "");
    }
    std::string Soup() {
        std::string text;
        for (std::size_t i = Below(16); i != 0; --i) {
            text += Chance(4) ? Pick({"(1)", "sin(", "ln(", "lg(v1)", "foo(", "v1", "2", "()"})
                              : std::string(1, kUnits[Below(kUnits.size())]);
        }
        return text;
    }

    std::mt19937 m_random{20240229};
};

TEST(MathExpression, AgreesWithThePlainestEvaluator) {
    constexpr int kValues = 100'000, kErrors = 1'000;  // each error goes to the log, with its stack
    Generator generator;
    for (int values = 0, errors = 0; values < kValues;) {
        const std::string formula = generator.Next();
        const Result expected = EvaluatePlainly(formula);
        if (expected.part && ++errors > kErrors) {
            continue;
        }
        ASSERT_EQ(Evaluate(CString(formula.c_str())), expected) << '"' << formula << '"';
        if (!expected.part) {
            ++values;
            const double general = Inside::CalculateIntern(CString(formula.c_str()), kX, kY, kZ);  // never the short way
            ASSERT_EQ(Result{general}, expected) << '"' << formula << '"';
        }
    }
}

TEST(MathExpression, TakesLongAndDeepFormulas) {
    constexpr int kMillion = 1'000'000, kDeepest = CMathExpression::MAX_NESTING;
    const std::pair<CString, double> rows[] = {
        {Repeated(_T("1+"), kMillion / 2), 500'000},
        {Repeated(_T("-"), kMillion) + _T("1"), 1},
        {CString(_T('9'), kMillion), kInf},
        {_T("0.") + CString(_T('0'), kMillion) + _T("1e1000001"), 1},
        {_T("1e") + CString(_T('9'), kMillion), kInf},
        {CString(_T(' '), kMillion) + _T("7"), 7},
        {Repeated(_T("1^1*100%"), kMillion / 8) + _T("1"), 1},
        {CString(_T('x'), kMillion), 0},
        {CString(_T('('), kDeepest) + _T("2") + CString(_T(')'), kDeepest), 2},
        {Repeated(_T("2^(1*(3-"), kDeepest / 2) + _T("2") + CString(_T(')'), kDeepest), 2},
        {Repeated(_T("-("), kDeepest) + _T("2") + Repeated(_T(")3"), kDeepest), -0.0},
        {Repeated(_T("sin("), kDeepest) + _T("0") + CString(_T(')'), kDeepest), 0},
        {_T("(1)2") + CString(_T('('), kMillion) + CString(_T(')'), kMillion) + _T("3"), 0}};
    for (const auto& [formula, value] : rows) {
        EXPECT_EQ(Evaluate(formula), Result{value}) << Narrow(formula.Left(10));
    }
    for (const int nested : {kDeepest + 1, kMillion / 2}) {
        const CString formula = CString(_T('('), nested) + _T("2") + CString(_T(')'), nested);
        EXPECT_EQ(Evaluate(formula), (Result{0, Narrow(formula)}));
    }
    const CString side = Repeated(_T("(1)"), kMillion / 3);
    EXPECT_EQ(Evaluate(side), (Result{0, Narrow(side.Mid(1, side.GetLength() - 2))}));
}

}  // namespace
