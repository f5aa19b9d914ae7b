#pragma once

// The whole public face of the library.

#include <kadata/directory.h>
#include <kadata/kalido_object.h>
#include <kadata/log.h>
#include <kadata/patient.h>
#include <kadata/ref_count.h>
#include <kadata/registry.h>
#include <kadata/singleton.h>
