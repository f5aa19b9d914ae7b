#pragma once

// The two files that the demo writes, and the proof that they hold what was imported.

#include "import.h"

// patients.kda: a 32-bit count, then the patients in their archive form. Throws CFileException* and CArchiveException*.
void WriteArchive(const CString& path, const std::vector<SImported>& patients);
std::vector<CPatient> ReadArchive(const CString& path);

// patients.tpat: one database exchange record after the other. Throws CFileException*.
void WriteRecords(const CString& path, const std::vector<SImported>& patients);
std::vector<tagTPATIENT> ReadRecords(const CString& path);

// How many of the patients are not found in the files as they were written; each is logged.
int CompareStored(const std::vector<SImported>& patients, const std::vector<CPatient>& archived,
                  const std::vector<tagTPATIENT>& records);
