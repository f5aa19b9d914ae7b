#include "save_patient.h"

#include <kadata/directory.h>
#include <kadata/tarvo_exception.h>

#include "skin/skin_ids.h"
#include "store.h"

void SavePatient(const CPatient& patient, const CString& folder) {
    if (!patient.IsBirthDayValid()) {
        throw new CTarvoException(IDS_NO_BIRTHDAY, patient.GetName() + _T(", ") + patient.GetFirstName(), __FILE__, __LINE__,
                                  CTarvoException::eDefault);
    }
    const CString path = CDirectory::Concat(folder, patient.GetDirectoryName() + _T(".kda"));
    try {
        CDirectory::Make(folder);
        SImported imported;
        imported.patient = patient;
        WriteArchive(path, {imported});
    } catch (CFileException* failure) {
        const CString reason = CTarvoException::GetLastErrorMessage(static_cast<DWORD>(failure->m_lOsError));
        failure->Delete();
        throw new CTarvoException(IDS_NOT_SAVED, path + _T("\n") + reason, __FILE__, __LINE__, CTarvoException::eDefault);
    }
}
