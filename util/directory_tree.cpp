// Trees: making and removing them.

#include <kadata/directory.h>

#include "directory_support.h"
#include "tree_remover.h"

using namespace kadata::directory;

namespace {

constexpr int kShortestSharePath = 6;
constexpr TextView kShareMark = _T("\\\\");

// A drive without medium must not stop the program with a question while this lives.
class QuietErrorMode {
public:
    QuietErrorMode() : m_before(SetErrorMode(SEM_FAILCRITICALERRORS)) {}
    QuietErrorMode(const QuietErrorMode&) = delete;
    QuietErrorMode& operator=(const QuietErrorMode&) = delete;
    ~QuietErrorMode() { SetErrorMode(m_before); }

private:
    const UINT m_before;
};

// Length of "\\server\share\", which nobody can create here; 0 for another path.
int ShareLength(const CString& path) {
    if (path.GetLength() < kShortestSharePath || !View(path).starts_with(kShareMark))
        return 0;
    const int server = path.Find(kSeparator, static_cast<int>(kShareMark.size()));
    const int share = server < 0 ? -1 : path.Find(kSeparator, server + 1);
    return share < 0 ? path.GetLength() : share + 1;
}

void MakeOne(const CString& path) {
    if (CDirectory::Exist(path) || CreateDirectoryW(path, nullptr))
        return;
    const DWORD error = GetLastError();
    if (error == ERROR_ALREADY_EXISTS && CDirectory::Exist(path))
        return;  // another one was quicker
    SetLastError(error);
    ThrowAccessDenied(path);
}

// In every spelling: "C:", "C:\", "\", "C:\x\..".
bool IsDriveRoot(const CString& path) {
    constexpr TextView kPrefixes[] = {_T("\\\\?\\"), _T("\\\\.\\")};
    const CString full = CDirectory::FullPath(path);
    TextView rest = View(full);
    if (rest.starts_with(kPrefixes[0]) || rest.starts_with(kPrefixes[1]))
        rest.remove_prefix(kPrefixes[0].size());
    return rest.size() == 3 && rest[1] == _T(':');
}

}  // namespace

int CDirectory::Make(CString path) {
    const QuietErrorMode quiet;
    path = WithoutSeparator(path);
    for (int i = ShareLength(path) + 1; i < path.GetLength() - 1; ++i) {
        if (path[i] == kSeparator && path[i - 1] != _T(':'))
            MakeOne(path.Left(i));
    }
    MakeOne(path);
    return 1;
}

int CDirectory::Remove(CString path) {
    const CString root = WithSeparator(path);
    if (path.IsEmpty() || IsDriveRoot(root)) {
        SetLastError(ERROR_ACCESS_DENIED);
        ThrowAccessDenied(path);
    }
    return TreeRemover(root).Run();
}
