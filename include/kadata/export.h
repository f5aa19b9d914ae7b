#pragma once

// KADATA_API marks the classes and functions that the dynamic library offers.
#include <kadata_export.h>
