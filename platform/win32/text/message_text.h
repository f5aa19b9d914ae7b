#pragma once

// A message with its inserts put in.

#include <cstdarg>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "../base/types.h"

namespace kawin {

// The arguments of a message, 8 bytes each, read in any order from a list or an array; null is none.
class MessageArguments {
public:
    MessageArguments(va_list* arguments, bool is_array) : arguments_(arguments), is_array_(is_array) {}

    std::optional<DWORD_PTR> At(std::size_t number);  // from 1

private:
    va_list* arguments_;
    bool is_array_;
    std::vector<DWORD_PTR> read_;  // what the list has given so far
};

enum class LineBreaks { Keep, Blank };
enum class Inserts { Replace, Keep };

// Nothing when an insert is ill formed or has no argument. Line breaks of the text come out as CR LF, or as blanks.
std::optional<std::u16string> ExpandMessage(std::u16string_view text, MessageArguments& arguments, Inserts inserts,
                                            LineBreaks breaks);

}  // namespace kawin
