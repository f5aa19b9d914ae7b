// A settings database with some bytes replaced: every value is the right one or missing, and writing works again.

#include <dirent.h>
#include <sqlite3.h>
#include <tchar.h>
#include <unistd.h>
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace {

constexpr DWORD kValues = 40;
constexpr std::size_t kEdit = 4;  // bytes of the input: three of the place, one of the new value

std::u16string NameOf(DWORD number) {
    return u"value " + std::u16string(number % 10 == 0 ? 2000 : 1, static_cast<char16_t>(0x4E00 + number));
}

bool Set(DWORD number, DWORD value) {
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, _T("Software\\Fuzz\\Key"), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) != 0) {
        return false;
    }
    const LSTATUS status =
        RegSetValueExW(key, NameOf(number).c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
    RegCloseKey(key);
    return status == ERROR_SUCCESS;
}

// The value, or `missing`.
DWORD Get(DWORD number, DWORD missing) {
    DWORD value = 0, size = sizeof value;
    const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, _T("Software\\Fuzz\\Key"), NameOf(number).c_str(), RRF_RT_REG_DWORD,
                                        nullptr, &value, &size);
    return status == ERROR_SUCCESS ? value : missing;
}

// One folder for the whole run; the hive in it is made anew for every input.
class Folder {
public:
    Folder() {
        char name[] = "/tmp/kadata-fuzz-XXXXXX";
        path_ = mkdtemp(name);
        Use(path_);
        for (DWORD number = 0; number < kValues; ++number) {
            Set(number, number);
        }
        sqlite3* database = nullptr;
        sqlite3_open((path_ + "/user.registry").c_str(), &database);
        sqlite3_exec(database, "PRAGMA wal_checkpoint(TRUNCATE)", nullptr, nullptr, nullptr);
        sqlite3_close(database);
        std::ifstream file(path_ + "/user.registry", std::ios::binary);
        whole_.assign(std::istreambuf_iterator<char>(file), {});
        if (whole_.size() < 20000) {
            std::abort();
        }
    }

    const std::string& Whole() const { return whole_; }

    void Put(const std::string& bytes) const {
        Use("/nowhere");
        Get(0, 0);  // closes the hive
        Empty();
        std::ofstream(path_ + "/user.registry", std::ios::binary) << bytes;
        Use(path_);
    }

private:
    static void Use(const std::string& folder) {
        const std::u16string wide(folder.begin(), folder.end());
        SetEnvironmentVariableW(_T("KADATA_REGISTRY_DIR"), wide.c_str());
    }
    void Empty() const {
        DIR* const folder = opendir(path_.c_str());
        while (const dirent* const entry = readdir(folder)) {
            unlink((path_ + "/" + entry->d_name).c_str());
        }
        closedir(folder);
    }

    std::string path_, whole_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    std::string damaged = folder.Whole();
    for (; size >= kEdit; data += kEdit, size -= kEdit) {
        const std::size_t place = (data[0] | data[1] << 8 | data[2] << 16) % damaged.size();
        damaged[place] = static_cast<char>(data[3]);
    }
    folder.Put(damaged);
    for (DWORD number = 0; number < kValues; ++number) {
        if (Get(number, number) != number) {
            std::abort();
        }
    }
    // A hive that says that a later version made it is left alone: it cannot be written.
    if (Set(1, 1000) && Get(1, 0) != 1000) {
        std::abort();
    }
    return 0;
}
