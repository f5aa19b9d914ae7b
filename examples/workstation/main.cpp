// A small workstation host: imports the patients that practice systems hand over, keeps them, and logs what was wrong.
//
//     workstation [--all] [--check] [DATA_FOLDER [OUTPUT_FOLDER]]
//
// --all     lists every patient, not only those with remarks
// --check   writes nothing: compares the files that an earlier run, or another system's, left in the output folder

#include <kadata/directory.h>
#include <kadata/log.h>
#include <shellapi.h>

#include <cstdio>
#include <exception>

#include "console.h"
#include "store.h"

namespace {

struct SArguments {
    CString data = _T("examples\\workstation\\data");
    CString output = _T("build\\demo");
    bool all = false;
    bool check = false;
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
        } else {
            (place++ == 0 ? arguments.data : arguments.output) = text;
        }
    }
    LocalFree(texts);
    return arguments;
}

int Run(const SArguments& arguments) {
    const SImport import = ImportFolder(arguments.data);
    if (import.patients.empty()) {
        PrintError(_T("no patient could be read from \"") + arguments.data + _T("\""));
        return 1;
    }
    const CString archivePath = CDirectory::Concat(arguments.output, _T("patients.kda"));
    const CString recordsPath = CDirectory::Concat(arguments.output, _T("patients.tpat"));
    if (!arguments.check) {
        CDirectory::Make(arguments.output);
        WriteArchive(archivePath, import.patients);
        WriteRecords(recordsPath, import.patients);
    }
    const int different = CompareStored(import.patients, ReadArchive(archivePath), ReadRecords(recordsPath));

    PrintFiles(import);
    PrintPatients(import, arguments.all);
    PrintSummary(import, different, archivePath, recordsPath);
    CLog::Print(CLogInfo(), _T("%d patients imported from %d files"), static_cast<int>(import.patients.size()),
                static_cast<int>(import.files.size()));
    return different == 0 ? 0 : 1;
}

}  // namespace

int main() {
    OpenConsole();
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
