#include "version_info.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

#include "../base/error_map.h"
#include "../modules/modules.h"
#include "../text/crt_text.h"
#include "byte_view.h"
#include "resources.h"

namespace {

using Bytes = std::span<const std::byte>;

constexpr std::size_t kHead = 6;  // three words: length of the node, length of its value, whether that is text
constexpr std::size_t kUnit = sizeof(WCHAR);

// The version block of a file, and the module that it is part of.
class VersionResource {
public:
    explicit VersionResource(LPCWSTR path)
        : module_(LoadLibraryExW(path, nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE)) {
        if (module_ != nullptr) {
            resource_ = FindResourceW(module_, MAKEINTRESOURCEW(1), RT_VERSION);
        }
    }
    VersionResource(const VersionResource&) = delete;
    VersionResource& operator=(const VersionResource&) = delete;
    ~VersionResource() {
        if (module_ != nullptr) {
            const DWORD error = GetLastError();
            FreeLibrary(module_);
            SetLastError(error);
        }
    }

    bool Found() const { return resource_ != nullptr; }
    Bytes Data() const {
        return {static_cast<const std::byte*>(LockResource(LoadResource(module_, resource_))),
                SizeofResource(module_, resource_)};
    }

private:
    HMODULE module_;
    HRSRC resource_ = nullptr;
};

// A node somewhere in a block. Offsets count from the block's start, for that is what values and children are aligned to.
class Node {
public:
    // Nothing when there is no whole head and key before `end`.
    static std::optional<Node> At(Bytes block, std::size_t offset, std::size_t end) {
        const auto head = offset < end ? kawin::Slice(block.first(end), offset, kHead) : std::nullopt;
        if (!head) {
            return std::nullopt;
        }
        Node node;
        node.block_ = block;
        node.key_ = offset + kHead;
        node.end_ = std::min<std::size_t>(end, offset + *kawin::Word(*head, 0));
        node.key_end_ = node.key_;
        while (const auto unit = kawin::Word(block.first(node.end_), node.key_end_)) {
            if (*unit == 0) {
                const std::size_t count = *kawin::Word(*head, 2);
                node.is_text_ = *kawin::Word(*head, 4) != 0;
                node.value_ = std::min(Aligned(node.key_end_ + kUnit), node.end_);
                node.value_end_ = std::min(node.value_ + (node.is_text_ ? count * kUnit : count), node.end_);
                return node;
            }
            node.key_end_ += kUnit;
        }
        return std::nullopt;
    }

    std::optional<Node> Child(std::u16string_view key) const {
        std::optional<Node> child = At(block_, Aligned(value_end_), end_);
        while (child) {
            if (child->HasKey(key)) {
                return child;
            }
            child = At(block_, Aligned(child->end_), end_);
        }
        return std::nullopt;
    }

    Bytes Value() const { return block_.subspan(value_, value_end_ - value_); }
    bool IsText() const { return is_text_; }

private:
    static std::size_t Aligned(std::size_t offset) { return (offset + 3) & ~std::size_t{3}; }

    bool HasKey(std::u16string_view key) const {
        const auto* const own = reinterpret_cast<LPCWSTR>(block_.data() + key_);
        return (key_end_ - key_) / kUnit == key.size() && _wcsnicmp(own, key.data(), key.size()) == 0;
    }

    Bytes block_;
    std::size_t key_ = 0, key_end_ = 0;
    std::size_t value_ = 0, value_end_ = 0;
    std::size_t end_ = 0;
    bool is_text_ = false;
};

// The keys between the backslashes of `path`, from the root on.
std::optional<Node> Find(Bytes block, std::u16string_view path) {
    std::optional<Node> node = Node::At(block, 0, block.size());
    while (node && !path.empty()) {
        const std::u16string_view key = path.substr(0, path.find(u'\\'));
        path.remove_prefix(std::min(path.size(), key.size() + 1));
        if (!key.empty()) {
            node = node->Child(key);
        }
    }
    return node;
}

}  // namespace

DWORD GetFileVersionInfoSizeW(LPCWSTR path, LPDWORD handle) noexcept {
    if (handle != nullptr) {
        *handle = 0;
    }
    const VersionResource version(path);
    return version.Found() ? static_cast<DWORD>(version.Data().size()) : 0;
}

// The length in the copy is made true, so that nobody who follows it leaves the caller's memory.
BOOL GetFileVersionInfoW(LPCWSTR path, DWORD, DWORD size, LPVOID block) noexcept {
    const VersionResource version(path);
    if (!version.Found()) {
        return FALSE;
    }
    const Bytes data = version.Data();
    const std::size_t copied = std::min<std::size_t>(size, data.size());
    if (block == nullptr || copied < kHead) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::memcpy(block, data.data(), copied);
    const WORD length = static_cast<WORD>(std::min<std::size_t>(*kawin::Word(data, 0), copied));
    std::memcpy(block, &length, sizeof length);
    return TRUE;
}

BOOL VerQueryValueW(LPCVOID block, LPCWSTR path, LPVOID* value, UINT* size) noexcept {
    if (block == nullptr || path == nullptr || value == nullptr || size == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    WORD length = 0;
    std::memcpy(&length, block, sizeof length);
    const std::optional<Node> node = Find({static_cast<const std::byte*>(block), length}, path);
    if (!node) {
        SetLastError(ERROR_RESOURCE_TYPE_NOT_FOUND);
        return FALSE;
    }
    const Bytes found = node->Value();
    *value = const_cast<std::byte*>(found.data());
    *size = static_cast<UINT>(node->IsText() ? found.size() / kUnit : found.size());
    return TRUE;
}
