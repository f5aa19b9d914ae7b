#pragma once

// The parts of messages' parameters (GET_X_LPARAM, GET_Y_LPARAM).

#include "desktop/window_messages.h"
