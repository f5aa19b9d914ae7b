#pragma once

// Splitting a command line.

#include "windows.h"

#include "process/command_line.h"
