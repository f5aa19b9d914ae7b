// Formulas, parsed and evaluated each time by other libraries.

#include <benchmark/benchmark.h>
#include <matheval.h>
#include <muParser.h>

#include <string>

#include "formula_texts.h"

namespace {

// The parser with its functions is made once.
void MuParserFormula(benchmark::State& state) {
    const std::string formula = FORMULAS[state.range(0)];
    double x = FORMULA_X, y = FORMULA_Y, z = FORMULA_Z;
    mu::Parser parser;
    parser.DefineVar("v1", &x);
    parser.DefineVar("v2", &y);
    parser.DefineVar("v3", &z);
    for (auto _ : state) {
        parser.SetExpr(formula);
        benchmark::DoNotOptimize(parser.Eval());
    }
}

void MathEvalFormula(benchmark::State& state) {
    std::string formula = FORMULAS[state.range(0)];
    std::string names[] = {"v1", "v2", "v3"};
    char* name_list[] = {names[0].data(), names[1].data(), names[2].data()};
    double values[] = {FORMULA_X, FORMULA_Y, FORMULA_Z};
    for (auto _ : state) {
        void* const evaluator = evaluator_create(formula.data());
        benchmark::DoNotOptimize(evaluator_evaluate(evaluator, 3, name_list, values));
        evaluator_destroy(evaluator);
    }
}

BENCHMARK(MuParserFormula)->Name("formula/muparser/typed")->DenseRange(0, 3);
BENCHMARK(MathEvalFormula)->Name("formula/matheval/typed")->DenseRange(0, 3);

}  // namespace
