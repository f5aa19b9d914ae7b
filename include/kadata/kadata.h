#pragma once

// The whole public face of the library.

#include <kadata/directory.h>
#include <kadata/image_info.h>
#include <kadata/kalido_object.h>
#include <kadata/log.h>
#include <kadata/patient.h>
#include <kadata/progress_calculator.h>
#include <kadata/read_write_lock.h>
#include <kadata/record_arrays.h>
#include <kadata/ref_count.h>
#include <kadata/registry.h>
#include <kadata/singleton.h>
#include <kadata/skin.h>
#include <kadata/skin_info.h>
#include <kadata/skin_manager.h>
#include <kadata/stop_watch.h>
