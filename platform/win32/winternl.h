#pragma once

// The native calls of the system interface that the layer offers.

#include "files/nt_open.h"
