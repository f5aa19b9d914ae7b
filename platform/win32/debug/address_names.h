#pragma once

// What is known of an address of code in this process.

#include <memory>
#include <string>
#include <unordered_map>

#include "../base/types.h"

namespace kawin {

struct AddressNames {
    DWORD64 module_base = 0;  // 0: in no module
    DWORD64 symbol_base = 0;
    std::u16string symbol;  // empty when there is none
    std::u16string file;    // likewise
    DWORD line = 0;
};

class SymbolSession;

// Names addresses and keeps the answers. Not for several threads at once.
class AddressBook {
public:
    AddressBook();
    AddressBook(const AddressBook&) = delete;
    AddressBook& operator=(const AddressBook&) = delete;
    ~AddressBook();

    // Forgets everything when a module has come or gone since the last call.
    void FollowModules();
    // Whether C++ names are made readable.
    void SetReadable(bool readable);

    // Valid until the next call of any of these.
    const AddressNames& Find(DWORD64 address);

private:
    struct ModuleChanges {
        unsigned long long loaded = 0;
        unsigned long long unloaded = 0;
        bool operator==(const ModuleChanges&) const = default;
    };
    static ModuleChanges CountChanges();
    AddressNames Name(DWORD64 address);

    bool readable_ = false;
    ModuleChanges changes_;
    std::unique_ptr<SymbolSession> session_;  // null before the first question after a change, and without libdw
    std::unordered_map<DWORD64, AddressNames> known_;
};

}  // namespace kawin
