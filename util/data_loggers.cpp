#include <kadata/data_loggers.h>
#include <kadata/directory.h>
#include <shlobj.h>

#include <algorithm>
#include <atomic>
#include <cstdint>

namespace {

constexpr std::int32_t FORMAT_VERSION = 2;
constexpr LPCTSTR DATA_SUFFIX = _T("bin");
constexpr int DATA_DIGITS = 10;

constexpr LPCTSTR TOUCH_PREFIX = _T("TouchLog_3D_");
constexpr LPCTSTR TOUCH_SUFFIX = _T("xls");
constexpr int TOUCH_DIGITS = 5;
constexpr int TOUCH_FILES = 50;

std::atomic<int> g_enabled = 0;
std::atomic<int> g_maxFileCount = 0;

// What a call leaves out when its files fail.
template <class Action>
void Quietly(Action action) {
    try {
        action();
    } catch (CException* e) {
        e->Delete();
    }
}

struct MachineRecord {
    std::int32_t values[6];  // in their order in the file
    const void* data;
    DWORD size;
};

void WriteRecord(const CString& path, const MachineRecord& record) {
    CFile file(path, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite | CFile::shareExclusive);
    file.SeekToEnd();
    CArchive archive(&file, CArchive::store);
    try {
        archive << FORMAT_VERSION;
        for (const std::int32_t value : record.values) {
            archive << value;
        }
        archive << record.size;
        archive.Write(record.data, record.size);
        archive.Close();
        file.Close();
    } catch (CException*) {
        archive.Abort();
        throw;
    }
}

CString TouchLine(const short* values, int columns) {
    CString line, number;
    for (int column = 0; column < columns; ++column) {
        number.Format(_T("%d \t"), static_cast<int>(values[column]));
        line += number;
    }
    return line + _T("\n");
}

}  // namespace

void CMillingUnitDataLogger::SetLogConfig(const SLogConfig& config) {
    g_enabled = config.m_iEnabled;
    g_maxFileCount = config.m_iMaxFileCount;
}

CString CMillingUnitDataLogger::WriteToFile(const void* data, DWORD size, const CString& machineName, int value1, int value2,
                                            int value3, int value4, int value5, int value6) {
    return WriteToFile(CDirectory::GetSpecialDirectory(CSIDL_COMMON_APPDATA), data, size, machineName, value1, value2, value3,
                       value4, value5, value6);
}

CString CMillingUnitDataLogger::WriteToFile(const CString& folder, const void* data, DWORD size, const CString& machineName,
                                            int value1, int value2, int value3, int value4, int value5, int value6) {
    CString path;
    if (g_enabled == 0 || folder.IsEmpty()) {
        return path;
    }
    const MachineRecord record{{value6, value1, value2, value3, value4, value5}, data, data != nullptr ? size : 0};
    Quietly([&] {
        const CString place = CDirectory::Concat(CDirectory::Concat(folder, _T("Tarvo")), _T("machine") + machineName);
        if (CDirectory::Exist(place) == 0) {
            CDirectory::Make(place);
        }
        CheckFileCount(place);
        path = CDirectory::Concat(place, CDirectory::GetNextIndexedFilename(place, _T(""), DATA_DIGITS, DATA_SUFFIX, false));
        WriteRecord(path, record);
    });
    return path;
}

void CMillingUnitDataLogger::CheckFileCount(const CString& folder) {
    CStringArray names;
    constexpr DWORD FILES = ~static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY);
    int left = CDirectory::ListFiles(folder, names, CString(_T("*.")) + DATA_SUFFIX, FILES);
    SortStringArray(names);
    const int most = g_maxFileCount;
    for (int i = 0; left > 0 && left >= most; ++i, --left) {
        DeleteFileW(CDirectory::Concat(folder, names[i]));
    }
}

void CMillingUnitDataLogger::SortStringArray(CStringArray& texts) {
    CString* const first = texts.GetData();
    std::sort(first, first + texts.GetSize(), [](const CString& a, const CString& b) { return Compare(&a, &b) < 0; });
}

int CMillingUnitDataLogger::Compare(const void* a, const void* b) {
    return static_cast<const CString*>(a)->Compare(*static_cast<const CString*>(b));
}

void KaCLog3DTouch::WriteTouchData(const short* values, int columns, int rows) {
    WriteTouchData(CDirectory::Concat(CDirectory::GetExePath(), _T("SERVICE\\LOG-FILES")), values, columns, rows);
}

void KaCLog3DTouch::WriteTouchData(const CString& folder, const short* values, int columns, int rows) {
    if (values == nullptr) {
        return;
    }
    Quietly([&] {
        const CString name = CDirectory::GetNextIndexedFilename(folder, TOUCH_PREFIX, TOUCH_DIGITS, TOUCH_SUFFIX, true);
        CStdioFile file(CDirectory::Concat(folder, name), CFile::modeCreate | CFile::modeWrite | CFile::typeText);
        for (int row = 0; row < rows; ++row) {
            file.WriteString(TouchLine(values + static_cast<std::ptrdiff_t>(row) * std::max(columns, 0), columns));
        }
        file.Close();
        CDirectory::LimitIndexedFiles(TOUCH_FILES, folder, TOUCH_PREFIX, TOUCH_DIGITS, TOUCH_SUFFIX);
    });
}
