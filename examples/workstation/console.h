#pragma once

// What the demo prints. Texts go out as UTF-8.

#include <kadata/record_arrays.h>

#include "configuration.h"
#include "import.h"

// Before the first line is printed.
void OpenConsole();

void PrintLine(const CString& text);

// One line on the error output.
void PrintError(const CString& text);

// A line for each file: its patients, how many needed a correction, how many records were damaged.
void PrintFiles(const SImport& import);

// The patients with a remark, or all of them.
void PrintPatients(const SImport& import, bool all);

void PrintSummary(const SImport& import, int different, const CString& archivePath, const CString& recordsPath);

// Who was worked on when the program ended last; nothing for a patient without a name.
void PrintLastPatient(const CPatient& patient);

// A line for each picture, or that there is none.
void PrintPictures(const CPatient& patient, const CImageInfoArray& pictures);

// A line for each value of the configuration.
void PrintValues(const std::vector<SConfigValue>& values);
