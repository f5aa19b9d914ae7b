#pragma once

#include "controls.h"

namespace kawin {

LRESULT CALLBACK StaticProcedure(HWND control, UINT message, WPARAM wparam, LPARAM lparam);

}  // namespace kawin
