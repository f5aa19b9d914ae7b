// A folder of 10,000 files: the names that match a pattern, one in a hundred; and all of them with their size and time.

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

void KaDataNames(benchmark::State& state) {
    const CString folder(TheFolder().Path().u16string().c_str());
    for (auto _ : state) {
        CStringArray names;
        benchmark::DoNotOptimize(
            CDirectory::ListFiles(folder, names, _T("*.log"), ~static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY)));
    }
}

void KaDataDetails(benchmark::State& state) {
    const CString pattern = CDirectory::Concat(TheFolder().Path().u16string().c_str(), _T("*.*"));
    for (auto _ : state) {
        WIN32_FIND_DATAW found;
        const HANDLE find =
            FindFirstFileExW(pattern, FindExInfoBasic, &found, FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
        do {
            benchmark::DoNotOptimize(found);
        } while (FindNextFileW(find, &found));
        FindClose(find);
    }
}

// Without regard to case, as our patterns are.
bool HasExtension(const std::string& name, const std::string& extension) {
    return name.size() >= extension.size() && std::equal(extension.rbegin(), extension.rend(), name.rbegin(), [](char a, char b) {
               return a == std::tolower(static_cast<unsigned char>(b));
           });
}

void StandardNames(benchmark::State& state) {
    const fs::path& folder = TheFolder().Path();
    for (auto _ : state) {
        std::vector<std::u16string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            if (HasExtension(entry.path().filename().native(), ".log") && entry.is_regular_file()) {
                names.push_back(entry.path().filename().u16string());
            }
        }
        benchmark::DoNotOptimize(names.data());
    }
}

void StandardDetails(benchmark::State& state) {
    const fs::path& folder = TheFolder().Path();
    for (auto _ : state) {
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            benchmark::DoNotOptimize(entry.path().filename().u16string());
            benchmark::DoNotOptimize(entry.is_regular_file());
            benchmark::DoNotOptimize(entry.file_size());
            benchmark::DoNotOptimize(entry.last_write_time());
        }
    }
}

BENCHMARK(KaDataNames)->Name("list/kadata/names_by_pattern");
BENCHMARK(StandardNames)->Name("list/std_filesystem/names_by_pattern");
BENCHMARK(KaDataDetails)->Name("list/kadata/all_with_size_and_time");
BENCHMARK(StandardDetails)->Name("list/std_filesystem/all_with_size_and_time");

}  // namespace
