#pragma once

// One hive: a tree of keys with values in a database of its own. Internal to the layer. Safe from every thread; one
// instance per file and process.

#include <sys/types.h>

#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "database.h"

namespace kawin {

using KeyId = std::int64_t;
constexpr KeyId kRootKey = 0;

struct RegistryValue {
    DWORD type = REG_NONE;
    std::string bytes;
};

// Names come as UTF-16 and are folded here; paths have backslashes between keys, empty parts are passed over.
class Hive {
public:
    explicit Hive(std::string file) : file_(std::move(file)) {}

    const std::string& File() const noexcept { return file_; }

    // Whether this user could change the hive; where it does not exist yet, whether it could be created.
    bool IsWritable();

    LSTATUS FindKey(KeyId from, std::u16string_view path, KeyId& key);
    LSTATUS CreateKey(KeyId from, std::u16string_view path, KeyId& key, bool& created);
    LSTATUS Read(KeyId key, std::u16string_view name, RegistryValue& value);
    LSTATUS Write(KeyId key, std::u16string_view name, DWORD type, const void* bytes, std::size_t size);
    LSTATUS Remove(KeyId key, std::u16string_view name);
    LSTATUS RemoveTree(KeyId from, std::u16string_view path);

private:
    // All below: call with mutex_ held.
    LSTATUS Attach();
    LSTATUS AttachForWriting();
    LSTATUS OpenFile(bool create);
    LSTATUS CheckSchema();
    LSTATUS CreateSchema();
    void Detach() noexcept;
    void AbandonParents() noexcept;
    LSTATUS Child(KeyId parent, std::u16string_view name, KeyId& key);
    LSTATUS AddChild(KeyId parent, std::u16string_view name, KeyId& key);
    LSTATUS Exists(KeyId key);
    LSTATUS RemoveBelow(KeyId key, bool itself);
    LSTATUS Walk(KeyId from, std::u16string_view path, KeyId& key);
    LSTATUS WalkAndAdd(KeyId from, std::u16string_view path, KeyId& key, bool& created);

    const std::string file_;
    std::mutex mutex_;
    Database database_;  // guarded by mutex_; closed while there is no usable file
    pid_t owner_ = 0;    // guarded by mutex_: the process that opened it; a forked child opens its own

    // guarded by mutex_
    Statement find_key_{"SELECT id FROM keys WHERE parent = ? AND folded = ?"};
    Statement add_key_{"INSERT INTO keys (parent, folded, name) VALUES (?, ?, ?)"};
    Statement key_exists_{"SELECT 1 FROM keys WHERE id = ?"};
    Statement read_value_{"SELECT type, data FROM entries WHERE key = ? AND folded = ?"};
    Statement write_value_{
        "INSERT INTO entries (key, folded, name, type, data) VALUES (?, ?, ?, ?, ?)"
        " ON CONFLICT (key, folded) DO UPDATE SET type = excluded.type, data = excluded.data"};
    Statement remove_value_{"DELETE FROM entries WHERE key = ? AND folded = ?"};
    Statement remove_values_below_{
        "WITH RECURSIVE below (id) AS (SELECT ? UNION ALL SELECT keys.id FROM keys JOIN below ON keys.parent = below.id)"
        " DELETE FROM entries WHERE key IN below"};
    Statement remove_keys_below_{
        "WITH RECURSIVE below (id) AS (SELECT ?1 UNION ALL SELECT keys.id FROM keys JOIN below ON keys.parent = below.id)"
        " DELETE FROM keys WHERE id IN below AND (?2 OR id <> ?1)"};
    Statement* const statements_[8] = {&find_key_,    &add_key_,      &key_exists_,          &read_value_,
                                       &write_value_, &remove_value_, &remove_values_below_, &remove_keys_below_};
};

enum class HiveKind { user, machine };

// The hive where the environment says that it lies now; empty when there is no home folder to look in.
std::shared_ptr<Hive> FindHive(HiveKind kind);

}  // namespace kawin
