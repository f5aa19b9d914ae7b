#include "address_names.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <link.h>

#include <cstdlib>
#include <string_view>

#include "../base/utf.h"
#include "symbol_session.h"

namespace kawin {
namespace {

constexpr std::size_t kMostKnown = 4096;

// Where the parameters of a demangled function begin; npos when it has none. What follows them are qualifiers.
std::size_t FindParameters(std::string_view text) {
    std::size_t at = text.rfind(')');
    for (int open = 1; at != text.npos && at > 0 && open > 0;) {
        --at;
        open += text[at] == ')' ? 1 : text[at] == '(' ? -1 : 0;
    }
    return at == 0 ? text.npos : at;
}

// A C++ function by its name without parameters, as on Windows; what is no name of C++ as it stands.
std::u16string Readable(const char* symbol) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> text(abi::__cxa_demangle(symbol, nullptr, nullptr, &status), &std::free);
    return FromUtf8(text == nullptr ? std::string_view(symbol)
                                    : std::string_view(text.get()).substr(0, FindParameters(text.get())));
}

// What the dynamic linker knows, for when there is no libdw: modules and the functions that they export.
RawNames NamesOfLinker(DWORD64 address) {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(address), &info) == 0) {
        return {};
    }
    RawNames names;
    names.module_base = reinterpret_cast<DWORD64>(info.dli_fbase);
    names.symbol = info.dli_sname;
    names.symbol_base = reinterpret_cast<DWORD64>(info.dli_saddr);
    return names;
}

}  // namespace

AddressBook::AddressBook() = default;
AddressBook::~AddressBook() = default;

AddressBook::ModuleChanges AddressBook::CountChanges() {
    ModuleChanges changes;
    dl_iterate_phdr(
        [](dl_phdr_info* module, std::size_t /*size*/, void* data) {
            *static_cast<ModuleChanges*>(data) = {module->dlpi_adds, module->dlpi_subs};
            return 1;  // every module tells the same
        },
        &changes);
    return changes;
}

void AddressBook::FollowModules() {
    TheDw();  // comes itself with others
    const ModuleChanges now = CountChanges();
    if (!(now == changes_)) {
        known_.clear();
        session_.reset();
        changes_ = now;
    }
}

void AddressBook::SetReadable(bool readable) {
    if (readable != readable_) {
        known_.clear();
        readable_ = readable;
    }
}

const AddressNames& AddressBook::Find(DWORD64 address) {
    const auto known = known_.find(address);
    if (known != known_.end()) {
        return known->second;
    }
    if (known_.size() >= kMostKnown) {
        known_.clear();
    }
    return known_.emplace(address, Name(address)).first->second;
}

AddressNames AddressBook::Name(DWORD64 address) {
    if (session_ == nullptr && TheDw() != nullptr) {
        session_ = std::make_unique<SymbolSession>(*TheDw());
    }
    const RawNames raw = session_ != nullptr ? session_->Find(address) : NamesOfLinker(address);
    AddressNames names{raw.module_base, raw.symbol_base, {}, {}, raw.line};
    if (raw.symbol != nullptr) {
        names.symbol = readable_ ? Readable(raw.symbol) : FromUtf8(raw.symbol);
    }
    if (raw.file != nullptr) {
        names.file = FromUtf8(raw.file);
    }
    return names;
}

}  // namespace kawin
