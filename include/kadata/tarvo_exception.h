#pragma once

// The exception for errors that the user is to be told of.
//
//     throw new CTarvoException(IDS_NO_BIRTHDAY, patient.GetName(), __FILE__, __LINE__, CTarvoException::eDefault);
//     ...
//     catch (CTarvoException* e) { e->Display(); e->Delete(); }
//
// Thrown by pointer; the catcher deletes it. Whatever is made is in the log at once, with the stack that it was made on, so an
// error is recorded even if nobody catches it. All texts are string resources of the host, found by AfxFindStringResourceHandle:
//
//   any number   the message of that number
//   21, 1064     the two parts of message 21
//   199, 200     what stands before the file and before the line in the details of an unhandled exception
//   227          the question whether details are wanted
//   228          the head of the details
//   229, 230     hints at what to do: 229 after messages 1058, 1059 and 1062 and unhandled exceptions, 230 after all others
//   346          the end of the details
//
// A message that the host does not have is "Unknown Message ID"; any other text that is missing is empty.
//
// Objects belong to one thread at a time; any number of threads may make them. The last error of the thread survives the making.

#include <afx.h>
#include <kadata/export.h>

#include <string>

class CCallStack;

class KADATA_API CTarvoException : public CException {
    DECLARE_DYNAMIC(CTarvoException)

public:
    // What Display shows.
    enum EDisplayMode {
        eDefault = 0,      // an error box; with details, first a box that asks whether to show them
        eError = 1,        // one box: message and details, with the icon of an error,
        eWarning = 2,      // a warning,
        eInformation = 3,  // an information
        eNothing = 4,
    };
    static constexpr UINT NO_MESSAGE = 0xFFFFFFFF;

    // The file is a text that outlives the exception, normally __FILE__; null for none. It is in the ANSI code page.
    CTarvoException(UINT id, const CString& details);
    // Only for the log: without message number, and shown by nothing.
    explicit CTarvoException(const CString& details);
    // The variant chooses the wording of message 21.
    CTarvoException(int variant, UINT id, const CString& details, const char* file, UINT line);
    CTarvoException(UINT id, const CString& details, const char* file, UINT line, EDisplayMode mode);
    CTarvoException(UINT id, const char* file, UINT line, EDisplayMode mode);
    // Deliberate: a copy is not logged again.
    CTarvoException(const CTarvoException& other);
    CTarvoException& operator=(const CTarvoException&) = delete;

    // GetErrorMessageWithoutDebugInfo, and "\n<file> @ <line>" where there is a file, of which the first 255 characters count.
    // Cut to `size` units with the terminator; with a size of 0 nothing is written. Always TRUE; sets the help context to 0.
    BOOL GetErrorMessage(LPTSTR buffer, UINT size, UINT* helpContext = nullptr) const override;

    // A new copy, owned by the caller.
    virtual CTarvoException* Clone();
    // "No Message Text" without a message number. Message 21 is string 21, a blank, string 1064 and " 1000", or " 2000" for the
    // variant 0; both strings are needed. At most 16,383 units.
    virtual CString GetMessageText();
    virtual CString GetMessageDetails();
    // Shows the exception to the user, in skinned message boxes, and waits until they are closed: for the thread of the user
    // interface. Deliberate: in the default mode message 1059 becomes 1058, for good.
    virtual void Display();

    UINT GetMessageTextID() const { return m_uiMessageID; }
    // Into a buffer, cut and ended as in GetErrorMessage. Always TRUE.
    BOOL GetMessageText(LPTSTR buffer, UINT size) const;
    // The message text and, where there are details, "\n" and these. Deliberate: message 21 ends the other way round here, with
    // " 1000" for the variant 0 and else " 2000".
    CString GetErrorMessageWithoutDebugInfo() const;

    // Kept for the host.
    void SetFatal(BOOL fatal) { m_bFatal = fatal; }
    BOOL IsFatal() const { return m_bFatal; }
    BOOL GetbShowNothing() const { return m_eDisplayMode == eNothing; }

    // The same two boxes for an error that came without an exception object: message `id`, and on demand where it happened. The
    // file may be null.
    static void DisplayUnhandledException(UINT id, const char* file, UINT line);
    // The system's text for an error number, its line break included; empty when it has none.
    static CString GetLastErrorMessage(DWORD error);

    // What shows the boxes: AfxSkinMessageBox until another function is set, and again after null. For programs without
    // windows, and for tests. The style is that of a message box; returns the command of the button. Of the whole process;
    // returns the one before, null for AfxSkinMessageBox.
    using BoxFunction = int (*)(LPCTSTR text, UINT style);
    static BoxFunction SetBoxFunction(BoxFunction show);

protected:
    // Writes an entry of the category CLogError with file, line, number, message and the stack of the caller. Nothing that fails
    // in it gets out.
    void WriteExceptionToLogFile(UINT id);
    // For a later version; does nothing.
    void AppendExceptionToLuaErrorList();
    // "File <folder>\<name>, Line <line>" with the last folder of the file; the whole file where it has no backslash. Empty
    // without a file.
    CString GetFileAndLine();

private:
    void WriteToLog(UINT id, const CCallStack& stack) const noexcept;
    std::basic_string<TCHAR> FormatLogText(UINT id, const CCallStack& stack) const;
    void DisplayWithDetails();

    UINT m_uiMessageID;
    CString m_strDetails;
    UINT m_uiLine = 0;
    const char* m_szFile = nullptr;
    int m_iVariant = 0;
    BOOL m_bFatal = FALSE;
    EDisplayMode m_eDisplayMode = eDefault;
};
