#pragma once

// Stores one patient, as the user asks for it.

#include <kadata/patient.h>

// As the archive "<directory name>.kda" in `folder`, which is made. Throws CTarvoException* for the user: IDS_NO_BIRTHDAY for a
// patient without a date of birth, IDS_NOT_SAVED with the reason when the file cannot be written.
void SavePatient(const CPatient& patient, const CString& folder);
