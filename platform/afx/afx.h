#pragma once

// The foundation classes but for collections (afxcoll.h, afxtempl.h) and locks (afxmt.h). This header only gathers them.

#include <windows.h>

#include "afx_archive.h"
#include "afx_exception.h"
#include "afx_file.h"
#include "afx_format.h"
#include "afx_object.h"
#include "afx_string.h"
#include "afx_time.h"
