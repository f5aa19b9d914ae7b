// Formulas that people type, parsed and evaluated each time.

#include <benchmark/benchmark.h>
#include <kadata/math_expression.h>

#include "formula_texts.h"
#include "plain_formula.h"

namespace {

const char* FormulaOf(const benchmark::State& state) {
    return FORMULAS[state.range(0)];
}

void KaDataFormula(benchmark::State& state) {
    const CString formula(FormulaOf(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(CMathExpression::Calculate(formula, 3, FORMULA_X, FORMULA_Y, FORMULA_Z));
    }
}

void PlainFormula(benchmark::State& state) {
    const CString formula(FormulaOf(state));
    if (PlainFormulaValue(formula, FORMULA_X, FORMULA_Y, FORMULA_Z) !=
        CMathExpression::Calculate(formula, 3, FORMULA_X, FORMULA_Y, FORMULA_Z)) {
        state.SkipWithError("another value");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(PlainFormulaValue(formula, FORMULA_X, FORMULA_Y, FORMULA_Z));
    }
}

// Argument: the number of the formula.
BENCHMARK(KaDataFormula)->Name("formula/kadata/typed")->DenseRange(0, 3);
BENCHMARK(PlainFormula)->Name("formula/plain/typed")->DenseRange(0, 3);

}  // namespace
