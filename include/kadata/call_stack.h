#pragma once

// The functions that a thread was in, for reports of errors.
//
// To remember a stack costs about a microsecond (a fifth of one a frame) and 520 bytes, no memory from the heap and no lock, so
// it may be done wherever an error is met. To name it later costs far more where an address is named for the first time: symbol
// tables and debug information are read then, which takes milliseconds, for the first stack of a process tens of them.
//
// Names come from "dbghelp.dll", which is loaded at the first GetText; on Linux the platform layer serves it
// (<platform/win32/dbghelp.h> tells what it reads). A program without debug information has addresses in place of files and
// lines, a stripped one in place of function names, too.

#include <afx.h>
#include <kadata/export.h>

#include <limits>
#include <string>

// The stack of the thread that makes the object. A value: it may be copied, and named by any thread.
class KADATA_API CCallStack {
public:
    static constexpr DWORD MAX_FRAMES = 64;  // those further out are left out

    // The first frame is the function that makes the object; `skip` leaves out so many more. Not for signal handlers.
    explicit CCallStack(DWORD skip = 0) noexcept;

    DWORD GetCount() const noexcept { return m_dwCount; }
    // The return address of a frame, 0 being the innermost; null from GetCount() on.
    const void* GetFrame(DWORD index) const noexcept;

    // One line a frame, each with "\r\n" at its end:
    //     <file> (<line>): <function>
    //     0x<16 digits> (File and line number not available): <function>      the return address
    // where the function may be "(Function name unavailable)". What called main() is left out. "(No stack trace availabe)" for a
    // stack without frames.
    // Longer than `most` it never becomes: what does not fit are the outer frames. The modules should still be loaded: an address
    // of one that is not may get the name of what lies there now, or lay there before. Any thread; takes one lock of the process,
    // under which names are looked up. Throws nothing but std::bad_alloc.
    CString GetText(int most = std::numeric_limits<int>::max()) const;

private:
    friend class CTarvoException;
    // As much as fits until the text is `size` long.
    void AppendText(std::basic_string<TCHAR>& text, std::size_t size) const;

    DWORD m_dwCount = 0;
    void* m_pFrames[MAX_FRAMES] = {};
};
