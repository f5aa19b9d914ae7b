#include "registry.h"

#include <cstring>
#include <new>

#include "../process/environment.h"
#include "key_place.h"

namespace kawin {
namespace {

constexpr std::size_t kLongestValueName = 16383;
constexpr REGSAM kChanges = KEY_SET_VALUE | KEY_CREATE_SUB_KEY;

LSTATUS GiveHandle(const KeyPlace& place, KeyId id, REGSAM access, ObjectRef<RegistryTransaction> transaction, PHKEY opened) {
    if ((access & kChanges) != 0 && !place.hive->MayWrite()) {
        return ERROR_ACCESS_DENIED;
    }
    *opened = reinterpret_cast<HKEY>(OpenHandle(MakeObject<RegistryKey>(*place.hive, id, access, std::move(transaction))));
    return *opened != nullptr ? ERROR_SUCCESS : ERROR_TOO_MANY_OPEN_FILES;
}

// What a handle opened from a transacted one belongs to, and what a new transaction's handle does.
ObjectRef<RegistryTransaction> Share(RegistryTransaction* transaction) {
    if (transaction != nullptr) {
        transaction->Retain();
    }
    return ObjectRef<RegistryTransaction>(transaction);
}

LSTATUS Open(HKEY key, LPCWSTR path, REGSAM access, RegistryTransaction* transaction, PHKEY opened) {
    KeyPlaces places;
    const LSTATUS status = places.Find(key, path, 0);
    if (status != ERROR_SUCCESS) {
        return status;
    }
    return places.FirstWith([&](KeyPlace place) {
        place.transaction = transaction != nullptr ? transaction : place.transaction;
        KeyId id = kRootKey;
        const LSTATUS found = place.FindKey(id);
        return found == ERROR_SUCCESS ? GiveHandle(place, id, access, Share(place.transaction), opened) : found;
    });
}

LSTATUS Create(HKEY key, LPCWSTR path, REGSAM access, RegistryTransaction* transaction, PHKEY opened, bool& created) {
    created = false;
    LSTATUS status = Open(key, path, access, transaction, opened);
    if (status != static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND)) {
        return status;
    }
    KeyPlaces places;
    status = places.Find(key, path, 0);
    if (status != ERROR_SUCCESS) {
        return status;
    }
    KeyPlace place = places.Last();
    place.transaction = transaction != nullptr ? transaction : place.transaction;
    KeyId id = kRootKey;
    status = place.Writing([&](HiveTables& tables) { return tables.CreateKey(place.from, place.path, id, created); });
    return status == ERROR_SUCCESS ? GiveHandle(place, id, access, Share(place.transaction), opened) : status;
}

LSTATUS RemoveKey(HKEY key, LPCWSTR path, RegistryTransaction* transaction) {
    KeyPlaces places;
    const LSTATUS status = places.Find(key, path, 0);
    if (status != ERROR_SUCCESS) {
        return status;
    }
    return places.FirstWith([&](KeyPlace place) {
        place.transaction = transaction != nullptr ? transaction : place.transaction;
        return place.Writing([&](HiveTables& tables) { return tables.RemoveKey(place.from, place.path); });
    });
}

// Hands a value's bytes out by the rules of the buffer: without buffer only the size, ERROR_MORE_DATA when it does not fit.
LSTATUS Deliver(std::string_view bytes, LPBYTE data, LPDWORD size) {
    if (size == nullptr) {
        return ERROR_SUCCESS;
    }
    const DWORD room = *size;
    *size = static_cast<DWORD>(bytes.size());
    if (data == nullptr) {
        return ERROR_SUCCESS;
    }
    if (room < *size) {
        return ERROR_MORE_DATA;
    }
    memcpy(data, bytes.data(), bytes.size());
    return ERROR_SUCCESS;
}

bool IsText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// Whole characters, and as many terminators as the type asks for.
std::string Terminated(std::string_view bytes, DWORD type) {
    std::string text(bytes.substr(0, bytes.size() / sizeof(WCHAR) * sizeof(WCHAR)));
    const std::size_t needed = type == REG_MULTI_SZ ? 2 : 1;
    std::size_t ends = 0;
    while (ends < needed && text.size() >= (ends + 1) * sizeof(WCHAR) &&
           text.compare(text.size() - (ends + 1) * sizeof(WCHAR), sizeof(WCHAR), "\0\0", 2) == 0) {
        ++ends;
    }
    text.append((needed - ends) * sizeof(WCHAR), '\0');
    return text;
}

std::string Expanded(const std::string& bytes) {
    std::u16string source(bytes.size() / sizeof(WCHAR), u'\0');
    memcpy(source.data(), bytes.data(), source.size() * sizeof(WCHAR));
    std::u16string target(ExpandEnvironmentStringsW(source.c_str(), nullptr, 0), u'\0');
    ExpandEnvironmentStringsW(source.c_str(), target.data(), static_cast<DWORD>(target.size()));
    return {reinterpret_cast<const char*>(target.data()), target.size() * sizeof(WCHAR)};
}

bool IsAllowed(DWORD type, DWORD flags) {
    switch (type) {
        case REG_NONE:
            return (flags & RRF_RT_REG_NONE) != 0;
        case REG_SZ:
            return (flags & RRF_RT_REG_SZ) != 0;
        case REG_EXPAND_SZ:  // becomes a REG_SZ by being expanded
            return (flags & ((flags & RRF_NOEXPAND) != 0 ? RRF_RT_REG_EXPAND_SZ : RRF_RT_REG_SZ)) != 0;
        case REG_BINARY:
            return (flags & RRF_RT_REG_BINARY) != 0;
        case REG_DWORD:
            return (flags & RRF_RT_REG_DWORD) != 0;
        case REG_MULTI_SZ:
            return (flags & RRF_RT_REG_MULTI_SZ) != 0;
        case REG_QWORD:
            return (flags & RRF_RT_REG_QWORD) != 0;
        default:
            return (flags & RRF_RT_ANY) == RRF_RT_ANY;
    }
}

// Sizes that RRF_RT_DWORD and RRF_RT_QWORD ask for beside the type.
bool HasAllowedSize(const CachedAnswer& answer, DWORD flags) {
    const bool number = answer.type == REG_BINARY && (flags & RRF_RT_ANY) != RRF_RT_ANY;
    const bool small = (flags & RRF_RT_DWORD) == RRF_RT_DWORD;
    const bool large = (flags & RRF_RT_QWORD) == RRF_RT_QWORD;
    return !number || (!small && !large) || (small && answer.bytes.size() == 4) || (large && answer.bytes.size() == 8);
}

LSTATUS DeliverChecked(const CachedAnswer& answer, DWORD flags, LPDWORD type, LPBYTE data, LPDWORD size) {
    if (answer.status != ERROR_SUCCESS) {
        return answer.status;
    }
    const bool expand = answer.type == REG_EXPAND_SZ && (flags & RRF_NOEXPAND) == 0;
    if (type != nullptr) {
        *type = expand ? REG_SZ : answer.type;
    }
    if (!IsAllowed(answer.type, flags)) {
        return ERROR_UNSUPPORTED_TYPE;
    }
    if (!HasAllowedSize(answer, flags)) {
        return ERROR_INVALID_DATA;
    }
    if (!IsText(answer.type)) {
        return Deliver(answer.bytes, data, size);
    }
    const std::string text = Terminated(answer.bytes, answer.type);
    return Deliver(expand ? Expanded(text) : text, data, size);
}

}  // namespace
}  // namespace kawin

LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR path, DWORD /*options*/, REGSAM access, PHKEY opened) noexcept {
    return RegOpenKeyTransactedW(key, path, 0, access, opened, nullptr, nullptr);
}

LSTATUS RegOpenKeyTransactedW(HKEY key, LPCWSTR path, DWORD /*options*/, REGSAM access, PHKEY opened, HANDLE transaction,
                              PVOID reserved) noexcept {
    if (opened == nullptr || reserved != nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    *opened = nullptr;
    return kawin::InTransaction(
        transaction, [=](kawin::RegistryTransaction* object) { return kawin::Open(key, path, access, object, opened); });
}

LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR path, DWORD reserved, LPWSTR key_class, DWORD options, REGSAM access,
                        const SECURITY_ATTRIBUTES* security, PHKEY opened, LPDWORD disposition) noexcept {
    return RegCreateKeyTransactedW(key, path, reserved, key_class, options, access, security, opened, disposition, nullptr,
                                   nullptr);
}

LSTATUS RegCreateKeyTransactedW(HKEY key, LPCWSTR path, DWORD reserved, LPWSTR /*key_class*/, DWORD options, REGSAM access,
                                const SECURITY_ATTRIBUTES* /*security*/, PHKEY opened, LPDWORD disposition, HANDLE transaction,
                                PVOID extended) noexcept {
    if (opened == nullptr || path == nullptr || reserved != 0 || options != REG_OPTION_NON_VOLATILE || extended != nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    *opened = nullptr;
    bool created = false;
    const LSTATUS status = kawin::InTransaction(transaction, [&](kawin::RegistryTransaction* object) {
        return kawin::Create(key, path, access, object, opened, created);
    });
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
        kawin::KeyPlaces places;
        const LSTATUS status = places.Find(key, nullptr, KEY_QUERY_VALUE);
        if (status != ERROR_SUCCESS) {
            return status;
        }
        return places.FirstWith([=](const kawin::KeyPlace& place) {
            return place.Ask(kawin::View(name), [=](const kawin::CachedAnswer& answer) -> LSTATUS {
                if (answer.status == ERROR_SUCCESS && type != nullptr) {
                    *type = answer.type;
                }
                return answer.status == ERROR_SUCCESS ? kawin::Deliver(answer.bytes, data, size) : answer.status;
            });
        });
    });
}

LSTATUS RegGetValueW(HKEY key, LPCWSTR path, LPCWSTR name, DWORD flags, LPDWORD type, PVOID data, LPDWORD size) noexcept {
    const bool ambiguous =
        (flags & RRF_RT_REG_EXPAND_SZ) != 0 && (flags & RRF_NOEXPAND) == 0 && (flags & RRF_RT_ANY) != RRF_RT_ANY;
    if ((flags & RRF_RT_ANY) == 0 || ambiguous || (data != nullptr && size == nullptr)) {
        return ERROR_INVALID_PARAMETER;
    }
    const DWORD room = data != nullptr ? *size : 0;
    const auto deliver = [=](const kawin::CachedAnswer& answer) {
        return kawin::DeliverChecked(answer, flags, type, static_cast<LPBYTE>(data), size);
    };
    const LSTATUS status = kawin::Guarded([&]() -> LSTATUS {
        const std::u16string_view below = kawin::View(path);
        if (kawin::Hive* const hive = kawin::PredefinedHive(key); hive != nullptr && kawin::IsPlainPath(below)) {
            return hive->Ask(kawin::CacheQuestion{kawin::kRootKey, below, kawin::View(name), true}, deliver);  // the short way
        }
        kawin::KeyPlaces places;
        const LSTATUS found = places.Find(key, path, KEY_QUERY_VALUE);
        if (found != ERROR_SUCCESS) {
            return found;
        }
        return places.FirstWith([&](const kawin::KeyPlace& place) { return place.Ask(kawin::View(name), deliver); });
    });
    if (status != ERROR_SUCCESS && (flags & RRF_ZEROONFAILURE) != 0 && data != nullptr) {
        memset(data, 0, room);
    }
    return status;
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) noexcept {
    if (reserved != 0 || kawin::View(name).size() > kawin::kLongestValueName) {
        return ERROR_INVALID_PARAMETER;
    }
    if (data == nullptr && size != 0) {
        return ERROR_NOACCESS;
    }
    return kawin::Guarded([=]() -> LSTATUS {
        kawin::KeyPlaces places;
        const LSTATUS status = places.Find(key, nullptr, KEY_SET_VALUE);
        if (status != ERROR_SUCCESS) {
            return status;
        }
        const kawin::KeyPlace& place = places.Last();
        return place.ChangingValue([&](kawin::HiveTables& tables) {
            return tables.Write(place.from, kawin::View(name), type, {reinterpret_cast<const char*>(data), size});
        });
    });
}

LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name) noexcept {
    return kawin::Guarded([=]() -> LSTATUS {
        kawin::KeyPlaces places;
        const LSTATUS status = places.Find(key, nullptr, KEY_SET_VALUE);
        if (status != ERROR_SUCCESS) {
            return status;
        }
        const kawin::KeyPlace& place = places.Last();
        return place.ChangingValue([&](kawin::HiveTables& tables) { return tables.RemoveValue(place.from, kawin::View(name)); });
    });
}

LSTATUS RegDeleteKeyW(HKEY key, LPCWSTR path) noexcept {
    return RegDeleteKeyTransactedW(key, path, 0, 0, nullptr, nullptr);
}

LSTATUS RegDeleteKeyExW(HKEY key, LPCWSTR path, REGSAM view, DWORD reserved) noexcept {
    return RegDeleteKeyTransactedW(key, path, view, reserved, nullptr, nullptr);
}

LSTATUS RegDeleteKeyTransactedW(HKEY key, LPCWSTR path, REGSAM /*view*/, DWORD reserved, HANDLE transaction,
                                PVOID extended) noexcept {
    if (path == nullptr || reserved != 0 || extended != nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    return kawin::InTransaction(transaction,
                                [=](kawin::RegistryTransaction* object) { return kawin::RemoveKey(key, path, object); });
}

LSTATUS RegDeleteTreeW(HKEY key, LPCWSTR path) noexcept {
    return kawin::Guarded([=]() -> LSTATUS {
        kawin::KeyPlaces places;
        const LSTATUS status = places.Find(key, path, 0);
        if (status != ERROR_SUCCESS) {
            return status;
        }
        return places.FirstWith([](const kawin::KeyPlace& place) {
            return place.Writing([&](kawin::HiveTables& tables) { return tables.RemoveTree(place.from, place.path); });
        });
    });
}

LSTATUS RegCloseKey(HKEY key) noexcept {
    if (key == HKEY_CURRENT_USER || key == HKEY_LOCAL_MACHINE || key == HKEY_CLASSES_ROOT) {
        return ERROR_SUCCESS;
    }
    return kawin::RemoveHandleOf<kawin::RegistryKey>(reinterpret_cast<HANDLE>(key)) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}
