#pragma once

// The line that the last patient is kept in. Internal to the library.
//
//     NAMES@BIRTHDAY@NUMBER        with a patient number
//     NAMES@BIRTHDAY#EXTERNAL-ID   without one, with an external id
//     NAMES@BIRTHDAY               with neither
//
// NAMES is CPatient::GetFullName(0): "Surname, First", "Surname" without a first name, "Surname," without one but with a
// birthday. BIRTHDAY is GetBirthDayVal in decimal, or nothing.
//
// Names and external ids hold any character, so the line is parted at the first "@" behind which the rest is exactly a valid
// birthday or nothing, and then the end, "@" and a number, or "#" and anything. That reads back every patient but these, whose
// line is that of another one:
//   - a surname with ", " in it: the rest counts to the first name; and one that ends with "," where there is a birthday but no
//     first name, as it is then written like its neighbour without the comma;
//   - names with "@#", or with "@", a valid birthday and "#", in them;
//   - names that end with "@", or with "@" and a valid birthday, in front of a birthday or an external id that makes the rest
//     look like a number ("A, B@" born 1980-01-31 is "A, B@@19800131", as is patient 19800131 "A, B").

#include <kadata/patient.h>

#include "registry_values.h"

namespace kadata::settings {

CString PatientToText(const CPatient& patient);

// A line of another form is taken for names alone, up to its first "@"; an empty one gives an empty patient.
CPatient PatientFromText(TextView line);

}  // namespace kadata::settings
