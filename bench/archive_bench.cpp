// Strings written to and read from an archive in memory.

#include <afx.h>
#include <benchmark/benchmark.h>
#include <kadata/kalido_object.h>

#include <cereal/archives/binary.hpp>
#include <cereal/types/string.hpp>
#include <sstream>
#include <vector>

namespace {

constexpr int kStrings = 1000;

void WriteKaData(CMemFile& file, const CString& text) {
    CArchive archive(&file, CArchive::store);
    for (int i = 0; i < kStrings; ++i) {
        CKalidoObject::WriteString(archive, text);
    }
    archive.Close();
}

void KaDataWrite(benchmark::State& state) {
    const CString text(_T('x'), static_cast<int>(state.range(0)));
    for (auto _ : state) {
        CMemFile file;
        WriteKaData(file, text);
        benchmark::DoNotOptimize(file.GetLength());
    }
    state.SetItemsProcessed(state.iterations() * kStrings);
}

void KaDataRead(benchmark::State& state) {
    CMemFile file;
    WriteKaData(file, CString(_T('x'), static_cast<int>(state.range(0))));
    for (auto _ : state) {
        file.SeekToBegin();
        CArchive archive(&file, CArchive::load);
        CString text;
        for (int i = 0; i < kStrings; ++i) {
            CKalidoObject::ReadString(archive, text);
        }
        benchmark::DoNotOptimize(text.GetLength());
    }
    state.SetItemsProcessed(state.iterations() * kStrings);
}

void WriteCereal(std::ostream& stream, const std::u16string& text) {
    cereal::BinaryOutputArchive archive(stream);
    for (int i = 0; i < kStrings; ++i) {
        archive(text);
    }
}

void CerealWrite(benchmark::State& state) {
    const std::u16string text(static_cast<std::size_t>(state.range(0)), u'x');
    for (auto _ : state) {
        std::ostringstream stream;
        WriteCereal(stream, text);
        benchmark::DoNotOptimize(stream.tellp());
    }
    state.SetItemsProcessed(state.iterations() * kStrings);
}

void CerealRead(benchmark::State& state) {
    std::stringstream stream;
    WriteCereal(stream, std::u16string(static_cast<std::size_t>(state.range(0)), u'x'));
    for (auto _ : state) {
        stream.clear();
        stream.seekg(0);
        cereal::BinaryInputArchive archive(stream);
        std::u16string text;
        for (int i = 0; i < kStrings; ++i) {
            archive(text);
        }
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(state.iterations() * kStrings);
}

BENCHMARK(KaDataWrite)->Name("archive/string/kadata/write")->Arg(12)->Arg(200);
BENCHMARK(CerealWrite)->Name("archive/string/cereal/write")->Arg(12)->Arg(200);
BENCHMARK(KaDataRead)->Name("archive/string/kadata/read")->Arg(12)->Arg(200);
BENCHMARK(CerealRead)->Name("archive/string/cereal/read")->Arg(12)->Arg(200);

}  // namespace
