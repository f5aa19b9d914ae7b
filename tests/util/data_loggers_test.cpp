#include <kadata/data_loggers.h>

#include <thread>

#include "directory_test_support.h"
#include "support/child_process.h"

namespace {

// Opens what hosts reach by deriving.
class OpenLogger : public CMillingUnitDataLogger {
public:
    using CMillingUnitDataLogger::Compare;
    using CMillingUnitDataLogger::SortStringArray;
};

class MachineLog : public testing::Test {
protected:
    ~MachineLog() override { Configure(0, 0); }
    static void Configure(int enabled, int maxFileCount) { CMillingUnitDataLogger::SetLogConfig({enabled, maxFileCount}); }
    CString Write(const std::string& data = "data") const {
        return CMillingUnitDataLogger::WriteToFile(Root(), data.data(), static_cast<DWORD>(data.size()), _T("M1"), 1, 2, 3, 4, -5,
                                                   6);
    }
    CString Root() const { return m_folder.Path().c_str(); }
    CString Place() const { return Root() + _T("\\Tarvo\\machineM1"); }

    const test::TempFolder m_folder;
};

TEST_F(MachineLog, WritesARecordWithTheSixthValueFirst) {
    EXPECT_EQ(Write(), _T(""));
    EXPECT_EQ(test::NamesIn(Root()), "");
    Configure(1, 100);
    EXPECT_EQ(Write(), Place() + _T("\\0000000001.bin"));
    const std::string head("\x02\0\0\0\x06\0\0\0\x01\0\0\0\x02\0\0\0\x03\0\0\0\x04\0\0\0\xFB\xFF\xFF\xFF", 28);
    EXPECT_EQ(m_folder.Read(_T("Tarvo\\machineM1\\0000000001.bin")), head + std::string("\x04\0\0\0data", 8));
    Write(std::string(10000, '\xFF'));
    EXPECT_EQ(m_folder.Read(_T("Tarvo\\machineM1\\0000000002.bin")),
              head + std::string("\x10\x27\0\0", 4) + std::string(10000, '\xFF'));
    EXPECT_EQ(CMillingUnitDataLogger::WriteToFile(Root(), nullptr, 9, _T("M1"), 1, 2, 3, 4, -5, 6),
              Place() + _T("\\0000000003.bin"));
    EXPECT_EQ(m_folder.Read(_T("Tarvo\\machineM1\\0000000003.bin")), head + std::string(4, '\0'));
}

TEST_F(MachineLog, KeepsAsManyFilesAsAreAllowed) {
    const struct {
        int most;
        const char* names;
    } rows[] = {
        {7, "0000000003.bin 0000000004.bin 0000000005.bin 0000000007.bin 0000000009.bin 0000000010.bin note.txt "},
        {6, "0000000003.bin 0000000004.bin 0000000005.bin 0000000007.bin 0000000009.bin 0000000010.bin note.txt "},
        {5, "0000000004.bin 0000000005.bin 0000000007.bin 0000000009.bin 0000000010.bin note.txt "},
        {3, "0000000007.bin 0000000009.bin 0000000010.bin note.txt "},
        {1, "0000000001.bin note.txt "},
        {0, "0000000001.bin note.txt "},
        {-1, "0000000001.bin note.txt "},
    };
    for (const auto& [most, names] : rows) {
        CDirectory::Remove(Root() + _T("\\Tarvo"));
        CDirectory::Make(Place());
        for (const LPCTSTR name : {_T("0000000009.bin"), _T("0000000003.bin"), _T("0000000005.bin"), _T("0000000004.bin"),
                                   _T("0000000007.bin"), _T("note.txt")})
            m_folder.Write(test::Text(_T("Tarvo\\machineM1\\")) + name, "x");
        Configure(1, most);
        Write();
        EXPECT_EQ(test::NamesIn(Place()), names) << most;
    }
}

TEST_F(MachineLog, WhatCannotBeMadeOrWrittenIsLeftOut) {
    Configure(1, 9);
    m_folder.Write(_T("Tarvo"), "a file where the folder should be");
    EXPECT_EQ(Write(), _T(""));
    EXPECT_EQ(CMillingUnitDataLogger::WriteToFile(_T(""), "x", 1, _T("M1"), 1, 2, 3, 4, 5, 6), _T(""));
    DeleteFileW(Root() + _T("\\Tarvo"));
    ASSERT_NE(Write(), _T(""));
    const test::Handle held = test::Exclusive(m_folder.Path(_T("Tarvo\\machineM1\\0000000001.bin")));
    Configure(1, 1);
    EXPECT_EQ(Write(), Place() + _T("\\0000000002.bin"));  // the first one could not be deleted
    EXPECT_EQ(test::NamesIn(Place()), "0000000001.bin 0000000002.bin ");
}

int WriteRecords(const test::ChildArgs& args) {
    CMillingUnitDataLogger::SetLogConfig({1, 1000});
    for (int i = 0; i < 50; ++i)
        CMillingUnitDataLogger::WriteToFile(args[0].c_str(), "12345678", 8, _T("M1"), 1, 2, 3, 4, 5, 6);
    return 0;
}
REGISTER_CHILD(WriteRecords)

TEST_F(MachineLog, TwoProcessesLeaveWholeRecordsOnly) {
    const test::ChildProcess one({_T("WriteRecords"), m_folder.Path()}), other({_T("WriteRecords"), m_folder.Path()});
    ASSERT_EQ(one.Wait(60000), 0U);
    ASSERT_EQ(other.Wait(60000), 0U);
    CStringArray names;
    const int count = CDirectory::ListFiles(Place(), names, _T("*"), 0xFFFFFFFF);
    EXPECT_GE(count, 50);
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(test::ReadBytes((Place() + _T("\\") + names[i]).GetString()).size() % 40, 0U) << test::Narrow(names[i]);
}

TEST_F(MachineLog, SortsByUnits) {
    CStringArray texts;
    for (const LPCTSTR text : {_T("b"), _T("a"), _T("B"), _T(""), _T("a")})
        texts.Add(text);
    OpenLogger::SortStringArray(texts);
    EXPECT_TRUE(texts[0] == _T("") && texts[1] == _T("B") && texts[2] == _T("a") && texts[3] == _T("a") && texts[4] == _T("b"));
    const CString a(_T("a")), b(_T("B"));
    EXPECT_GT(OpenLogger::Compare(&a, &b), 0);
}

class TouchLog : public testing::Test {
protected:
    void Write(int columns = 3, int rows = 2) const {
        KaCLog3DTouch::WriteTouchData(m_folder.Path().c_str(), VALUES, columns, rows);
    }
    std::string Names() const { return test::NamesIn(m_folder.Path().c_str()); }
    static constexpr short VALUES[] = {1, -2, 3, 4, 32767, -32768};
    const test::TempFolder m_folder;
};

TEST_F(TouchLog, IsATableOfTabulatorsInSingleBytes) {
    Write();
    EXPECT_EQ(m_folder.Read(_T("TouchLog_3D_00000.xls")), "1 \t-2 \t3 \t\r\n4 \t32767 \t-32768 \t\r\n");
    Write(1, 1);
    EXPECT_EQ(m_folder.Read(_T("TouchLog_3D_00001.xls")), "1 \t\r\n");
    for (const auto& [columns, rows] : {std::pair(0, 0), std::pair(3, -1), std::pair(-1, 0)})
        Write(columns, rows);
    EXPECT_EQ(m_folder.Read(_T("TouchLog_3D_00004.xls")), "");
    KaCLog3DTouch::WriteTouchData(m_folder.Path().c_str(), nullptr, 3, 2);
    KaCLog3DTouch::WriteTouchData(m_folder.Path(_T("missing")).c_str(), VALUES, 3, 2);
    EXPECT_EQ(Names(),
              "TouchLog_3D_00000.xls TouchLog_3D_00001.xls TouchLog_3D_00002.xls TouchLog_3D_00003.xls TouchLog_3D_00004.xls ");
}

TEST_F(TouchLog, GoesRoundBehind99999AndKeepsFifty) {
    m_folder.Write(_T("TouchLog_3D_99998.xls"), "");
    Write();
    Write();
    EXPECT_EQ(Names(), "TouchLog_3D_00000.xls TouchLog_3D_99998.xls TouchLog_3D_99999.xls ");
    for (int i = 0; i < 47; ++i)
        Write();
    EXPECT_TRUE(m_folder.Has(_T("TouchLog_3D_99998.xls")));
    Write();
    EXPECT_FALSE(m_folder.Has(_T("TouchLog_3D_99998.xls")));
    EXPECT_TRUE(m_folder.Has(_T("TouchLog_3D_99999.xls")) && m_folder.Has(_T("TouchLog_3D_00048.xls")));
}

}  // namespace
