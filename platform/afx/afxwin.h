#pragma once

// Windows, dialogs, drawing and the application object. This header only gathers them.

#include "afx.h"
#include "afx_app.h"
#include "afx_cmd_target.h"
#include "afx_controls.h"
#include "afx_dc.h"
#include "afx_dialog.h"
#include "afx_frame_wnd.h"
#include "afx_gdi.h"
#include "afx_menu.h"
#include "afx_message_map.h"
#include "afx_resource.h"
#include "afx_thread_state.h"
#include "afx_window_dc.h"
#include "afx_wnd.h"
#include "atltypes.h"
