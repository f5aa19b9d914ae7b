#pragma once

// The list of processes.

#include "windows.h"

#include "process/process_list.h"
