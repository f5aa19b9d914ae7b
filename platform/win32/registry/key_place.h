#pragma once

// What a key handle and a path mean: a hive and a key in it. Internal to the layer.

#include <memory>
#include <string>
#include <string_view>

#include "../base/handle_table.h"
#include "../base/text_length.h"
#include "hive.h"
#include "registry_transaction.h"

namespace kawin {

class RegistryKey final : public KernelObject {
public:
    RegistryKey(Hive& hive, KeyId id, REGSAM access, ObjectRef<RegistryTransaction> transaction)
        : hive_(hive), id_(id), access_(access), transaction_(std::move(transaction)) {}

    Hive& InHive() const noexcept { return hive_; }
    KeyId Id() const noexcept { return id_; }
    bool Allows(REGSAM access) const noexcept { return (access_ & access) == access; }
    RegistryTransaction* InTransaction() const noexcept { return transaction_.get(); }

private:
    Hive& hive_;
    const KeyId id_;
    const REGSAM access_;
    const ObjectRef<RegistryTransaction> transaction_;
};

// A path from a key of a hive on. What belongs to a transaction goes through its connection, all else through the process's.
struct KeyPlace {
    Hive* hive = nullptr;
    KeyId from = kRootKey;
    std::u16string_view path;
    RegistryTransaction* transaction = nullptr;

    LSTATUS FindKey(KeyId& key) const;

    template <class Take>
    LSTATUS Ask(std::u16string_view name, Take take) const;
    template <class Work>
    LSTATUS Reading(Work work) const {
        return transaction != nullptr ? transaction->Within(*hive, work) : hive->Reading(work);
    }
    template <class Work>
    LSTATUS Writing(Work work) const {
        return transaction != nullptr ? transaction->Within(*hive, work) : hive->Writing(work);
    }
    template <class Work>
    LSTATUS ChangingValue(Work work) const {
        return transaction != nullptr ? transaction->Within(*hive, work) : hive->ChangingValue(work);
    }
};

// The hive of HKEY_CURRENT_USER or HKEY_LOCAL_MACHINE; null for every other key, and where there is no home folder.
inline Hive* PredefinedHive(HKEY key) {
    return key == HKEY_CURRENT_USER    ? FindHive(HiveKind::user)
           : key == HKEY_LOCAL_MACHINE ? FindHive(HiveKind::machine)
                                       : nullptr;
}

// A path in which nothing has to be refused, seen at once.
inline bool IsPlainPath(std::u16string_view path) noexcept {
    return path.size() <= 255 && (path.empty() || path.front() != u'\\');
}

// The places that a handle and a path stand for, the first one first: two for the classes root, which shows the user's classes
// before the machine's, else one.
class KeyPlaces {
public:
    // ERROR_INVALID_HANDLE; ERROR_ACCESS_DENIED when the handle lacks a right of `access`; ERROR_BAD_PATHNAME for a path that
    // begins with a backslash, ERROR_INVALID_PARAMETER for a name of more than 255 characters in it.
    LSTATUS Find(HKEY key, LPCWSTR path, REGSAM access);

    const KeyPlace* begin() const noexcept { return places_; }
    const KeyPlace* end() const noexcept { return places_ + count_; }
    const KeyPlace& Last() const noexcept { return places_[count_ - 1]; }
    const KeyPlace& First() const noexcept { return places_[0]; }

    // `work(place)` for one place after the other until it is not ERROR_FILE_NOT_FOUND any more.
    template <class Work>
    LSTATUS FirstWith(Work work) const {
        LSTATUS status = ERROR_FILE_NOT_FOUND;
        for (const KeyPlace& place : *this) {
            status = work(place);
            if (status != static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND)) {
                break;
            }
        }
        return status;
    }

private:
    void Add(HiveKind kind, std::u16string_view path);

    KeyPlace places_[2];
    int count_ = 0;
    ObjectRef<RegistryKey> key_;  // keeps the handle's hive and transaction while this lives
    std::u16string joined_;
};

template <class Take>
LSTATUS KeyPlace::Ask(std::u16string_view name, Take take) const {
    if (transaction == nullptr) {
        return hive->Ask(CacheQuestion{from, path, name, true}, take);
    }
    CachedAnswer answer;
    answer.status = transaction->Within(*hive, [&](HiveTables& tables) {
        RegistryValue value;
        LSTATUS status = tables.FindKey(from, path, answer.key);
        if (status == ERROR_SUCCESS) {
            status = tables.Read(answer.key, name, value);
        }
        answer.type = value.type;
        answer.bytes = std::move(value.bytes);
        return status;
    });
    return take(answer);
}

inline std::u16string_view View(LPCWSTR text) noexcept {
    return text == nullptr ? std::u16string_view() : std::u16string_view(text, TextLength(text));
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

// `work(transaction)` for the one behind the handle; null is no transaction.
template <class Work>
LSTATUS InTransaction(HANDLE handle, Work&& work) noexcept {
    return Guarded([&]() -> LSTATUS {
        const ObjectRef<RegistryTransaction> transaction =
            handle != nullptr ? FindObject<RegistryTransaction>(handle) : ObjectRef<RegistryTransaction>();
        return handle == nullptr || transaction ? work(transaction.get()) : ERROR_INVALID_HANDLE;
    });
}

}  // namespace kawin
