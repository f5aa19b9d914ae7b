#pragma once

// What a practice sends in one ZIP archive: its patients and their pictures.

#include <afx.h>

struct SUnpacked {
    int files = 0;
    int refused = 0;  // their names lead out of the folder, or are none; they go to the log
};

// Writes the files of the archive `path` into `folder`, which is made, and whose earlier content is removed. Throws a
// CFileException when `path` is no archive that can be read, and when a file cannot be written.
SUnpacked UnpackArchive(const CString& path, const CString& folder);
