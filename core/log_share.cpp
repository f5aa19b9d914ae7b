#include "log_share.h"

namespace {

constexpr TCHAR kMutexName[] = _T("MUTEX_TARVO_LOGFILE");
constexpr DWORD kMutexWait = 1000;  // milliseconds

// A number for the folder that is the same in every process, however its path was written. 0 when it cannot be asked.
ULONGLONG IdentityOf(const CString& folder, DWORD& volume) {
    const HANDLE handle = CreateFileW(folder, FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return 0;
    }
    BY_HANDLE_FILE_INFORMATION information = {};
    const BOOL known = GetFileInformationByHandle(handle, &information);
    CloseHandle(handle);
    volume = information.dwVolumeSerialNumber;
    return known ? (static_cast<ULONGLONG>(information.nFileIndexHigh) << 32) | information.nFileIndexLow : 0;
}

}  // namespace

CLogShare::~CLogShare() {
    Detach();
    if (m_hMutex != nullptr) {
        CloseHandle(m_hMutex);
    }
}

void CLogShare::Enter() {
    if (m_hMutex == nullptr) {
        m_hMutex = CreateMutexW(nullptr, FALSE, kMutexName);
    }
    const DWORD result = m_hMutex == nullptr ? WAIT_FAILED : WaitForSingleObject(m_hMutex, kMutexWait);
    m_bHeld = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
    if (result == WAIT_ABANDONED) {
        ForgetAfterCrash();
    }
}

void CLogShare::Leave() {
    if (m_bHeld) {
        m_bHeld = false;
        ReleaseMutex(m_hMutex);
    }
}

void CLogShare::Attach(const CString& folder) {
    DWORD volume = 0;
    const ULONGLONG identity = IdentityOf(folder, volume);
    if (m_pState != nullptr && identity == m_ullFolder) {
        return;
    }
    Detach();
    if (identity == 0) {
        return;
    }
    CString name;
    name.Format(_T("KADATA_LOGFILE_%08X_%016I64X"), volume, identity);
    m_hMapping = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(SState), name);
    if (m_hMapping != nullptr) {
        m_pState = static_cast<SState*>(MapViewOfFile(m_hMapping, FILE_MAP_WRITE, 0, 0, sizeof(SState)));
        m_ullFolder = identity;
    }
}

CLogShare::SState* CLogShare::State() const {
    return m_bHeld ? m_pState : nullptr;
}

void CLogShare::Detach() {
    if (m_pState != nullptr) {
        UnmapViewOfFile(m_pState);
        m_pState = nullptr;
    }
    if (m_hMapping != nullptr) {
        CloseHandle(m_hMapping);
        m_hMapping = nullptr;
    }
}

// A process died while it wrote: what it left in the memory may be half of the truth, so everybody looks at the disk again.
void CLogShare::ForgetAfterCrash() {
    if (SState* const state = State()) {
        ++state->dwGeneration;
        state->dwNumber = NO_NUMBER;
        state->dwTorn = TRUE;
    }
}
