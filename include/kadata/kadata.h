#pragma once

// The whole public face of the library.

#include <kadata/archive.h>
#include <kadata/call_stack.h>
#include <kadata/data_loggers.h>
#include <kadata/directory.h>
#include <kadata/image_info.h>
#include <kadata/kalido_object.h>
#include <kadata/log.h>
#include <kadata/lua_config.h>
#include <kadata/lua_engine.h>
#include <kadata/lua_event_handler.h>
#include <kadata/math_expression.h>
#include <kadata/patient.h>
#include <kadata/progress_calculator.h>
#include <kadata/read_write_lock.h>
#include <kadata/record_arrays.h>
#include <kadata/ref_count.h>
#include <kadata/registry.h>
#include <kadata/singleton.h>
#include <kadata/skin.h>
#include <kadata/skin_dialog.h>
#include <kadata/skin_info.h>
#include <kadata/skin_manager.h>
#include <kadata/skin_message_box.h>
#include <kadata/skin_window.h>
#include <kadata/stop_watch.h>
#include <kadata/tarvo_exception.h>
#include <kadata/theme_util.h>
#include <kadata/transparent_bitmap.h>
#include <kadata/utils.h>
#include <kadata/version_info.h>
#include <kadata/zip.h>
