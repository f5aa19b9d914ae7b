#include <afx.h>
#include <gtest/gtest.h>

#include <memory>

class CTestBase : public CObject {
    DECLARE_DYNAMIC(CTestBase)
};
IMPLEMENT_DYNAMIC(CTestBase, CObject)

class CTestLeaf : public CTestBase {
    DECLARE_SERIAL(CTestLeaf)
};
IMPLEMENT_SERIAL(CTestLeaf, CTestBase, 3)

namespace {

TEST(Object, KnowsItsClassAtRunTime) {
    const std::unique_ptr<CObject> leaf(RUNTIME_CLASS(CTestLeaf)->CreateObject());
    ASSERT_NE(leaf, nullptr);
    EXPECT_TRUE(leaf->IsKindOf(RUNTIME_CLASS(CTestBase)) && !CTestBase().IsKindOf(RUNTIME_CLASS(CTestLeaf)));
    EXPECT_TRUE(leaf->IsSerializable() && !CTestBase().IsSerializable());
    EXPECT_EQ(RUNTIME_CLASS(CTestBase)->CreateObject(), nullptr);
    EXPECT_EQ(RUNTIME_CLASS(CTestLeaf)->m_wSchema, 3U);
    CDumpContext dump;
    leaf->Dump(dump);
    EXPECT_EQ(dump.GetText(), _T("CTestLeaf"));
}

}  // namespace
