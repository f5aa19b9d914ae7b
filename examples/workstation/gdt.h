#pragma once

// Reader for GDT 2.1, the exchange of German practice systems.
//
// A file is a row of lines: three digits of length (of the whole line with its CR LF), four digits of field number, content, CR
// LF. Field 8000 begins a record; the patient's master data are record kind 6301. Field 9206 names the character set of its
// record: 1 seven-bit, 2 code page 437 (also when it is missing), 3 code page 1252.

#include <afx.h>

#include <string_view>
#include <vector>

struct SGdtPatient {
    int line = 0;       // of the file, where the record begins; 1 is the first
    CString number;     // 3000
    CString surname;    // 3101
    CString firstName;  // 3102
    CString birthday;   // 3103, DDMMYYYY as it stands
};

struct SGdtProblem {
    int line = 0;
    CString text;
};

struct SGdtFile {
    std::vector<SGdtPatient> patients;
    std::vector<SGdtProblem> problems;
    int damaged = 0;  // records that were left out because one of their lines could not be read
};

// Reads all records. A damaged line costs the record that it stands in, and reading goes on with the next record.
SGdtFile ReadGdt(std::string_view bytes);
