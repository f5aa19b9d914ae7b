#include <afx.h>
#include <gtest/gtest.h>

#include <utility>

#include "expect.h"

namespace {

TEST(Exception, TranslatesTheSystemsErrors) {
    const DWORD rows[][2] = {{ERROR_INVALID_FUNCTION, 1},    {ERROR_FILE_NOT_FOUND, 2}, {ERROR_INVALID_NAME, 3},
                             {ERROR_TOO_MANY_OPEN_FILES, 4}, {ERROR_WRITE_PROTECT, 5},  {ERROR_CURRENT_DIRECTORY, 7},
                             {ERROR_NEGATIVE_SEEK, 9},       {ERROR_NOT_READY, 10},     {ERROR_SHARING_VIOLATION, 11},
                             {ERROR_LOCK_VIOLATION, 12},     {ERROR_DISK_FULL, 13},     {ERROR_HANDLE_EOF, 14}};
    for (const auto& [number, cause] : rows) {
        SCOPED_TRACE(number);
        const LONG error = static_cast<LONG>(number);
        CString file;
        EXPECT_EQ(test::FileCause([error] { CFileException::ThrowOsError(error, _T("file")); }, &file), static_cast<int>(cause));
        EXPECT_EQ(file, _T("file"));
    }
    CFileException::ThrowOsError(ERROR_SUCCESS);  // no error, no exception
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_SUCCESS), CFileException::none);
}

TEST(Exception, TellsAMessageThatFitsItsRoom) {
    TCHAR text[32] = {};
    UINT help = 7;
    const CFileException file(CFileException::fileNotFound, 2, _T("C:\\a.b"));
    EXPECT_TRUE(file.GetErrorMessage(text, 32, &help) && help == 0 && text == CString(_T("C:\\a.b: file not found.")));
    EXPECT_FALSE(file.GetErrorMessage(text, 0));
    EXPECT_TRUE(CArchiveException(CArchiveException::badSchema, _T("50%s.kda")).GetErrorMessage(text, 32));
    EXPECT_EQ(CString(text), _T("50%s.kda: the archive comes fro"));
    EXPECT_TRUE(!CException().GetErrorMessage(text, 32) && text[0] == 0);
}

TEST(Exception, IsCaughtByItsBaseAndDeletedByTheCatcher) {
    struct CCounted : CException {
        explicit CCounted(int& deleted) : m_deleted(deleted) {}
        ~CCounted() override { ++m_deleted; }
        int& m_deleted;
    };
    int deleted = 0;
    try {
        throw new CCounted(deleted);
    } catch (CException* e) {
        EXPECT_EQ(deleted, 0);
        e->Delete();
    }
    EXPECT_EQ(deleted, 1);
}

TEST(Exception, OfASimpleKindIsSharedAndOutlivesItsCatchers) {
    const std::pair<void (*)(), CRuntimeClass*> rows[] = {
        {&AfxThrowMemoryException, RUNTIME_CLASS(CMemoryException)},
        {&AfxThrowResourceException, RUNTIME_CLASS(CResourceException)},
        {&AfxThrowInvalidArgException, RUNTIME_CLASS(CInvalidArgException)},
        {&AfxThrowNotSupportedException, RUNTIME_CLASS(CNotSupportedException)}};
    for (const auto& [raise, kind] : rows) {
        const CException* caught[2] = {};
        for (const CException*& slot : caught) {
            try {
                raise();
            } catch (CException* e) {
                TCHAR text[80];
                EXPECT_TRUE(e->GetErrorMessage(text, 80));
                EXPECT_EQ(e->GetRuntimeClass(), kind);
                slot = e;
                e->Delete();
            }
        }
        EXPECT_NE(caught[0], nullptr);
        EXPECT_EQ(caught[0], caught[1]);
    }
}

}  // namespace
