#include <kadata/archive.h>

#include <algorithm>
#include <utility>

namespace {

constexpr DWORD NOBODY_ELSE = 0;

HANDLE OpenFile(const CString& path, DWORD access, DWORD disposition) {
    HANDLE const file = CreateFileW(path, access, NOBODY_ELSE, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), path);
    }
    return file;
}

void CloseFile(HANDLE& file) {
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(std::exchange(file, INVALID_HANDLE_VALUE));
    }
}

}  // namespace

KaCArchiveFileWriter::KaCArchiveFileWriter(unsigned int bufferSize) : m_bufferSize(bufferSize) {}

KaCArchiveFileWriter::KaCArchiveFileWriter(const CString& path, unsigned int bufferSize) : m_bufferSize(bufferSize) {
    Open(path);
}

KaCArchiveFileWriter::~KaCArchiveFileWriter() {
    Close();
}

void KaCArchiveFileWriter::Open(const CString& path) {
    Close();
    m_file = OpenFile(path, GENERIC_WRITE, CREATE_ALWAYS);
    m_path = path;
}

void KaCArchiveFileWriter::Close() {
    CloseFile(m_file);
}

void KaCArchiveFileWriter::Write(const unsigned char* data, unsigned int size, unsigned int) {
    DWORD written = 0;
    SetLastError(ERROR_SUCCESS);
    if (!WriteFile(m_file, data, size, &written, nullptr) || written != size) {
        const DWORD error = GetLastError();
        // Some devices take only a part and give no reason.
        CFileException::ThrowOsError(static_cast<LONG>(error != ERROR_SUCCESS ? error : ERROR_DISK_FULL));
    }
}

KaCArchiveFileReader::KaCArchiveFileReader(unsigned int bufferSize) : m_bufferSize(bufferSize), m_fileSize(INVALID_FILE_SIZE) {}

KaCArchiveFileReader::KaCArchiveFileReader(const CString& path, unsigned int bufferSize)
    : m_file(OpenFile(path, GENERIC_READ, OPEN_EXISTING)), m_fileSize(GetFileSize(m_file, nullptr)) {
    m_bufferSize = std::min(m_fileSize, bufferSize);
}

KaCArchiveFileReader::~KaCArchiveFileReader() {
    Close();
}

void KaCArchiveFileReader::Open(const CString& path) {
    Close();
    m_file = OpenFile(path, GENERIC_READ, OPEN_EXISTING);
}

void KaCArchiveFileReader::Close() {
    CloseFile(m_file);
}

unsigned int KaCArchiveFileReader::Read(unsigned char* buffer, unsigned int size) {
    const DWORD wanted = std::min(size, m_fileSize - m_bytesRead);
    DWORD read = 0;
    if (!ReadFile(m_file, buffer, wanted, &read, nullptr)) {
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()));
    }
    m_bytesRead += read;  // fewer than wanted: the file ends before
    return read;
}
