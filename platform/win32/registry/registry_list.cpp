// What is below a key: enumeration and counts.

#include <cstring>

#include "key_place.h"
#include "registry.h"

namespace kawin {
namespace {

// A name with its terminator; *length is the room in characters, then the length without the terminator.
LSTATUS DeliverName(std::u16string_view name, LPWSTR target, LPDWORD length) {
    const DWORD room = *length;
    *length = static_cast<DWORD>(name.size());
    if (room <= name.size()) {
        return ERROR_MORE_DATA;
    }
    memcpy(target, name.data(), name.size() * sizeof(WCHAR));
    target[name.size()] = 0;
    return ERROR_SUCCESS;
}

template <class T>
void Give(T* target, T value) {
    if (target != nullptr) {
        *target = value;
    }
}

// A hive that is not there has an empty root.
template <class Work>
LSTATUS OnKey(HKEY key, REGSAM access, LSTATUS when_missing, Work work) noexcept {
    return Guarded([&]() -> LSTATUS {
        KeyPlaces places;
        LSTATUS status = places.Find(key, nullptr, access);
        if (status != ERROR_SUCCESS) {
            return status;
        }
        const KeyPlace& place = places.Last();
        KeyId id = place.from;
        status = place.Reading([&](HiveTables& tables) {
            const LSTATUS found = tables.FindKey(place.from, place.path, id);
            return found == ERROR_SUCCESS ? work(tables, id) : found;
        });
        return status == static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND) ? when_missing : status;
    });
}

}  // namespace
}  // namespace kawin

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD length, LPDWORD reserved, LPWSTR key_class,
                      LPDWORD class_length, PFILETIME written) noexcept {
    if (name == nullptr || length == nullptr || reserved != nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    return kawin::OnKey(key, KEY_ENUMERATE_SUB_KEYS, ERROR_NO_MORE_ITEMS,
                        [=](kawin::HiveTables& tables, kawin::KeyId id) -> LSTATUS {
                            std::u16string found;
                            const LSTATUS status = tables.KeyAt(id, index, found);
                            if (status != ERROR_SUCCESS) {
                                return status;
                            }
                            if (key_class != nullptr && class_length != nullptr && *class_length > 0) {
                                *key_class = 0;
                            }
                            kawin::Give<DWORD>(class_length, 0);
                            kawin::Give(written, FILETIME{});
                            return kawin::DeliverName(found, name, length);
                        });
}

LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD length, LPDWORD reserved, LPDWORD type, LPBYTE data,
                      LPDWORD size) noexcept {
    if (name == nullptr || length == nullptr || reserved != nullptr || (data != nullptr && size == nullptr)) {
        return ERROR_INVALID_PARAMETER;
    }
    return kawin::OnKey(key, KEY_QUERY_VALUE, ERROR_NO_MORE_ITEMS, [=](kawin::HiveTables& tables, kawin::KeyId id) -> LSTATUS {
        std::u16string found;
        kawin::RegistryValue value;
        const LSTATUS status = tables.ValueAt(id, index, found, value);
        if (status != ERROR_SUCCESS) {
            return status;
        }
        kawin::Give(type, value.type);
        const DWORD room = size != nullptr ? *size : 0;
        kawin::Give(size, static_cast<DWORD>(value.bytes.size()));
        if (data != nullptr && room < value.bytes.size()) {
            return ERROR_MORE_DATA;
        }
        const LSTATUS named = kawin::DeliverName(found, name, length);
        if (named == ERROR_SUCCESS && data != nullptr) {
            memcpy(data, value.bytes.data(), value.bytes.size());
        }
        return named;
    });
}

LSTATUS RegQueryInfoKeyW(HKEY key, LPWSTR key_class, LPDWORD class_length, LPDWORD reserved, LPDWORD keys, LPDWORD longest_key,
                         LPDWORD longest_class, LPDWORD values, LPDWORD longest_name, LPDWORD longest_value, LPDWORD security,
                         PFILETIME written) noexcept {
    if (reserved != nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    kawin::KeyCounts counts;
    const LSTATUS status =
        kawin::OnKey(key, KEY_QUERY_VALUE, ERROR_SUCCESS,
                     [&counts](kawin::HiveTables& tables, kawin::KeyId id) { return tables.Count(id, counts); });
    if (status != ERROR_SUCCESS) {
        return status;
    }
    if (key_class != nullptr && class_length != nullptr && *class_length > 0) {
        *key_class = 0;
    }
    for (const auto& [target, value] : {std::pair(class_length, DWORD{0}),
                                        {keys, counts.keys},
                                        {longest_key, counts.longest_key},
                                        {longest_class, DWORD{0}},
                                        {values, counts.values},
                                        {longest_name, counts.longest_name},
                                        {longest_value, counts.longest_value},
                                        {security, DWORD{0}}}) {
        kawin::Give(target, value);
    }
    kawin::Give(written, FILETIME{});
    return ERROR_SUCCESS;
}
