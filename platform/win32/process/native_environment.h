#pragma once

// The environment that the C library keeps, guarded against the layer's own changes.

#include <optional>
#include <shared_mutex>
#include <string>
#include <vector>

namespace kawin {

// Held shared by whatever makes the C library read the environment (its time zone functions do), and exclusively to change it.
std::shared_mutex& EnvironmentMutex() noexcept;

// Counts the changes that SetEnvironmentVariableW has made.
unsigned EnvironmentChanges() noexcept;

// "NAME=value" of every variable.
std::vector<std::string> CopyEnvironment();

std::optional<std::string> NativeVariable(const char* name);

}  // namespace kawin
