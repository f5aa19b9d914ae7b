#include "symbol_session.h"

#include <dwarf.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

namespace kawin {
namespace {

using Scopes = std::unique_ptr<Dwarf_Die[], decltype(&std::free)>;

}  // namespace

SymbolSession::SymbolSession(const Dw& dw) noexcept : dw_(dw) {
    callbacks_.find_elf = dw.dwfl_linux_proc_find_elf;
    callbacks_.find_debuginfo = dw.dwfl_build_id_find_debuginfo;  // looks on this machine only
    session_ = dw.dwfl_begin(&callbacks_);
    if (session_ != nullptr) {
        dw.dwfl_report_begin(session_);
        dw.dwfl_linux_proc_report(session_, getpid());  // a failure leaves a session without modules
        dw.dwfl_report_end(session_, nullptr, nullptr);
    }
}

SymbolSession::~SymbolSession() {
    dw_.dwfl_end(session_);
}

RawNames SymbolSession::Find(DWORD64 address) const noexcept {
    Dwfl_Module* const module = session_ == nullptr ? nullptr : dw_.dwfl_addrmodule(session_, address);
    if (module == nullptr) {
        return {};
    }
    RawNames names;
    Dwarf_Addr begin = 0;
    dw_.dwfl_module_info(module, nullptr, &begin, nullptr, nullptr, nullptr, nullptr, nullptr);
    names.module_base = begin;
    GElf_Off offset = 0;
    GElf_Sym symbol{};
    names.symbol = dw_.dwfl_module_addrinfo(module, address, &offset, &symbol, nullptr, nullptr, nullptr);
    names.symbol_base = address - offset;
    if (const std::optional<Line> line = LineOf(module, address)) {
        names.file = line->file;
        names.line = line->number;
    }
    return names;
}

// By the table of addresses where the compiler has written one, which also gives the unit before a gap; else by looking at every
// unit.
Dwarf_Die* SymbolSession::UnitOf(Dwfl_Module* module, Dwarf_Addr address, Dwarf_Addr& bias) const noexcept {
    Dwarf_Die* unit = dw_.dwfl_module_addrdie(module, address, &bias);
    if (unit != nullptr && dw_.dwarf_haspc(unit, address - bias) > 0) {
        return unit;
    }
    unit = nullptr;
    do {
        unit = dw_.dwfl_module_nextcu(module, unit, &bias);
    } while (unit != nullptr && dw_.dwarf_haspc(unit, address - bias) <= 0);
    return unit;
}

std::optional<SymbolSession::Line> SymbolSession::LineOf(Dwfl_Module* module, Dwarf_Addr address) const noexcept {
    Dwarf_Addr bias = 0;
    Dwarf_Die* const unit = UnitOf(module, address, bias);
    if (unit == nullptr) {
        return {};
    }
    if (const std::optional<Line> call = CallOfInlined(unit, address - bias)) {
        return call;
    }
    Dwarf_Line* const line = dw_.dwarf_getsrc_die(unit, address - bias);
    int number = 0;
    const char* const file = line == nullptr ? nullptr : dw_.dwarf_linesrc(line, nullptr, nullptr);
    if (file == nullptr || dw_.dwarf_lineno(line, &number) != 0 || number <= 0) {
        return {};
    }
    return Line{file, static_cast<DWORD>(number)};
}

// Where the function that the symbol names has called what was put into it; nothing when the code is its own.
std::optional<SymbolSession::Line> SymbolSession::CallOfInlined(Dwarf_Die* unit, Dwarf_Addr address) const noexcept {
    Dwarf_Die* found = nullptr;
    const int scopes_at_address = dw_.dwarf_getscopes(unit, address, &found);
    const Scopes innermost(found, &std::free);
    if (scopes_at_address <= 0) {
        return {};
    }
    found = nullptr;
    const int count = dw_.dwarf_getscopes_die(innermost.get(), &found);
    const Scopes nested(found, &std::free);
    for (int i = count - 1; i >= 0; --i) {  // from outside
        if (dw_.dwarf_tag(&nested[static_cast<std::size_t>(i)]) == DW_TAG_inlined_subroutine) {
            return CallOf(unit, &nested[static_cast<std::size_t>(i)]);
        }
    }
    return {};
}

std::optional<SymbolSession::Line> SymbolSession::CallOf(Dwarf_Die* unit, Dwarf_Die* inlined) const noexcept {
    Dwarf_Files* files = nullptr;
    std::size_t count = 0;
    const DWORD number = Number(inlined, DW_AT_call_line);
    if (number == 0 || dw_.dwarf_getsrcfiles(unit, &files, &count) != 0) {
        return {};
    }
    const char* const file = dw_.dwarf_filesrc(files, Number(inlined, DW_AT_call_file), nullptr, nullptr);
    return file == nullptr ? std::nullopt : std::optional(Line{file, number});
}

// 0 when there is none.
DWORD SymbolSession::Number(Dwarf_Die* die, unsigned attribute) const noexcept {
    Dwarf_Attribute found{};
    Dwarf_Word number = 0;
    const bool there = dw_.dwarf_attr(die, attribute, &found) != nullptr && dw_.dwarf_formudata(&found, &number) == 0;
    return there ? static_cast<DWORD>(number) : 0;
}

}  // namespace kawin
