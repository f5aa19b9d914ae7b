#include <gtest/gtest.h>
#include <kadata/directory.h>
#include <kadata/version_info.h>
#include <winver.h>

#include <vector>

namespace {

TEST(LinuxOSInfo, IsNoWindows) {
    EXPECT_FALSE(KaCOSInfo::IsWindowsXPOrAbove() || KaCOSInfo::IsWindowsServer2003() || KaCOSInfo::IsWindowsVistaOrAbove() ||
                 KaCOSInfo::IsWindows7OrAbove());
}

class LinuxVersionBlock : public testing::Test {
protected:
    // Of just that size, so that a sanitizer sees who leaves it.
    static std::vector<char> Block(DWORD size) {
        std::vector<char> block(size);
        EXPECT_EQ(GetFileVersionInfoW(Module(), 0, size, block.data()), size >= 6);
        return block;
    }
    // What is found lies in the block.
    static void Ask(const std::vector<char>& block) {
        for (const LPCTSTR path : {_T("\\"), _T("\\varfileinfo\\TRANSLATION"), _T("\\StringFileInfo\\040704B0\\ProductVersion"),
                                   _T("\\StringFileInfo\\040904e4\\None"), _T("\\VarFileInfo\\Translation\\More")}) {
            void* value = nullptr;
            UINT size = 0;
            if (VerQueryValueW(block.data(), path, &value, &size))
                ASSERT_TRUE(value >= block.data() && static_cast<char*>(value) + size <= block.data() + block.size());
            else
                ASSERT_EQ(GetLastError(), DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
        }
    }
    static CString Module() { return CDirectory::GetExePath() + _T("version_module.dll"); }
};

TEST_F(LinuxVersionBlock, NeitherACutNorDamageLeadsOutOfIt) {
    const DWORD size = GetFileVersionInfoSizeW(Module(), nullptr);
    ASSERT_GT(size, 300U);
    for (DWORD cut = 6; cut < size; ++cut)
        Ask(Block(cut));
    for (DWORD place = 2; place < size; ++place) {
        for (const int change : {0x01, 0x80, 0xFF}) {
            std::vector<char> block = Block(size);
            block[place] = static_cast<char>(block[place] ^ change);
            Ask(block);
        }
    }
    Block(5);
}

}  // namespace
