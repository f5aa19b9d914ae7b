#include <kadata/zip.h>

#include <limits>

#include "zip_archive.h"

CZLibWrapper::~CZLibWrapper() {
    delete m_archive;
}

int CZLibWrapper::OpenZipFile(const CString& path) {
    m_archive = kadata::zip::Archive::Open(path).release();
    return m_archive != nullptr;
}

int CZLibWrapper::GetArchiveFileCount() {
    constexpr int NONE = -1;
    const ULONGLONG count = m_archive != nullptr ? m_archive->Count() : kadata::zip::Archive::NO_COUNT;
    return count <= static_cast<ULONGLONG>(std::numeric_limits<int>::max()) ? static_cast<int>(count) : NONE;
}

int CZLibWrapper::GetFirstFile(CString& name, unsigned char** data, DWORD* size) {
    return GetNextFile(name, data, size, 1);
}

int CZLibWrapper::GetNextFile(CString& name, unsigned char** data, DWORD* size, int first) {
    if (data == nullptr || size == nullptr) {
        return 0;
    }
    if (m_archive == nullptr) {
        *data = nullptr;
        return 0;
    }
    if (first != 0) {
        m_archive->GoToFirst();
    } else {
        m_archive->GoToNext();
    }
    CString found;
    const kadata::zip::Entry entry = m_archive->Current(found);
    *data = m_archive->Read(entry).release();
    *size = entry.size;
    name = found;
    return 1;
}

DWORD CZLibWrapper::ExtractFileFromZip(const CString& name, unsigned char** data) {
    if (data == nullptr) {
        return 0;
    }
    if (m_archive == nullptr) {
        *data = nullptr;
        return 0;
    }
    const kadata::zip::Entry* const entry = m_archive->Find(name);
    if (entry == nullptr) {
        return 0;
    }
    *data = m_archive->Read(*entry).release();
    return entry->size;
}
