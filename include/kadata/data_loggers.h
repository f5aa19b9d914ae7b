#pragma once

// Two loggers that put one numbered file for each call into a folder and keep the number of files limited: blocks of data of a
// machine, and tables of touch measurements.
//
// Static functions only. No failure is told: a file that cannot be made, written or deleted is left out, or cut. Threads and
// processes that write at the same time may meet at one number: a record of a machine is then left out, or appended to the
// other's file; of two tables one stays.

#include <afx.h>
#include <afxcoll.h>
#include <kadata/export.h>

class KADATA_API CMillingUnitDataLogger {
public:
    struct SLogConfig {
        int m_iEnabled;       // 0: nothing is written
        int m_iMaxFileCount;  // files that are in the folder after a call; 1 is the least, smaller numbers count as 1
    };

    // Of the whole process; disabled before the first call. Any thread may call it at any time.
    static void SetLogConfig(const SLogConfig& config);

    // Writes a record of `size` bytes of data as the next file of the folder "Tarvo\machineNAME" in the system's folder for the
    // data of all users. The folder is made when it is missing; its files are 0000000001.bin and so on. Before, the files whose
    // names come first are deleted until there is room. Returns the file's path, also when it could not be written, or not whole;
    // empty when nothing is to be written or there is no folder.
    //
    //   offset  size  all integers little-endian
    //   0       4     version of the format, 2
    //   4       4     `value6`: deliberate, it comes before the others
    //   8       20    `value1` to `value5`
    //   28      4     n, the size of the data in bytes
    //   32      n     the data
    static CString WriteToFile(const void* data, DWORD size, const CString& machineName, int value1, int value2, int value3,
                               int value4, int value5, int value6);
    // The same, in `folder` in place of the one for all users.
    static CString WriteToFile(const CString& folder, const void* data, DWORD size, const CString& machineName, int value1,
                               int value2, int value3, int value4, int value5, int value6);

protected:
    // Makes room for one more file.
    static void CheckFileCount(const CString& folder);
    // By units, case included.
    static void SortStringArray(CStringArray& texts);
    // Of two CStrings: less than, equal to or greater than 0.
    static int Compare(const void* a, const void* b);
};

class KADATA_API KaCLog3DTouch {
public:
    // Writes a table as the next file of "SERVICE\LOG-FILES" in the program's folder, where that is there: TouchLog_3D_00000.xls
    // and so on; behind 99999 the lowest free number follows. Of these files the newest 50 are kept.
    //
    // The value of a row and a column is `values`[row x columns + column]. The file has a line (CR LF) for each row, and in it a
    // number, a blank and a tabulator for each value, in single bytes.
    static void WriteTouchData(const short* values, int columns, int rows);
    // The same, in `folder` in place of the one of the program.
    static void WriteTouchData(const CString& folder, const short* values, int columns, int rows);
};
