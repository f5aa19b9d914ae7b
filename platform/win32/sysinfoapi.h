#pragma once

// What the system tells of itself; this header only gathers it.

#include "process/versions.h"
#include "windows.h"
