#pragma once

// Formulas of one line that people type: "(v1+1,5)*sin(v2)".

#include <afx.h>
#include <kadata/export.h>

// Static functions only; any thread may call any of them.
//
// From the loosest to the tightest:
//   a + b  a - b
//   a % b              percent: a * (b / 100). Deliberate: looser than all below, so that 2*50%10 is 10
//   a \ b              integer division: floor(a / b)
//   a * b  a / b
//   a ^ b              power
//   -a  +a             signs. Deliberate: tighter than the power, so that -2^2 is 4
// Operators of one line are taken from left to right, the power too: 2^3^2 is 64. A + or - is a sign at the begin, behind an
// operator and behind "(". Deliberate: an exponent has no sign, 1e-3 is 1 minus 3.
//
// Operands are formulas in brackets; functions of one formula in brackets; v1, v2 and v3, which are x, y and z; and decimal
// numbers. A comma is a decimal point. Spaces and tabs count nowhere but inside of operands.
//   sin cos tan asin acos atan sinh cosh tanh   in radians; exp; ln; lg, to base 10; sqr, the square root
// Names of functions are written in small or capital letters (A to Z), and directly before their bracket.
//
// What is none of these is the number at its begin ("12 mm" is 12), else 0 (an operand that is missing, a word, v4 to v9).
// Deliberate: of a call with its brackets of five characters or fewer only that is left, so that ln(5) is 0 and ln( 5) is not.
// Dividing by zero and functions where they have no value give an infinity or none (NaN), as the C functions do.
class KADATA_API CMathExpression {
public:
    // Brackets in brackets in brackets, at most.
    static constexpr int MAX_NESTING = 100'000;

    // The value of the formula; -1 when it has a variable with a number above `numberOfVariables` (v4 to v9 count), whatever else
    // is wrong with it. The time grows as the text does, and the stack does not. Out of memory is std::bad_alloc.
    //
    // Throws a CTarvoException (by pointer; the catcher deletes it) with the message number 243 and the part that is not
    // understood as its details, with points for commas and without blanks around it: the whole formula where brackets do not
    // match or are nested too deep; a call of an unknown function; what is between the first "(" and the last ")" of brackets
    // that stand side by side. Of several that is the leftmost, but a function's argument comes before its name.
    static double Calculate(const CString& expression, int numberOfVariables, double x, double y, double z);

protected:
    // As Calculate, whatever the variables.
    static double CalculateIntern(const CString& expression, double x, double y, double z);
    // The largest digit, 1 to 9, that stands behind a "v" somewhere in the text; 0 without one.
    static int CountVars(const CString& expression);
    // Non-zero for * ^ % + - / and backslash.
    static int IsOperator(TCHAR c);
};
