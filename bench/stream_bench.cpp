// Records of two integers and a text of 8 to 40 characters, written to a file in blocks of 4 KiB and read back. The time is that
// of 10,000 of them, opening and closing included.

#include <benchmark/benchmark.h>
#include <kadata/archive.h>

#include <cereal/archives/binary.hpp>
#include <cereal/types/string.hpp>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr int kRecords = 10000;

struct Record {
    std::int32_t number;
    std::int32_t place;
};

Record Made(int i) {
    return {i, i * 7};
}

// In memory where the system has such a place: what a disk takes would be most of the time.
std::filesystem::path Folder() {
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
}

class TheFile {
public:
    explicit TheFile(const char* name) : m_path(Folder() / (name + std::to_string(GetCurrentProcessId()))) {}
    ~TheFile() { std::filesystem::remove(m_path); }
    const std::filesystem::path& Path() const { return m_path; }
    CString Text() const { return CString(m_path.u16string().c_str()); }

private:
    std::filesystem::path m_path;
};

void WriteKaData(const CString& path, const CString& text) {
    KaCArchiveFileWriter file(path);
    KaCArchive archive(&file);
    for (int i = 0; i < kRecords; ++i) {
        const Record record = Made(i);
        archive.Write(reinterpret_cast<const unsigned char*>(&record.number), sizeof record.number);
        archive.Write(reinterpret_cast<const unsigned char*>(&record.place), sizeof record.place);
        archive << text;
    }
    archive.Flush();
}

void WriteCereal(const std::filesystem::path& path, const std::u16string& text) {
    std::ofstream file(path, std::ios::binary);
    cereal::BinaryOutputArchive archive(file);
    for (int i = 0; i < kRecords; ++i) {
        const Record record = Made(i);
        archive(record.number, record.place, text);
    }
}

void KaDataWrite(benchmark::State& state) {
    const TheFile file("kadata-bench-stream-");
    const CString text(_T('x'), static_cast<int>(state.range(0)));
    for (auto _ : state) {
        WriteKaData(file.Text(), text);
    }
}

void CerealWrite(benchmark::State& state) {
    const TheFile file("kadata-bench-cereal-");
    const std::u16string text(static_cast<std::size_t>(state.range(0)), u'x');
    for (auto _ : state) {
        WriteCereal(file.Path(), text);
    }
}

void KaDataRead(benchmark::State& state) {
    const TheFile place("kadata-bench-stream-");
    WriteKaData(place.Text(), CString(_T('x'), static_cast<int>(state.range(0))));
    for (auto _ : state) {
        KaCArchiveFileReader file(place.Text());
        KaCArchive archive(&file);
        Record record{};
        CString text;
        for (int i = 0; i < kRecords; ++i) {
            archive.Read(reinterpret_cast<unsigned char*>(&record.number), sizeof record.number);
            archive.Read(reinterpret_cast<unsigned char*>(&record.place), sizeof record.place);
            archive >> text;
        }
        benchmark::DoNotOptimize(record);
    }
}

void CerealRead(benchmark::State& state) {
    const TheFile place("kadata-bench-cereal-");
    WriteCereal(place.Path(), std::u16string(static_cast<std::size_t>(state.range(0)), u'x'));
    for (auto _ : state) {
        std::ifstream file(place.Path(), std::ios::binary);
        cereal::BinaryInputArchive archive(file);
        Record record{};
        std::u16string text;
        for (int i = 0; i < kRecords; ++i) {
            archive(record.number, record.place, text);
        }
        benchmark::DoNotOptimize(record);
    }
}

BENCHMARK(KaDataWrite)->Name("stream/kadata/write")->Arg(8)->Arg(24)->Arg(40);
BENCHMARK(CerealWrite)->Name("stream/cereal/write")->Arg(8)->Arg(24)->Arg(40);
BENCHMARK(KaDataRead)->Name("stream/kadata/read")->Arg(8)->Arg(24)->Arg(40);
BENCHMARK(CerealRead)->Name("stream/cereal/read")->Arg(8)->Arg(24)->Arg(40);

}  // namespace
