#include <afx.h>
#include <afxmt.h>
#include <gtest/gtest.h>

#include <thread>

#include "support/temp_folder.h"

class CTestBase : public CObject {
    DECLARE_DYNAMIC(CTestBase)
};
IMPLEMENT_DYNAMIC(CTestBase, CObject)

class CTestLeaf : public CTestBase {
    DECLARE_DYNCREATE(CTestLeaf)
};
IMPLEMENT_DYNCREATE(CTestLeaf, CTestBase)

class CTestStored : public CTestBase {
    DECLARE_SERIAL(CTestStored)
};
IMPLEMENT_SERIAL(CTestStored, CTestBase, 3)

namespace {

TEST(Object, KnowsItsClassAtRunTime) {
    const std::unique_ptr<CObject> leaf(RUNTIME_CLASS(CTestLeaf)->CreateObject());
    ASSERT_NE(leaf, nullptr);
    EXPECT_STREQ(leaf->GetRuntimeClass()->m_lpszClassName, "CTestLeaf");
    EXPECT_TRUE(leaf->IsKindOf(RUNTIME_CLASS(CTestBase)));
    EXPECT_TRUE(leaf->IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(leaf->IsKindOf(RUNTIME_CLASS(CTestStored)));
    EXPECT_FALSE(leaf->IsSerializable());
    EXPECT_TRUE(CTestStored().IsSerializable());
    EXPECT_EQ(RUNTIME_CLASS(CTestBase)->CreateObject(), nullptr);
    EXPECT_EQ(RUNTIME_CLASS(CTestStored)->m_wSchema, 3U);
    CDumpContext dump;
    leaf->Dump(dump);
    EXPECT_EQ(dump.GetText(), _T("CTestLeaf"));
}

TEST(Exception, TranslatesTheSystemsErrors) {
    const struct {
        DWORD error;
        int cause;
    } rows[] = {{0, CFileException::none},
                {ERROR_FILE_NOT_FOUND, CFileException::fileNotFound},
                {ERROR_PATH_NOT_FOUND, CFileException::badPath},
                {ERROR_ACCESS_DENIED, CFileException::accessDenied},
                {ERROR_SHARING_VIOLATION, CFileException::sharingViolation},
                {ERROR_DISK_FULL, CFileException::diskFull},
                {ERROR_TOO_MANY_OPEN_FILES, CFileException::tooManyOpenFiles},
                {12345, CFileException::genericException}};
    for (const auto& row : rows) {
        EXPECT_EQ(CFileException::OsErrorToException(static_cast<LONG>(row.error)), row.cause) << row.error;
    }
}

TEST(Exception, TellsAMessageThatFitsItsRoom) {
    TCHAR text[32];
    CFileException file(CFileException::fileNotFound, 2, _T("C:\\a.b"));
    EXPECT_TRUE(file.GetErrorMessage(text, 32));
    EXPECT_EQ(CString(text), _T("C:\\a.b was not found."));
    EXPECT_TRUE(file.GetErrorMessage(text, 5));
    EXPECT_EQ(CString(text), _T("C:\\a"));
    EXPECT_FALSE(file.GetErrorMessage(text, 0));
    EXPECT_FALSE(CException().GetErrorMessage(text, 32));
}

TEST(Exception, IsCaughtByItsBaseAndDeletedByTheCatcher) {
    for (int i = 0; i < 2; ++i) {  // a shared one can be thrown again after Delete
        try {
            AfxThrowMemoryException();
        } catch (CException* e) {
            EXPECT_TRUE(e->IsKindOf(RUNTIME_CLASS(CMemoryException)));
            e->Delete();
        }
    }
    EXPECT_THROW(AtlThrow(HRESULT_FROM_WIN32(ERROR_OUTOFMEMORY)), CAtlException);
}

TEST(SingleLock, HoldsItsObjectForAScope) {
    CCriticalSection section;
    const auto free_elsewhere = [&section] {
        BOOL entered = FALSE;
        std::thread([&] {
            entered = TryEnterCriticalSection(&section.m_sect);
            if (entered) {
                section.Unlock();
            }
        }).join();
        return entered != FALSE;
    };
    {
        CSingleLock lock(&section, TRUE);
        EXPECT_TRUE(lock.IsLocked());
        EXPECT_FALSE(free_elsewhere());
        lock.Unlock();
        EXPECT_TRUE(free_elsewhere());
        lock.Lock();
        EXPECT_FALSE(free_elsewhere());
    }
    EXPECT_TRUE(free_elsewhere());
}

TEST(SingleLock, GivesUpWhenTheTimeIsOver) {
    CEvent event;
    CSingleLock lock(&event);
    EXPECT_FALSE(lock.Lock(0));
    event.SetEvent();
    EXPECT_TRUE(lock.Lock(0));
    CMutex mutex(TRUE);
    EXPECT_TRUE(mutex.Unlock());
    EXPECT_FALSE(mutex.Unlock());
}

}  // namespace
