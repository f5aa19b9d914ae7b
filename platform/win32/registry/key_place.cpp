#include "key_place.h"

#include <algorithm>

namespace kawin {
namespace {

constexpr std::size_t kLongestKeyName = 255;
constexpr std::u16string_view kClasses = u"Software\\Classes\\";

LSTATUS CheckPath(std::u16string_view path) {
    if (!path.empty() && path.front() == u'\\') {
        return ERROR_BAD_PATHNAME;
    }
    if (path.size() <= kLongestKeyName) {
        return ERROR_SUCCESS;
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

}  // namespace

LSTATUS KeyPlace::FindKey(KeyId& key) const {
    if (transaction != nullptr) {
        return transaction->Within(*hive, [&](HiveTables& tables) { return tables.FindKey(from, path, key); });
    }
    if (from == kRootKey && path.find_first_not_of(u'\\') == path.npos) {
        key = kRootKey;  // the root is there even where no database is
        return ERROR_SUCCESS;
    }
    return hive->Ask(CacheQuestion{from, path, {}, false}, [&key](const CachedAnswer& answer) {
        key = answer.key;
        return answer.status;
    });
}

void KeyPlaces::Add(HiveKind kind, std::u16string_view path) {
    if (Hive* const hive = FindHive(kind)) {
        places_[count_++] = {hive, kRootKey, path, nullptr};
    }
}

LSTATUS KeyPlaces::Find(HKEY key, LPCWSTR path, REGSAM access) {
    const std::u16string_view below = View(path);
    const LSTATUS status = CheckPath(below);
    if (status != ERROR_SUCCESS) {
        return status;
    }
    if (key == HKEY_CURRENT_USER) {
        Add(HiveKind::user, below);
    } else if (key == HKEY_LOCAL_MACHINE) {
        Add(HiveKind::machine, below);
    } else if (key == HKEY_CLASSES_ROOT) {
        joined_.append(kClasses).append(below);
        Add(HiveKind::user, joined_);
        Add(HiveKind::machine, joined_);
    } else {
        key_ = FindObject<RegistryKey>(reinterpret_cast<HANDLE>(key));
        if (!key_ || !key_->Allows(access)) {
            return key_ ? ERROR_ACCESS_DENIED : ERROR_INVALID_HANDLE;
        }
        places_[count_++] = {&key_->InHive(), key_->Id(), below, key_->InTransaction()};
    }
    return count_ > 0 ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

}  // namespace kawin
