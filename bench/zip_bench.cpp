// ZIP archives: all of 100 files of together 5 MB, opening included; and one of 2,000 small entries by its name, the archive kept
// open.

#include <benchmark/benchmark.h>
#include <kadata/zip.h>
#include <minizip/unzip.h>
#include <zip.h>

#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

// Lines of measured values: numbers that repeat in part, as in scans and logs.
std::string Values(std::size_t size, unsigned int seed) {
    std::mt19937 random(seed);
    std::string text;
    for (double value = 100; text.size() < size; value += static_cast<double>(random() % 2001) / 1000 - 1) {
        text += std::to_string(value).substr(0, 7) + (random() % 4 == 0 ? "\r\n" : ";");
    }
    return text.substr(0, size);
}

class Archive {
public:
    Archive(const char* name, int count, std::size_t size)
        : m_path(std::filesystem::temp_directory_path() / (name + std::to_string(GetCurrentProcessId()))) {
        zip_t* const zip = zip_open(m_path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
        std::vector<std::string> contents;  // libzip reads them when it closes
        for (int i = 0; i < count; ++i) {
            names.push_back("patients/P_" + std::to_string(100000 + i) + "/scan.csv");
            contents.push_back(Values(size, static_cast<unsigned int>(i)));
        }
        for (std::size_t i = 0; i < names.size(); ++i) {
            zip_file_add(zip, names[i].c_str(), zip_source_buffer(zip, contents[i].data(), size, 0), 0);
        }
        zip_close(zip);
    }
    ~Archive() { std::filesystem::remove(m_path); }
    const char* Path() const { return m_path.c_str(); }
    CString Text() const { return CString(m_path.u16string().c_str()); }

    std::vector<std::string> names;

private:
    std::filesystem::path m_path;
};

const Archive& Files() {
    static const Archive archive("kadata-bench-zip-", 100, 50000);
    return archive;
}

const Archive& Entries() {
    static const Archive archive("kadata-bench-names-", 2000, 500);
    return archive;
}

void KaDataAll(benchmark::State& state) {
    const CString path = Files().Text();
    for (auto _ : state) {
        CZLibWrapper zip;
        zip.OpenZipFile(path);
        const int count = zip.GetArchiveFileCount();
        for (int i = 0; i < count; ++i) {
            CString name;
            unsigned char* data = nullptr;
            DWORD size = 0;
            zip.GetNextFile(name, &data, &size, i == 0);
            benchmark::DoNotOptimize(data[size - 1]);
            delete[] data;
        }
    }
}

unsigned char LastByte(zip_t* zip, zip_uint64_t index) {
    zip_stat_t stat;
    zip_stat_index(zip, index, 0, &stat);
    const std::unique_ptr<unsigned char[]> data(new unsigned char[stat.size]);
    zip_file_t* const file = zip_fopen_index(zip, index, 0);
    zip_fread(file, data.get(), stat.size);
    zip_fclose(file);
    return data[stat.size - 1];
}

void LibzipAll(benchmark::State& state) {
    for (auto _ : state) {
        zip_t* const zip = zip_open(Files().Path(), ZIP_RDONLY, nullptr);
        const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(zip, 0));
        for (zip_uint64_t i = 0; i < count; ++i) {
            benchmark::DoNotOptimize(LastByte(zip, i));
        }
        zip_discard(zip);
    }
}

// All over the archive, one after the other.
std::size_t Some(std::size_t i) {
    return i * 769 % 2000;
}

void KaDataByName(benchmark::State& state) {
    CZLibWrapper zip;
    zip.OpenZipFile(Entries().Text());
    std::vector<CString> names;
    for (const std::string& name : Entries().names) {
        names.emplace_back(name.c_str());
    }
    for (std::size_t i = 0; auto _ : state) {
        unsigned char* data = nullptr;
        const DWORD size = zip.ExtractFileFromZip(names[Some(i++)], &data);
        benchmark::DoNotOptimize(data[size - 1]);
        delete[] data;
    }
}

void LibzipByName(benchmark::State& state) {
    zip_t* const zip = zip_open(Entries().Path(), ZIP_RDONLY, nullptr);
    for (std::size_t i = 0; auto _ : state) {
        const zip_int64_t index = zip_name_locate(zip, Entries().names[Some(i++)].c_str(), ZIP_FL_NOCASE);
        benchmark::DoNotOptimize(LastByte(zip, static_cast<zip_uint64_t>(index)));
    }
    zip_discard(zip);
}

void LibzipByExactName(benchmark::State& state) {
    zip_t* const zip = zip_open(Entries().Path(), ZIP_RDONLY, nullptr);
    for (std::size_t i = 0; auto _ : state) {
        const zip_int64_t index = zip_name_locate(zip, Entries().names[Some(i++)].c_str(), 0);
        benchmark::DoNotOptimize(LastByte(zip, static_cast<zip_uint64_t>(index)));
    }
    zip_discard(zip);
}

void MinizipByName(benchmark::State& state) {
    constexpr int WITHOUT_CASE = 2;
    const unzFile zip = unzOpen64(Entries().Path());
    for (std::size_t i = 0; auto _ : state) {
        unzLocateFile(zip, Entries().names[Some(i++)].c_str(), WITHOUT_CASE);
        unz_file_info64 info;
        unzGetCurrentFileInfo64(zip, &info, nullptr, 0, nullptr, 0, nullptr, 0);
        const std::unique_ptr<unsigned char[]> data(new unsigned char[info.uncompressed_size]);
        unzOpenCurrentFile(zip);
        unzReadCurrentFile(zip, data.get(), static_cast<unsigned int>(info.uncompressed_size));
        unzCloseCurrentFile(zip);
        benchmark::DoNotOptimize(data[info.uncompressed_size - 1]);
    }
    unzClose(zip);
}

BENCHMARK(KaDataAll)->Name("zip/kadata/all")->Unit(benchmark::kMicrosecond);
BENCHMARK(LibzipAll)->Name("zip/libzip/all")->Unit(benchmark::kMicrosecond);
BENCHMARK(KaDataByName)->Name("zip/kadata/by_name");
BENCHMARK(LibzipByExactName)->Name("zip/libzip/by_name");  // its search without case has no index
BENCHMARK(LibzipByName)->Name("zip/libzip_nocase/by_name");
BENCHMARK(MinizipByName)->Name("zip/minizip/by_name");

}  // namespace
