// Names of the files that match a pattern, in a folder of 10,000: one in a hundred, and all of them.

#include <benchmark/benchmark.h>
#include <kadata/directory.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

class Folder {
public:
    Folder() : m_path(fs::temp_directory_path() / ("kadata-bench-list-" + std::to_string(GetCurrentProcessId()))) {
        fs::create_directories(m_path);
        for (int i = 0; i < 10000; ++i) {
            std::ofstream(m_path / ("Scan" + std::to_string(i) + (i % 100 == 0 ? ".log" : ".dat")));
        }
    }
    ~Folder() { fs::remove_all(m_path); }
    const fs::path& Path() const { return m_path; }

private:
    fs::path m_path;
};

const Folder& TheFolder() {
    static const Folder folder;
    return folder;
}

void KaDataList(benchmark::State& state, LPCTSTR pattern) {
    const CString folder(TheFolder().Path().u16string().c_str());
    for (auto _ : state) {
        CStringArray names;
        benchmark::DoNotOptimize(CDirectory::ListFiles(folder, names, pattern, ~static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY)));
    }
}

// The extension, empty for any, without regard to case as our patterns are.
bool Matches(const std::string& name, const std::string& extension) {
    return name.size() >= extension.size() &&
           std::equal(extension.rbegin(), extension.rend(), name.rbegin(),
                      [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); });
}

void StandardList(benchmark::State& state, const std::string& extension) {
    const fs::path& folder = TheFolder().Path();
    for (auto _ : state) {
        std::vector<std::u16string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            if (Matches(entry.path().filename().native(), extension) && entry.status().type() == fs::file_type::regular) {
                names.push_back(entry.path().filename().u16string());
            }
        }
        benchmark::DoNotOptimize(names.data());
    }
}

[[maybe_unused]] const bool registered = [] {
    benchmark::RegisterBenchmark("list/kadata/some", KaDataList, _T("*.log"));
    benchmark::RegisterBenchmark("list/std_filesystem/some", StandardList, ".log");
    benchmark::RegisterBenchmark("list/kadata/all", KaDataList, _T("*.*"));
    benchmark::RegisterBenchmark("list/std_filesystem/all", StandardList, "");
    return true;
}();

}  // namespace
