// Formulas: each has the value, or the part that is not understood, of the plainest evaluator.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "../tests/util/plain_formula.h"
#include "../util/formula.h"

namespace {

constexpr std::size_t MAX_UNITS = 1000;  // the plainest evaluator needs the square of it, and a deep stack
constexpr kadata::formula::Variables VARIABLES = {2, -0.5, 1e3};

struct Expected {
    double value = 0;
    std::optional<std::string> part{};
};

Expected EvaluatePlainly(const std::string& formula) {
    try {
        return {test::PlainFormula(formula, VARIABLES.x, VARIABLES.y, VARIABLES.z)};
    } catch (const test::NotUnderstood& error) {
        return {0, error.part};
    }
}

bool IsSame(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

// With points for commas, as the plainest evaluator has it.
std::string Narrow(kadata::formula::TextView text) {
    std::string narrow;
    for (const TCHAR c : text) {
        narrow += c == _T(',') ? '.' : static_cast<char>(c);
    }
    return narrow;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), std::min(size, MAX_UNITS));
    const std::basic_string<TCHAR> formula(data, data + bytes.size());
    const kadata::formula::Outcome outcome = kadata::formula::Evaluate(formula, VARIABLES);
    const Expected expected = EvaluatePlainly(bytes);
    const bool understood = outcome.fault == kadata::formula::Fault::NONE;
    if (understood == expected.part.has_value() || (understood && !IsSame(outcome.value, expected.value)) ||
        (!understood && Narrow(outcome.where) != expected.part)) {
        std::abort();
    }
    const std::optional<kadata::formula::UsualOutcome> usual = kadata::formula::EvaluateUsual(formula, VARIABLES);
    if (usual && (!understood || !IsSame(usual->value, outcome.value))) {
        std::abort();
    }
    return 0;
}
