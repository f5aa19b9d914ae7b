#include <afx.h>
#include <gtest/gtest.h>

#include <memory>

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
    EXPECT_FALSE(leaf->IsKindOf(RUNTIME_CLASS(CTestStored)));
    EXPECT_TRUE(!leaf->IsSerializable() && CTestStored().IsSerializable());
    EXPECT_EQ(RUNTIME_CLASS(CTestBase)->CreateObject(), nullptr);
    EXPECT_EQ(RUNTIME_CLASS(CTestStored)->m_wSchema, 3U);
    CDumpContext dump;
    leaf->Dump(dump);
    EXPECT_EQ(dump.GetText(), _T("CTestLeaf"));
}

}  // namespace
