#pragma once

// Our log and its peers behind one face: open once, then one message in the file before Write returns.

#include <memory>
#include <string>

class ILogWriter {
public:
    virtual ~ILogWriter() = default;
    virtual void Write(int number) = 0;
};

inline constexpr const char* kLogWriters[] = {"kadata", "spdlog", "log4cplus"};

// The files go to `folder`, but for kadata, whose front end writes beside the executable.
std::unique_ptr<ILogWriter> OpenLog(const std::string& who, const std::string& folder);

// Writes `count` messages in a process of its own once a byte arrives on the standard input; the program's --log-child.
int RunLogChild(const std::string& who, const std::string& folder, int count);
