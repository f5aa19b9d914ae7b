#pragma once

// Version information of files; this header only gathers it.

#include "resources/version_info.h"
#include "windows.h"
