#pragma once

// libdw of elfutils, which reads symbol tables and DWARF. It is loaded when a stack is first named, so that programs without
// errors do without it and what it brings along.

#include <elfutils/libdw.h>
#include <elfutils/libdwfl.h>

namespace kawin {

#define KADATA_DW_FUNCTIONS(F)      \
    F(dwarf_attr)                   \
    F(dwarf_filesrc)                \
    F(dwarf_formudata)              \
    F(dwarf_getscopes)              \
    F(dwarf_getscopes_die)          \
    F(dwarf_getsrc_die)             \
    F(dwarf_getsrcfiles)            \
    F(dwarf_haspc)                  \
    F(dwarf_lineno)                 \
    F(dwarf_linesrc)                \
    F(dwarf_tag)                    \
    F(dwfl_addrmodule)              \
    F(dwfl_begin)                   \
    F(dwfl_build_id_find_debuginfo) \
    F(dwfl_end)                     \
    F(dwfl_linux_proc_find_elf)     \
    F(dwfl_linux_proc_report)       \
    F(dwfl_module_addrdie)          \
    F(dwfl_module_addrinfo)         \
    F(dwfl_module_info)             \
    F(dwfl_module_nextcu)           \
    F(dwfl_report_begin)            \
    F(dwfl_report_end)

struct Dw {
#define KADATA_DW_MEMBER(name) decltype(&::name) name = nullptr;
    KADATA_DW_FUNCTIONS(KADATA_DW_MEMBER)
#undef KADATA_DW_MEMBER
};

// Loaded at the first call and kept; null when it is not there or too old. Any thread; the last error stays.
const Dw* TheDw() noexcept;

}  // namespace kawin
