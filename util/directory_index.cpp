// Numbered items: files and directories that are kept to a number.

#include <afxtempl.h>
#include <kadata/directory.h>

#include <algorithm>

#include "directory_support.h"

using namespace kadata::directory;

namespace {

constexpr DWORD kEveryAttribute = 0xFFFFFFFF;
constexpr int kMostDigits = 18;  // a ring of more is as good as endless

using IndexList = CArray<int, int>;

LONGLONG RingSize(int digits) {
    LONGLONG size = 1;
    for (int i = 0; i < std::min(digits, kMostDigits); ++i)
        size *= 10;
    return size;
}

CString DottedSuffix(const CString& suffix) {
    return suffix.IsEmpty() ? suffix : _T('.') + suffix;
}

CString ItemName(const CString& prefix, int digits, LONGLONG index, const CString& suffix) {
    CString name;
    name.Format(_T("%s%0*I64d%s"), prefix.GetString(), digits, index, DottedSuffix(suffix).GetString());
    return name;
}

int ParseIndex(const CString& name, const CString& prefix, int digits, const CString& dottedSuffix) {
    // Deliberate: a name of another length has the index 0 and takes part like any other.
    if (name.GetLength() != static_cast<LONGLONG>(prefix.GetLength()) + digits + dottedSuffix.GetLength())
        return 0;
    // Deliberate: the prefix and the suffix are taken off as sets of characters, digits in them included.
    CString number = name;
    number.TrimLeft(prefix);
    number.TrimRight(dottedSuffix);
    // Deliberate: the number may have a sign.
    return _wtoi(number);
}

// Ascending.
void ListIndices(bool directories, const CString& dir, const CString& prefix, int digits, const CString& suffix,
                 IndexList& indices) {
    // Deliberate: all attributes, so a directory counts among files too.
    const CString pattern = suffix.IsEmpty() ? CString(_T("*.*")) : _T("*.") + suffix;
    CStringArray names;
    CDirectory::ListFiles(dir, names, pattern, directories ? FILE_ATTRIBUTE_DIRECTORY : kEveryAttribute);
    const CString dottedSuffix = DottedSuffix(suffix);
    indices.SetSize(names.GetSize());
    for (int i = 0; i < static_cast<int>(names.GetSize()); ++i)
        indices[i] = ParseIndex(names[i], prefix, digits, dottedSuffix);
    std::sort(indices.GetData(), indices.GetData() + indices.GetSize(), CIntComparer());
}

// The first i for which the sorted list has no index i.
LONGLONG LowestFreeIndex(const IndexList& sorted) {
    int i = 0;
    while (sorted[i] <= i)
        ++i;
    return i;
}

// Where the oldest item is in the sorted list: behind the first gap of a ring that has gone over its end, else at the begin.
int FindOldest(const IndexList& sorted) {
    for (int i = 0; i + 1 < static_cast<int>(sorted.GetSize()); ++i) {
        if (static_cast<LONGLONG>(sorted[i]) + 1 < sorted[i + 1])
            return i + 1;
    }
    return 0;
}

void DeleteItem(bool directory, const CString& path) {
    if (directory)
        CDirectory::Remove(path);
    else
        DeleteFileW(path);
}

}  // namespace

bool CIntComparer::operator()(int left, int right) const {
    return left < right;
}

int CDirectory::ParseFileIndex(const CString& name, const CString& prefix, int digits, const CString& dottedSuffix) {
    return ParseIndex(name, prefix, digits, dottedSuffix);
}

CString CDirectory::GetNextIndexedItem(bool directories, const CString& dir, const CString& prefix, int digits,
                                       const CString& suffix, bool wrap) {
    IndexList sorted;
    ListIndices(directories, dir, prefix, digits, suffix, sorted);
    const int count = static_cast<int>(sorted.GetSize());
    const LONGLONG ringSize = RingSize(digits);
    const LONGLONG beforeFirst = wrap ? -1 : 0;
    LONGLONG next = (count == 0 ? beforeFirst : sorted[count - 1]) + 1;
    const bool ringHasRoom = count < ringSize - 1;
    if (wrap && ringHasRoom && count > 0 && next == ringSize)
        next = LowestFreeIndex(sorted);
    return ItemName(prefix, digits, next, suffix);
}

void CDirectory::LimitIndexedItems(bool directories, int maxCount, const CString& dir, const CString& prefix, int digits,
                                   const CString& suffix) {
    maxCount = std::max(maxCount, 0);
    if (maxCount >= RingSize(digits) - 1)
        return;
    IndexList sorted;
    ListIndices(directories, dir, prefix, digits, suffix, sorted);
    const int count = static_cast<int>(sorted.GetSize());
    const int oldest = FindOldest(sorted);
    for (int i = 0; i < count - maxCount; ++i)
        DeleteItem(directories, Concat(dir, ItemName(prefix, digits, sorted[(oldest + i) % count], suffix)));
}

void CDirectory::LimitIndexedFiles(int maxCount, const CString& dir, const CString& prefix, int digits, const CString& suffix) {
    LimitIndexedItems(false, maxCount, dir, prefix, digits, suffix);
}

CString CDirectory::GetNextIndexedFilename(const CString& dir, const CString& prefix, int digits, const CString& suffix,
                                           bool wrap) {
    return GetNextIndexedItem(false, dir, prefix, digits, suffix, wrap);
}

CString CDirectory::MakeNextIndexedLimitedDirectory(const CString& dir, int maxCount, const CString& prefix, int digits,
                                                    const CString& suffix) {
    const CString path = Concat(dir, GetNextIndexedItem(true, dir, prefix, digits, suffix, true));
    Make(path);
    LimitIndexedItems(true, maxCount, dir, prefix, digits, suffix);
    return path;
}
