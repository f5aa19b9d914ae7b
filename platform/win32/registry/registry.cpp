#include "registry.h"

#include <cstring>
#include <new>
#include <optional>

#include "../base/handle_table.h"
#include "hive.h"

namespace kawin {
namespace {

constexpr std::size_t kLongestKeyName = 255;
constexpr std::size_t kLongestValueName = 16383;
constexpr REGSAM kChanges = KEY_SET_VALUE | KEY_CREATE_SUB_KEY;

class RegistryKey : public KernelObject {
public:
    RegistryKey(std::shared_ptr<Hive> hive, KeyId id, REGSAM access) : hive_(std::move(hive)), id_(id), access_(access) {}

    Hive& InHive() const noexcept { return *hive_; }
    const std::shared_ptr<Hive>& SharedHive() const noexcept { return hive_; }
    KeyId Id() const noexcept { return id_; }
    bool Allows(REGSAM access) const noexcept { return (access_ & access) == access; }

private:
    const std::shared_ptr<Hive> hive_;
    const KeyId id_;
    const REGSAM access_;
};

bool IsPredefined(HKEY key) {
    return key == HKEY_CURRENT_USER || key == HKEY_LOCAL_MACHINE;
}

// The key behind a handle; empty for what is none.
ObjectRef<RegistryKey> Behind(HKEY key) {
    if (!IsPredefined(key)) {
        return FindObject<RegistryKey>(reinterpret_cast<HANDLE>(key));
    }
    std::shared_ptr<Hive> hive = FindHive(key == HKEY_CURRENT_USER ? HiveKind::user : HiveKind::machine);
    return hive == nullptr ? ObjectRef<RegistryKey>() : MakeObject<RegistryKey>(std::move(hive), kRootKey, KEY_ALL_ACCESS);
}

// Out of memory is an error number like others.
template <class Work>
LSTATUS Guarded(Work&& work) noexcept {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

LSTATUS CheckPath(std::u16string_view path) {
    if (!path.empty() && path.front() == u'\\') {
        return ERROR_BAD_PATHNAME;
    }
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find(u'\\', begin), path.size());
        if (end - begin > kLongestKeyName) {
            return ERROR_INVALID_PARAMETER;
        }
        begin = end + 1;
    }
    return ERROR_SUCCESS;
}

LSTATUS GiveHandle(const RegistryKey& base, KeyId id, REGSAM access, PHKEY opened) {
    if ((access & kChanges) != 0 && !base.InHive().IsWritable()) {
        return ERROR_ACCESS_DENIED;
    }
    *opened = reinterpret_cast<HKEY>(OpenHandle(MakeObject<RegistryKey>(base.SharedHive(), id, access)));
    return *opened != nullptr ? ERROR_SUCCESS : ERROR_TOO_MANY_OPEN_FILES;
}

LSTATUS Open(HKEY key, std::u16string_view path, REGSAM access, PHKEY opened) {
    const ObjectRef<RegistryKey> base = Behind(key);
    if (!base) {
        return ERROR_INVALID_HANDLE;
    }
    KeyId id = kRootKey;
    LSTATUS status = CheckPath(path);
    if (status == ERROR_SUCCESS) {
        status = base->InHive().FindKey(base->Id(), path, id);
    }
    return status == ERROR_SUCCESS ? GiveHandle(*base, id, access, opened) : status;
}

LSTATUS Create(HKEY key, std::u16string_view path, REGSAM access, PHKEY opened, bool& created) {
    const ObjectRef<RegistryKey> base = Behind(key);
    if (!base) {
        return ERROR_INVALID_HANDLE;
    }
    KeyId id = kRootKey;
    LSTATUS status = CheckPath(path);
    if (status == ERROR_SUCCESS) {
        status = base->InHive().CreateKey(base->Id(), path, id, created);
    }
    return status == ERROR_SUCCESS ? GiveHandle(*base, id, access, opened) : status;
}

LSTATUS RemoveTree(HKEY key, std::u16string_view path) {
    const ObjectRef<RegistryKey> base = Behind(key);
    if (!base) {
        return ERROR_INVALID_HANDLE;
    }
    const LSTATUS status = CheckPath(path);
    return status == ERROR_SUCCESS ? base->InHive().RemoveTree(base->Id(), path) : status;
}

// Hands a value's bytes out by the rules of the buffer: without buffer only the size, ERROR_MORE_DATA when it does not fit.
LSTATUS Deliver(const RegistryValue& value, LPDWORD type, LPBYTE data, LPDWORD size) {
    if (type != nullptr) {
        *type = value.type;
    }
    if (size == nullptr) {
        return ERROR_SUCCESS;
    }
    const DWORD room = *size;
    *size = static_cast<DWORD>(value.bytes.size());
    if (data == nullptr) {
        return ERROR_SUCCESS;
    }
    if (room < *size) {
        return ERROR_MORE_DATA;
    }
    memcpy(data, value.bytes.data(), value.bytes.size());
    return ERROR_SUCCESS;
}

std::u16string_view View(LPCWSTR text) {
    return text == nullptr ? std::u16string_view() : std::u16string_view(text);
}

}  // namespace
}  // namespace kawin

LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR path, DWORD /*options*/, REGSAM access, PHKEY opened) noexcept {
    if (opened == nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    *opened = nullptr;
    return kawin::Guarded([=] { return kawin::Open(key, kawin::View(path), access, opened); });
}

LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR path, DWORD reserved, LPWSTR /*key_class*/, DWORD options, REGSAM access,
                        const SECURITY_ATTRIBUTES* /*security*/, PHKEY opened, LPDWORD disposition) noexcept {
    if (opened == nullptr || path == nullptr || reserved != 0 || options != REG_OPTION_NON_VOLATILE) {
        return ERROR_INVALID_PARAMETER;
    }
    *opened = nullptr;
    bool created = false;
    const LSTATUS status = kawin::Guarded([&] { return kawin::Create(key, path, access, opened, created); });
    if (status == ERROR_SUCCESS && disposition != nullptr) {
        *disposition = created ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    }
    return status;
}

LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) noexcept {
    if (reserved != nullptr || (data != nullptr && size == nullptr)) {
        return ERROR_INVALID_PARAMETER;
    }
    return kawin::Guarded([=]() -> LSTATUS {
        const kawin::ObjectRef<kawin::RegistryKey> object = kawin::Behind(key);
        if (!object || !object->Allows(KEY_QUERY_VALUE)) {
            return object ? ERROR_ACCESS_DENIED : ERROR_INVALID_HANDLE;
        }
        kawin::RegistryValue value;
        const LSTATUS status = object->InHive().Read(object->Id(), kawin::View(name), value);
        return status == ERROR_SUCCESS ? kawin::Deliver(value, type, data, size) : status;
    });
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) noexcept {
    if (reserved != 0 || kawin::View(name).size() > kawin::kLongestValueName) {
        return ERROR_INVALID_PARAMETER;
    }
    if (data == nullptr && size != 0) {
        return ERROR_NOACCESS;
    }
    return kawin::Guarded([=]() -> LSTATUS {
        const kawin::ObjectRef<kawin::RegistryKey> object = kawin::Behind(key);
        if (!object || !object->Allows(KEY_SET_VALUE)) {
            return object ? ERROR_ACCESS_DENIED : ERROR_INVALID_HANDLE;
        }
        return object->InHive().Write(object->Id(), kawin::View(name), type, data, size);
    });
}

LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name) noexcept {
    return kawin::Guarded([=]() -> LSTATUS {
        const kawin::ObjectRef<kawin::RegistryKey> object = kawin::Behind(key);
        if (!object || !object->Allows(KEY_SET_VALUE)) {
            return object ? ERROR_ACCESS_DENIED : ERROR_INVALID_HANDLE;
        }
        return object->InHive().Remove(object->Id(), kawin::View(name));
    });
}

LSTATUS RegDeleteTreeW(HKEY key, LPCWSTR path) noexcept {
    return kawin::Guarded([=] { return kawin::RemoveTree(key, kawin::View(path)); });
}

LSTATUS RegCloseKey(HKEY key) noexcept {
    if (kawin::IsPredefined(key)) {
        return ERROR_SUCCESS;
    }
    return kawin::RemoveHandleOf<kawin::RegistryKey>(reinterpret_cast<HANDLE>(key)) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}
