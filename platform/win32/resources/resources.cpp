#include "resources.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>

#include "../base/error_map.h"
#include "../modules/module_table.h"
#include "../text/locale.h"
#include "../text/no_throw.h"
#include "resource_reader.h"

namespace {

using kawin::Bytes;
using kawin::Fail;
using kawin::ResourceEntry;
using kawin::ResourceName;
using Entries = std::span<const ResourceEntry>;

constexpr LANGID kNeutral = MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL);
constexpr LANGID kAmerican = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
constexpr UINT kStringsPerBlock = 16;

// Lower is better; the first that there is comes last.
int RankForUser(LANGID language, LANGID user) {
    if (language == user) {
        return 0;
    }
    if (PRIMARYLANGID(language) == PRIMARYLANGID(user)) {
        return SUBLANGID(language) == SUBLANG_NEUTRAL ? 1 : 2;
    }
    if (PRIMARYLANGID(language) == LANG_NEUTRAL) {
        return 3;
    }
    return language == kAmerican ? 4 : PRIMARYLANGID(language) == LANG_ENGLISH ? 5 : 6;
}

constexpr int kNoRank = 7;

int RankForLanguage(LANGID language, LANGID wanted) {
    const std::array<LANGID, 3> order = {wanted, MAKELANGID(PRIMARYLANGID(wanted), SUBLANG_NEUTRAL), kNeutral};
    const auto found = std::find(order.begin(), order.end(), language);
    return found == order.end() ? kNoRank : static_cast<int>(found - order.begin());
}

// The best of the entries of one type and name; sets the last error when there is none.
class Choice {
public:
    Choice(LPCWSTR type, LPCWSTR name, LANGID language)
        : type_(type),
          name_(name),
          language_(language == kNeutral ? GetUserDefaultLangID() : language),
          for_user_(language == kNeutral) {}

    const ResourceEntry* From(Entries entries) const {
        const Entries typed = kawin::ResourceFile::OfType(entries, type_);
        const ResourceEntry* best = nullptr;
        int best_rank = kNoRank;
        bool has_name = false;
        for (const ResourceEntry& entry : kawin::ResourceFile::OfName(typed, name_)) {
            if (!type_.Matches(entry.type) || !name_.Matches(entry.name)) {
                continue;
            }
            has_name = true;
            const int rank = Rank(entry.language);
            if (rank < best_rank) {
                best_rank = rank;
                best = &entry;
            }
        }
        if (best == nullptr) {
            SetLastError(entries.empty()   ? ERROR_RESOURCE_DATA_NOT_FOUND
                         : !HasType(typed) ? ERROR_RESOURCE_TYPE_NOT_FOUND
                         : !has_name       ? ERROR_RESOURCE_NAME_NOT_FOUND
                                           : ERROR_RESOURCE_LANG_NOT_FOUND);
        }
        return best;
    }

private:
    int Rank(LANGID language) const {
        return for_user_ ? RankForUser(language, language_) : RankForLanguage(language, language_);
    }
    bool HasType(Entries typed) const {
        return std::any_of(typed.begin(), typed.end(), [this](const ResourceEntry& entry) { return type_.Matches(entry.type); });
    }

    ResourceName type_;
    ResourceName name_;
    LANGID language_;
    bool for_user_;
};

// Stays as long as the module is loaded; null with the last error set.
const ResourceEntry* Find(HMODULE module, LPCWSTR type, LPCWSTR name, LANGID language) {
    const std::shared_ptr<const kawin::Module> found = kawin::FindModule(module);
    if (found == nullptr) {
        return nullptr;
    }
    const kawin::ResourceFile* const file = found->Resources();
    return Choice(type, name, language).From(file == nullptr ? Entries() : file->Entries());
}

const ResourceEntry* EntryOf(HRSRC resource) {
    if (resource == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
    }
    return reinterpret_cast<const ResourceEntry*>(resource);
}

LPVOID Address(const std::byte* bytes) {
    return const_cast<std::byte*>(bytes);
}

int CopyString(Bytes text, LPWSTR target, int capacity) {
    const std::size_t count = std::min(text.size() / sizeof(WCHAR), static_cast<std::size_t>(capacity) - 1);
    std::copy_n(text.data(), count * sizeof(WCHAR), reinterpret_cast<std::byte*>(target));
    target[count] = 0;
    return static_cast<int>(count);
}

// The string where it lies, which needs an address that units can have.
int PointToString(Bytes text, LPWSTR target) {
    if (reinterpret_cast<ULONG_PTR>(text.data()) % alignof(WCHAR) != 0) {
        return Fail(ERROR_BAD_EXE_FORMAT);
    }
    *reinterpret_cast<LPCWSTR*>(target) = reinterpret_cast<LPCWSTR>(text.data());
    return static_cast<int>(text.size() / sizeof(WCHAR));
}

int LoadFound(HMODULE module, UINT id, LPWSTR target, int capacity) {
    const auto block_name = static_cast<WORD>((id / kStringsPerBlock + 1) & 0xFFFF);
    const ResourceEntry* const block = Find(module, RT_STRING, MAKEINTRESOURCEW(block_name), kNeutral);
    if (block == nullptr) {
        return 0;
    }
    const std::optional<Bytes> text = kawin::FindInStringBlock(block->data, id);
    if (!text) {
        return Fail(ERROR_BAD_EXE_FORMAT);
    }
    return capacity == 0 ? PointToString(*text, target) : CopyString(*text, target, capacity);
}

}  // namespace

HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type) noexcept {
    return FindResourceExW(module, type, name, kNeutral);
}

HRSRC FindResourceExW(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language) noexcept {
    return kawin::NoThrow(
        [&]() -> HRSRC { return reinterpret_cast<HRSRC>(const_cast<ResourceEntry*>(Find(module, type, name, language))); });
}

HGLOBAL LoadResource(HMODULE /*module*/, HRSRC resource) noexcept {
    const ResourceEntry* const entry = EntryOf(resource);
    return entry == nullptr ? nullptr : Address(entry->data.data());
}

LPVOID LockResource(HGLOBAL data) noexcept {
    return data;
}

DWORD SizeofResource(HMODULE /*module*/, HRSRC resource) noexcept {
    const ResourceEntry* const entry = EntryOf(resource);
    return entry == nullptr ? 0 : static_cast<DWORD>(entry->data.size());
}

BOOL FreeResource(HGLOBAL /*data*/) noexcept {
    return FALSE;
}

int LoadStringW(HINSTANCE module, UINT id, LPWSTR target, int capacity) noexcept {
    return kawin::NoThrow([&]() -> int {
        if (target == nullptr || capacity < 0) {
            return Fail(ERROR_INVALID_PARAMETER);
        }
        const int length = LoadFound(module, id, target, capacity);
        if (length == 0 && capacity > 0) {
            *target = 0;
        }
        return length;
    });
}
