#pragma once

// From what a practice system hands over to records that the database takes.

#include <kadata/patient.h>

#include <vector>

#include "gdt.h"

struct SImported {
    CString file;  // name without folder
    int line = 0;
    CPatient patient;
    std::vector<CString> remarks;  // what had to be corrected, and what the exchange record cannot hold
};

struct SImportedFile {
    CString name;
    int patients = 0;
    int corrected = 0;
    int damaged = 0;
    bool readable = true;
};

struct SImport {
    std::vector<SImported> patients;
    std::vector<SImportedFile> files;
};

// Imports every *.gdt of a folder, in the order of their names. What is wrong goes to the log with file and line.
SImport ImportFolder(const CString& folder);

// Makes one patient fit for the database and tells what that took.
SImported ImportPatient(const SGdtPatient& source);
