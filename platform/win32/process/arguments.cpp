#include "arguments.h"

#include <stdlib.h>
#include <string.h>

#include <algorithm>

#include "../base/utf.h"
#include "../modules/modules.h"
#include "../text/messages.h"
#include "../text/no_throw.h"
#include "command_line.h"

namespace kawin {
namespace {

bool IsBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t';
}

void SkipBlanks(std::u16string_view& line) {
    line.remove_prefix(static_cast<std::size_t>(std::find_if_not(line.begin(), line.end(), IsBlank) - line.begin()));
}

std::u16string TakeProgram(std::u16string_view& line) {
    std::u16string program;
    bool quoted = false;
    while (!line.empty() && (quoted || !IsBlank(line.front()))) {
        if (line.front() == u'"') {
            quoted = !quoted;
        } else {
            program += line.front();
        }
        line.remove_prefix(1);
    }
    return program;
}

std::size_t TakeBackslashes(std::u16string_view& line) {
    const std::size_t count = std::min(line.find_first_not_of(u'\\'), line.size());
    line.remove_prefix(count);
    return count;
}

// One argument; the state says whether blanks belong to it.
class ArgumentReader {
public:
    std::u16string Take(std::u16string_view& line) {
        while (!line.empty() && (quoted_ || !IsBlank(line.front()))) {
            const std::size_t backslashes = TakeBackslashes(line);
            if (!line.empty() && line.front() == u'"') {
                text_.append(backslashes / 2, u'\\');
                TakeQuote(line, backslashes % 2 != 0);
            } else {
                text_.append(backslashes, u'\\');
                TakePlain(line);
            }
        }
        return text_;
    }

private:
    void TakeQuote(std::u16string_view& line, bool escaped) {
        line.remove_prefix(1);
        const bool doubled = !escaped && quoted_ && line.starts_with(u'"');
        if (escaped || doubled) {
            text_ += u'"';
        } else {
            quoted_ = !quoted_;
        }
        line.remove_prefix(doubled ? 1 : 0);
    }

    void TakePlain(std::u16string_view& line) {
        if (!line.empty() && (quoted_ || !IsBlank(line.front()))) {
            text_ += line.front();
            line.remove_prefix(1);
        }
    }

    std::u16string text_;
    bool quoted_ = false;
};

// Backslashes double before a quotation mark, the closing one too.
std::u16string Quote(std::u16string_view argument) {
    if (!argument.empty() && argument.find_first_of(u" \t\n\v\"") == argument.npos) {
        return std::u16string(argument);
    }
    std::u16string quoted = u"\"";
    while (!argument.empty()) {
        const std::size_t backslashes = TakeBackslashes(argument);
        const bool before_quote = argument.empty() || argument.front() == u'"';
        quoted.append(before_quote ? backslashes * 2 : backslashes, u'\\');
        if (!argument.empty()) {
            quoted += argument.front() == u'"' ? u"\\\"" : std::u16string(1, argument.front());
            argument.remove_prefix(1);
        }
    }
    return quoted + u'"';
}

std::u16string OwnPath() {
    std::u16string path(MAX_PATH * 128, u'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::size_t BlockSize(const std::vector<std::u16string>& arguments) {
    std::size_t size = (arguments.size() + 1) * sizeof(LPWSTR);
    for (const std::u16string& argument : arguments) {
        size += (argument.size() + 1) * sizeof(WCHAR);
    }
    return size;
}

// The list, and behind it the texts, in one block.
LPWSTR* MakeList(const std::vector<std::u16string>& arguments) {
    auto* const list = static_cast<LPWSTR*>(LocalAlloc(0, BlockSize(arguments)));
    if (list == nullptr) {
        return nullptr;
    }
    auto* text = reinterpret_cast<LPWSTR>(list + arguments.size() + 1);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        list[i] = text;
        text = std::copy_n(arguments[i].c_str(), arguments[i].size() + 1, text);
    }
    list[arguments.size()] = nullptr;
    return list;
}

}  // namespace

std::vector<std::u16string> SplitCommandLine(std::u16string_view line) {
    std::vector<std::u16string> arguments{TakeProgram(line)};
    for (SkipBlanks(line); !line.empty(); SkipBlanks(line)) {
        arguments.push_back(ArgumentReader().Take(line));
    }
    return arguments;
}

std::u16string JoinCommandLine(const std::vector<std::u16string>& arguments) {
    std::u16string line;
    for (const std::u16string& argument : arguments) {
        line += line.empty() ? u"" : u" ";
        line += Quote(argument);
    }
    return line;
}

}  // namespace kawin

LPWSTR* CommandLineToArgvW(LPCWSTR command_line, int* count) noexcept {
    return kawin::NoThrow([&]() -> LPWSTR* {
        if (command_line == nullptr || count == nullptr) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return nullptr;
        }
        const std::vector<std::u16string> arguments =
            *command_line != 0 ? kawin::SplitCommandLine(command_line) : std::vector{kawin::OwnPath()};
        *count = static_cast<int>(arguments.size());
        return kawin::MakeList(arguments);
    });
}
