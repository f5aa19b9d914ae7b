// Enter and leave a recursive lock, alone and against another thread.

#include <afxmt.h>
#include <benchmark/benchmark.h>

#include <mutex>

namespace {

CRITICAL_SECTION* Section() {
    static CRITICAL_SECTION section;
    static const BOOL ready = InitializeCriticalSectionAndSpinCount(&section, 0);
    benchmark::DoNotOptimize(ready);
    return &section;
}

std::recursive_mutex mutex;
long counter = 0;

void KaDataLock(benchmark::State& state) {
    CRITICAL_SECTION* const section = Section();
    for (auto _ : state) {
        EnterCriticalSection(section);
        benchmark::DoNotOptimize(++counter);
        LeaveCriticalSection(section);
    }
}

void StandardLock(benchmark::State& state) {
    for (auto _ : state) {
        mutex.lock();
        benchmark::DoNotOptimize(++counter);
        mutex.unlock();
    }
}

BENCHMARK(KaDataLock)->Name("critical_section/kadata/1thread");
BENCHMARK(StandardLock)->Name("critical_section/std_recursive_mutex/1thread");
BENCHMARK(KaDataLock)->Name("critical_section/kadata/2threads")->Threads(2)->UseRealTime();
BENCHMARK(StandardLock)->Name("critical_section/std_recursive_mutex/2threads")->Threads(2)->UseRealTime();

}  // namespace
