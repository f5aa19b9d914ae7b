#pragma once

// The shell's part that is offered here; this header only gathers it.

#include "files/special_folders.h"
#include "windows.h"
