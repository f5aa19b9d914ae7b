#include "plain_formula.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <map>
#include <utility>

namespace test {
namespace {

constexpr int NO_LEVEL = 11;

int LevelOf(char c, bool afterOperator) {
    static const std::map<char, int> levels = {{'%', 5}, {'\\', 6}, {'^', 9}, {'*', 8}, {'/', 8}};
    if (c == '+' || c == '-') {
        return afterOperator ? NO_LEVEL : 4;
    }
    const auto found = levels.find(c);
    return found == levels.end() ? NO_LEVEL : found->second;
}

// Where the loosest operator stands, the rightmost of several; npos for none.
std::size_t FindSplit(const std::string& text) {
    int depth = 0, best = NO_LEVEL;
    bool afterOperator = true;
    std::size_t split = std::string::npos;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ' ' || c == '\t') {
            continue;
        }
        const int level = depth == 0 ? LevelOf(c, afterOperator) : NO_LEVEL;
        if (level < NO_LEVEL && level <= best) {
            best = level;
            split = i;
        }
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (depth < 0) {
            throw NotUnderstood{text};
        }
        afterOperator = c == '(' || std::string("*^%+-/\\").find(c) != std::string::npos;
    }
    if (depth > 0) {
        throw NotUnderstood{text};
    }
    return split;
}

double Combine(double a, char op, double b) {
    switch (op) {
        case '+':
            return a + b;
        case '-':
            return a - b;
        case '%':
            return a * (b / 100);
        case '\\':
            return std::floor(a / b);
        case '*':
            return a * b;
        case '/':
            return a / b;
        default:
            return std::pow(a, b);
    }
}

double Call(const std::string& text, std::string name, double argument) {
    using Function = double (*)(double);
    static const std::map<std::string, Function> functions = {
        {"sin", std::sin},   {"cos", std::cos},   {"tan", std::tan},   {"asin", std::asin}, {"acos", std::acos},
        {"atan", std::atan}, {"sinh", std::sinh}, {"cosh", std::cosh}, {"tanh", std::tanh}, {"exp", std::exp},
        {"lg", std::log10},  {"ln", std::log},    {"sqr", std::sqrt}};
    for (char& c : name) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    const auto found = functions.find(name);
    if (found == functions.end()) {
        throw NotUnderstood{text};
    }
    return found->second(argument);
}

// Digits, a point, digits, an exponent; the rest is ignored.
double NumberAt(const std::string& text) {
    const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
    double value = 0;
    if (start != std::string::npos && (std::isdigit(static_cast<unsigned char>(text[start])) || text[start] == '.')) {
        const auto result = std::from_chars(text.data() + start, text.data() + text.size(), value);
        if (result.ec == std::errc::result_out_of_range) {
            value = std::strtod(text.c_str() + start, nullptr);  // an infinity or zero
        }
    }
    return value;
}

}  // namespace

double PlainFormula(std::string text, double x, double y, double z) {
    const auto evaluate = [&](const std::string& part) { return PlainFormula(part, x, y, z); };
    text.erase(0, std::min(text.find_first_not_of(" \t"), text.size()));
    text.erase(text.find_last_not_of(" \t") + 1);
    for (char& c : text) {
        c = c == ',' ? '.' : c;
    }
    if (const std::size_t split = FindSplit(text); split != std::string::npos) {
        const double left = evaluate(text.substr(0, split));
        return Combine(left, text[split], evaluate(text.substr(split + 1)));
    }
    if (text.starts_with('(') && text.ends_with(')')) {
        return evaluate(text.substr(1, text.size() - 2));
    }
    if (text.starts_with('-') || text.starts_with('+')) {
        const double rest = evaluate(text.substr(1));
        return text[0] == '-' ? -rest : rest;
    }
    if (text.size() > 5 && text.ends_with(')')) {
        const std::size_t open = text.find('(');
        const double argument = evaluate(text.substr(open + 1, text.size() - open - 2));
        return Call(text, text.substr(0, open), argument);
    }
    return text == "v1" ? x : text == "v2" ? y : text == "v3" ? z : NumberAt(text);
}

}  // namespace test
