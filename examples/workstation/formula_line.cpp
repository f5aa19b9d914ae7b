#include "formula_line.h"

#include <kadata/math_expression.h>
#include <kadata/tarvo_exception.h>

#include <algorithm>

#include "console.h"

int EvaluateFormula(const CString& formula, const std::vector<CString>& values) {
    double variables[3] = {};
    const std::size_t count = std::min(values.size(), std::size(variables));
    try {
        for (std::size_t i = 0; i < count; ++i) {
            variables[i] = CMathExpression::Calculate(values[i], 0, 0, 0, 0);
        }
        const double value =
            CMathExpression::Calculate(formula, static_cast<int>(count), variables[0], variables[1], variables[2]);
        CString line;
        line.Format(_T("%s = %.12g"), static_cast<LPCTSTR>(formula), value);
        PrintLine(line);
        return 0;
    } catch (CTarvoException* exception) {
        CString text = exception->GetErrorMessageWithoutDebugInfo();
        exception->Delete();
        text.Replace(_T('\n'), _T(' '));
        PrintError(text);
        return 1;
    }
}
