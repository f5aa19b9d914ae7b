#include "registry_values_linux.h"

namespace test {
namespace {

const TCHAR kKey[] = _T("Software\\KaData Tests\\Numbers");

}  // namespace

bool SetNumber(const TCHAR* name, DWORD number, HANDLE transaction) {
    HKEY key = nullptr;
    LSTATUS status =
        RegCreateKeyTransactedW(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr, transaction, nullptr);
    if (status == ERROR_SUCCESS) {
        status = RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
        RegCloseKey(key);
    }
    return status == ERROR_SUCCESS;
}

std::optional<DWORD> Number(const TCHAR* name, HANDLE transaction) {
    DWORD number = 0, size = sizeof number;
    if (transaction == nullptr) {
        const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, kKey, name, RRF_RT_REG_DWORD, nullptr, &number, &size);
        return status == ERROR_SUCCESS ? std::optional(number) : std::nullopt;
    }
    HKEY key = nullptr;
    LSTATUS status = RegOpenKeyTransactedW(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key, transaction, nullptr);
    if (status == ERROR_SUCCESS) {
        status = RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(&number), &size);
        RegCloseKey(key);
    }
    return status == ERROR_SUCCESS ? std::optional(number) : std::nullopt;
}

}  // namespace test
