// A small workstation host: imports the patients that practice systems hand over, keeps them, and logs what was wrong.
//
//     workstation [--all] [DATA_FOLDER [OUTPUT_FOLDER]]

#include <kadata/directory.h>
#include <kadata/log.h>

#include <cstdio>
#include <exception>

#include "console.h"
#include "store.h"

namespace {

struct SArguments {
    CString data = _T("examples\\workstation\\data");
    CString output = _T("build\\demo");
    bool all = false;
};

SArguments ReadArguments(int count, char** texts) {
    SArguments arguments;
    int place = 0;
    for (int i = 1; i < count; ++i) {
        const CString text = FromConsole(texts[i]);
        if (text == _T("--all")) {
            arguments.all = true;
        } else {
            (place++ == 0 ? arguments.data : arguments.output) = text;
        }
    }
    return arguments;
}

int Run(const SArguments& arguments) {
    const SImport import = ImportFolder(arguments.data);
    if (import.patients.empty()) {
        PrintError(_T("no patient could be read from \"") + arguments.data + _T("\""));
        return 1;
    }
    CDirectory::Make(arguments.output);
    const CString archivePath = CDirectory::Concat(arguments.output, _T("patients.kda"));
    const CString recordsPath = CDirectory::Concat(arguments.output, _T("patients.tpat"));
    WriteArchive(archivePath, import.patients);
    WriteRecords(recordsPath, import.patients);
    const int different = CompareStored(import.patients, ReadArchive(archivePath), ReadRecords(recordsPath));

    PrintFiles(import);
    PrintPatients(import, arguments.all);
    PrintSummary(import, different, archivePath, recordsPath);
    CLog::Print(CLogInfo(), _T("%d patients imported from %d files"), static_cast<int>(import.patients.size()),
                static_cast<int>(import.files.size()));
    return different == 0 ? 0 : 1;
}

}  // namespace

int main(int count, char** texts) {
    CLog::SetLogConfig({15, 20, 1000000});
    try {
        return Run(ReadArguments(count, texts));
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
