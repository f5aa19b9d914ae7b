// A small workstation host: imports the patients that practice systems hand over, keeps them, logs what was wrong, and shows the
// pictures of one of them: of the one who is asked for, else the last one, else the first who has any. The patient and the data
// folder are remembered for the next time.
//
//     workstation [--all] [--check] [--patient NUMBER] [DATA_FOLDER | ARCHIVE.zip [OUTPUT_FOLDER]]
//     workstation --window [DATA_FOLDER]
//     workstation --pictures FOLDER [DATA_FOLDER]
//     workstation --formula TEXT [X [Y [Z]]]
//     workstation --config
//
// --all     lists every patient, not only those with remarks
// --check   writes nothing: compares the files that an earlier run, or another system's, left in the output folder
// --window  shows the patients in a skinned window; a screen of double density gets the double skin. The exit status is
//           3 when there is no display that answers
// --pictures writes PNG files of that window, of the skin and of message boxes, in both languages and sizes, without a screen
// --formula  prints the value of a formula, where X, Y and Z stand for v1, v2 and v3; nothing else is done
// --config  prints the values of the configuration, which scripts in the folder LuaConfig beside the program may change

#include <kadata/directory.h>
#include <kadata/log.h>
#include <kadata/registry.h>
#include <shellapi.h>

#include <cstdio>
#include <exception>
#include <optional>
#include <vector>

#include "configuration.h"
#include "console.h"
#include "desktop.h"
#include "formula_line.h"
#include "pictures.h"
#include "store.h"
#include "unpack.h"

namespace {

struct SArguments {
    CString data;  // empty: the remembered one
    CString output = _T("build\\demo");
    CString patient;   // the practice's number; empty: whoever is found
    CString pictures;  // the folder to write pictures to; empty: none are wanted
    std::optional<CString> formula;
    std::vector<CString> values;  // of the formula's variables
    bool all = false;
    bool check = false;
    bool window = false;
    bool config = false;
};

// Not those of main(): they cannot hold every character on every system.
SArguments ReadArguments() {
    SArguments arguments;
    int count = 0;
    int place = 0;
    LPWSTR* const texts = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) {
        const CString text = texts[i];
        if (text == _T("--all")) {
            arguments.all = true;
        } else if (text == _T("--check")) {
            arguments.check = true;
        } else if (text == _T("--window")) {
            arguments.window = true;
        } else if (text == _T("--config")) {
            arguments.config = true;
        } else if (text == _T("--patient") && i + 1 < count) {
            arguments.patient = texts[++i];
        } else if (text == _T("--pictures") && i + 1 < count) {
            arguments.pictures = texts[++i];
        } else if (text == _T("--formula") && i + 1 < count) {
            arguments.formula = texts[++i];
        } else if (arguments.formula) {
            arguments.values.push_back(text);
        } else {
            (place++ == 0 ? arguments.data : arguments.output) = text;
        }
    }
    LocalFree(texts);
    return arguments;
}

// An archive is unpacked into the output folder, unless an earlier run has done that.
CString DataFolder(const CKalidoRegistry& settings, const SArguments& arguments) {
    if (CDirectory::HasFileExtension(arguments.data, _T(".zip")) != 0) {
        const CString unpacked = CDirectory::Concat(arguments.output, _T("unpacked"));
        if (!arguments.check) {
            UnpackArchive(arguments.data, unpacked);
        }
        return unpacked;
    }
    if (!arguments.data.IsEmpty()) {
        return arguments.data;
    }
    const CString remembered = CString(settings.GetDataPath(TRUE)).TrimRight(_T('\\'));
    return CDirectory::Exist(remembered) != 0 ? remembered : CString(_T("examples\\workstation\\data"));
}

// Whose pictures are shown, and the pictures. Without any the patient is the first of all.
CPatient ChoosePatient(const CPatientArray& patients, const CString& asked, const CPatient& last, const CString& data,
                       CImageInfoArray& pictures) {
    for (const CString& number : {asked, last.GetExtID()}) {
        CPatient found;
        if (!number.IsEmpty() && patients.FindPatientByExtID(number, found)) {
            FindPictures(data, found, pictures);
            return found;
        }
    }
    for (INT_PTR i = 0; i < patients.GetSize() && pictures.IsEmpty(); ++i) {
        FindPictures(data, patients[i], pictures);
        if (!pictures.IsEmpty()) {
            return patients[i];
        }
    }
    return patients[0];
}

void ShowPictures(CKalidoRegistry& settings, const SImport& import, const CString& asked, const CString& data) {
    CPatientArray patients;
    for (const SImported& imported : import.patients) {
        patients.Add(imported.patient);
    }
    CImageInfoArray pictures;
    const CPatient patient = ChoosePatient(patients, asked, settings.GetLastPatient(), data, pictures);
    PrintPictures(patient, pictures);
    // On a machine whose settings this user may not write, the folder has to be named each time.
    if (!settings.WriteLastPatient(patient) || !settings.WriteDataPath(CDirectory::FullPath(data))) {
        CLog::Print(CLogWarning(), _T("patient or data folder could not be remembered"));
    }
}

int Run(const SArguments& arguments) {
    if (arguments.formula) {
        return EvaluateFormula(*arguments.formula, arguments.values);
    }
    if (arguments.config) {
        return PrintConfiguration();
    }
    CKalidoRegistry settings(_T("Workstation"));
    const CString data = DataFolder(settings, arguments);
    const SImport import = ImportFolder(data);
    if (import.patients.empty()) {
        PrintError(_T("no patient could be read from \"") + data + _T("\""));
        return 1;
    }
    if (!arguments.pictures.IsEmpty()) {
        return WritePictures(import.patients, data, arguments.pictures);
    }
    if (arguments.window) {
        return RunMainWindow(import.patients, data);
    }
    const CString archivePath = CDirectory::Concat(arguments.output, _T("patients.kda"));
    const CString recordsPath = CDirectory::Concat(arguments.output, _T("patients.tpat"));
    if (!arguments.check) {
        CDirectory::Make(arguments.output);
        WriteArchive(archivePath, import.patients);
        WriteRecords(recordsPath, import.patients);
    }
    const int different = CompareStored(import.patients, ReadArchive(archivePath), ReadRecords(recordsPath));

    PrintLastPatient(settings.GetLastPatient());
    PrintFiles(import);
    PrintPatients(import, arguments.all);
    PrintSummary(import, different, archivePath, recordsPath);
    ShowPictures(settings, import, arguments.patient, data);
    CLog::Print(CLogInfo(), _T("%d patients imported from %d files"), static_cast<int>(import.patients.size()),
                static_cast<int>(import.files.size()));
    return different == 0 ? 0 : 1;
}

}  // namespace

int main() {
    OpenConsole();
    NamePictureTypes();
    CLog::SetLogConfig({15, 20, 1000000});
    try {
        return Run(ReadArguments());
    } catch (CException* exception) {
        TCHAR text[512] = {};
        exception->GetErrorMessage(text, static_cast<UINT>(std::size(text)));
        exception->Delete();
        CLog::Print(CLogError(CLogError::CATCH), _T("%s"), static_cast<LPCTSTR>(text));
        PrintError(text);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "workstation: %s\n", exception.what());
    }
    return 1;
}
