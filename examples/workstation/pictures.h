#pragma once

// A patient's pictures: the files of DATA\pictures\NUMBER, NUMBER being the practice's number of the patient.

#include <kadata/patient.h>
#include <kadata/record_arrays.h>

// Before pictures are shown: the names of their kinds, from the program's resources.
void NamePictureTypes();

// Appends a record for each file, in the order of their names; a file that is no picture is shown under its name.
void FindPictures(const CString& dataFolder, const CPatient& patient, CImageInfoArray& pictures);
