#pragma once

// The tree of a hive in its two tables, over an open database. Internal to the layer. For one thread at a time; calls that write
// more than one row are made inside a transaction of the caller's.
//
// Every row carries a check value (CRC-32, zlib's), so that a flipped bit in the file is never taken for a value. It does not
// cover the name as it was first written, which only enumeration shows.

#include <functional>
#include <string>
#include <string_view>

#include "database.h"

namespace kawin {

using KeyId = std::int64_t;
constexpr KeyId kRootKey = 0;  // has no row

struct RegistryValue {
    DWORD type = REG_NONE;
    std::string bytes;
};

struct KeyCounts {
    DWORD keys = 0;
    DWORD longest_key = 0;  // characters
    DWORD values = 0;
    DWORD longest_name = 0;   // characters
    DWORD longest_value = 0;  // bytes
};

// Names are folded here; paths have backslashes between keys, empty parts are passed over.
// A row that fails its check is ERROR_CRC: its value or key is lost, the others are not. Writing it anew heals it.
class HiveTables {
public:
    HiveTables() = default;
    HiveTables(const HiveTables&) = delete;
    HiveTables& operator=(const HiveTables&) = delete;

    Database& GetDatabase() noexcept { return database_; }

    // Opens the file; creating lays the tables out where they are missing. ERROR_FILE_NOT_FOUND for an empty file, ERROR_BADDB
    // for one that is no hive, ERROR_REVISION_MISMATCH for one that a later version made.
    LSTATUS Open(const std::string& file, bool create);
    void Close() noexcept;
    void Abandon() noexcept;

    LSTATUS FindKey(KeyId from, std::u16string_view path, KeyId& key);
    LSTATUS CreateKey(KeyId from, std::u16string_view path, KeyId& key, bool& created);
    LSTATUS Read(KeyId key, std::u16string_view name, RegistryValue& value);
    LSTATUS Write(KeyId key, std::u16string_view name, DWORD type, std::string_view bytes);
    LSTATUS RemoveValue(KeyId key, std::u16string_view name);
    LSTATUS RemoveKey(KeyId from, std::u16string_view path);  // ERROR_ACCESS_DENIED when there are keys below
    LSTATUS RemoveTree(KeyId from, std::u16string_view path);

    // The numbered ones in the order of their folded names; ERROR_NO_MORE_ITEMS behind the last.
    LSTATUS KeyAt(KeyId key, DWORD index, std::u16string& name);
    LSTATUS ValueAt(KeyId key, DWORD index, std::u16string& name, RegistryValue& value);
    LSTATUS Count(KeyId key, KeyCounts& counts);

    LSTATUS Exists(KeyId key);  // ERROR_KEY_DELETED

private:
    LSTATUS CheckLayout();
    LSTATUS LayOut();
    LSTATUS Child(KeyId parent, std::u16string_view name, KeyId& key);
    LSTATUS AddChild(KeyId parent, std::u16string_view name, KeyId& key);
    LSTATUS RemoveRow(KeyId key);

    Database database_;
    Statement find_key_{"SELECT id, \"check\" FROM keys WHERE parent = ? AND folded = ?"};
    Statement add_key_{"INSERT OR REPLACE INTO keys (parent, folded, id, name, \"check\") VALUES (?, ?, ?, ?, ?)"};
    Statement key_exists_{"SELECT 1 FROM keys WHERE id = ?"};
    Statement read_value_{"SELECT type, data, \"check\" FROM entries WHERE key = ? AND folded = ?"};
    Statement write_value_{
        "INSERT INTO entries (key, folded, name, type, data, \"check\") SELECT ?1, ?2, ?3, ?4, ?5, ?6"
        " WHERE ?1 = 0 OR EXISTS (SELECT 1 FROM keys WHERE id = ?1)"
        " ON CONFLICT (key, folded) DO UPDATE SET type = excluded.type, data = excluded.data, \"check\" = excluded.\"check\""};
    Statement remove_value_{"DELETE FROM entries WHERE key = ? AND folded = ?"};
    Statement has_child_{"SELECT 1 FROM keys WHERE parent = ? LIMIT 1"};
    Statement remove_key_{"DELETE FROM keys WHERE id = ?"};
    Statement remove_values_{"DELETE FROM entries WHERE key = ?"};
    // UNION, not UNION ALL: rows that lead in a circle end it.
    Statement remove_values_below_{
        "WITH RECURSIVE below (id) AS (SELECT ? UNION SELECT keys.id FROM keys JOIN below ON keys.parent = below.id)"
        " DELETE FROM entries WHERE key IN below"};
    Statement remove_keys_below_{
        "WITH RECURSIVE below (id) AS (SELECT ?1 UNION SELECT keys.id FROM keys JOIN below ON keys.parent = below.id)"
        " DELETE FROM keys WHERE id IN below AND (?2 OR id <> ?1)"};
    Statement key_at_{"SELECT name, folded FROM keys WHERE parent = ? ORDER BY folded LIMIT 1 OFFSET ?"};
    Statement value_at_{"SELECT name, folded FROM entries WHERE key = ? ORDER BY folded LIMIT 1 OFFSET ?"};
    Statement count_keys_{"SELECT count(*), max(length(CAST(name AS BLOB))) / 2 FROM keys WHERE parent = ?"};
    Statement count_values_{"SELECT count(*), max(length(CAST(name AS BLOB))) / 2, max(length(data)) FROM entries WHERE key = ?"};
    Statement* const statements_[15] = {&find_key_,          &add_key_,   &key_exists_, &read_value_,    &write_value_,
                                        &remove_value_,      &has_child_, &remove_key_, &remove_values_, &remove_values_below_,
                                        &remove_keys_below_, &key_at_,    &value_at_,   &count_keys_,    &count_values_};
};

// Simple case folding, unit by unit: how names are compared.
std::u16string FoldedName(std::u16string_view name);

}  // namespace kawin
