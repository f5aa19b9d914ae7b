// An exception in the log.

#include <kadata/call_stack.h>
#include <kadata/log.h>
#include <kadata/tarvo_exception.h>

#include "log_text.h"
#include "message_texts.h"

namespace {

using log_text::FindUnit;
using Text = std::basic_string<TCHAR>;

// Placeholders of the message would look like directives to whoever formats the text: the first of each number becomes "P1".
void DisarmPlaceholders(Text& text) {
    bool seen[10] = {};
    for (std::size_t at = FindUnit(text, _T('%'), 0); at != Text::npos; at = FindUnit(text, _T('%'), at + 1)) {
        const int digit = at + 1 < text.size() ? text[at + 1] - _T('0') : 0;
        if (digit >= 1 && digit <= 9 && !seen[digit]) {
            seen[digit] = true;
            text[at] = _T('P');
        }
    }
}

}  // namespace

void CTarvoException::WriteExceptionToLogFile(UINT id) {
    WriteToLog(id, CCallStack(1));
}

void CTarvoException::AppendExceptionToLuaErrorList() {}

std::basic_string<TCHAR> CTarvoException::FormatLogText(UINT id, const CCallStack& stack) const {
    const CString message = id == NO_MESSAGE ? CString() : message_texts::Load(id);
    const auto values = afx::MakeFormatArgs(m_szFile, m_uiLine, id, message);
    Text text;
    text.reserve(2 * CLog::MAX_TEXT);
    afx::AppendFormat(text, _T("Filename: %S \r\nLine: %d \r\nStringID: %d\r\nMessageText: %s\r\n"), values.data(),
                      values.size());
    stack.AppendText(text, CLog::MAX_TEXT);  // no frame that the log would tear
    DisarmPlaceholders(text);
    return text;
}

void CTarvoException::WriteToLog(UINT id, const CCallStack& stack) const noexcept {
    const DWORD error = GetLastError();  // the thrower's, who may yet ask for it
    try {
        const CLogError category(CLogError::CATCH);
        if (category.IsEnabled()) {
            CLog::PrintText(category, FormatLogText(id, stack));
        }
    } catch (CException* e) {
        e->Delete();
    } catch (...) {  // a log that cannot be written costs its message, never the exception
    }
    SetLastError(error);
}
