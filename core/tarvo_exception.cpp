#include <kadata/call_stack.h>
#include <kadata/tarvo_exception.h>

#include <memory>

#include "message_texts.h"

IMPLEMENT_DYNAMIC(CTarvoException, CException)

namespace {

constexpr UINT kMessageSize = 16384;  // of GetMessageText, terminator included
constexpr UINT kFileSize = 256;       // of the file name in GetErrorMessage, likewise

struct FreeLocal {
    void operator()(TCHAR* text) const { LocalFree(text); }
};

}  // namespace

// Each constructor makes the stack itself, so that it begins with whoever makes the exception.

CTarvoException::CTarvoException(UINT id, const CString& details) : m_uiMessageID(id), m_strDetails(details) {
    WriteToLog(id, CCallStack(1));
}

CTarvoException::CTarvoException(const CString& details)
    : m_uiMessageID(NO_MESSAGE), m_strDetails(details), m_eDisplayMode(eNothing) {
    WriteToLog(m_uiMessageID, CCallStack(1));
}

CTarvoException::CTarvoException(int variant, UINT id, const CString& details, const char* file, UINT line)
    : m_uiMessageID(id), m_strDetails(details), m_uiLine(line), m_szFile(file), m_iVariant(variant) {
    WriteToLog(id, CCallStack(1));
}

CTarvoException::CTarvoException(UINT id, const CString& details, const char* file, UINT line, EDisplayMode mode)
    : m_uiMessageID(id), m_strDetails(details), m_uiLine(line), m_szFile(file), m_eDisplayMode(mode) {
    WriteToLog(id, CCallStack(1));
}

CTarvoException::CTarvoException(UINT id, const char* file, UINT line, EDisplayMode mode)
    : m_uiMessageID(id), m_uiLine(line), m_szFile(file), m_eDisplayMode(mode) {
    WriteToLog(id, CCallStack(1));
}

CTarvoException::CTarvoException(const CTarvoException& other)
    : CException(),
      m_uiMessageID(other.m_uiMessageID),
      m_strDetails(other.m_strDetails),
      m_uiLine(other.m_uiLine),
      m_szFile(other.m_szFile),
      m_iVariant(other.m_iVariant),
      m_bFatal(other.m_bFatal),
      m_eDisplayMode(other.m_eDisplayMode) {}

CTarvoException* CTarvoException::Clone() {
    return new CTarvoException(*this);
}

BOOL CTarvoException::GetMessageText(LPTSTR buffer, UINT size) const {
    message_texts::Copy(message_texts::Resolve(m_uiMessageID, m_iVariant != 0 ? _T(" 1000") : _T(" 2000")), buffer, size);
    return TRUE;
}

CString CTarvoException::GetMessageText() {
    CString text;
    GetMessageText(text.GetBuffer(kMessageSize - 1), kMessageSize);
    text.ReleaseBuffer();
    return text;
}

CString CTarvoException::GetMessageDetails() {
    return m_strDetails;
}

CString CTarvoException::GetErrorMessageWithoutDebugInfo() const {
    CString text = message_texts::Resolve(m_uiMessageID, m_iVariant != 0 ? _T(" 2000") : _T(" 1000"));
    if (!m_strDetails.IsEmpty()) {
        text += _T("\n") + m_strDetails;
    }
    return text;
}

BOOL CTarvoException::GetErrorMessage(LPTSTR buffer, UINT size, UINT* helpContext) const {
    if (helpContext != nullptr) {
        *helpContext = 0;
    }
    CString text = GetErrorMessageWithoutDebugInfo();
    if (m_szFile != nullptr) {
        text.AppendFormat(_T("\n%s @ %u"), message_texts::Cut(CString(m_szFile), kFileSize), m_uiLine);
    }
    message_texts::Copy(text, buffer, size);
    return TRUE;
}

CString CTarvoException::GetFileAndLine() {
    if (m_szFile == nullptr) {
        return CString();
    }
    const CString file(m_szFile);
    const int name = file.ReverseFind(_T('\\'));
    const int folder = file.Left(name).ReverseFind(_T('\\'));  // -1: the folder begins with the text
    CString text;
    text.Format(_T("File %s, Line %u"), name < 0 ? file : file.Mid(folder + 1), m_uiLine);
    return text;
}

CString CTarvoException::GetLastErrorMessage(DWORD error) {
    TCHAR* block = nullptr;
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                       error, 0, reinterpret_cast<LPTSTR>(&block), 0, nullptr);
    const std::unique_ptr<TCHAR, FreeLocal> owned(length != 0 ? block : nullptr);
    return CString(owned.get(), static_cast<int>(length));
}
