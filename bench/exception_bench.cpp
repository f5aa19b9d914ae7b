// An error thrown with the stack that it happened on. Ours is in the log before it is thrown; the peer's only becomes the text of
// the exception. An error that a user is told of is some thirty calls deep: the message loop, the window, the dialog, its
// command; the other case is thrown straight from the benchmark.

#include <benchmark/benchmark.h>
#include <kadata/log.h>
#include <kadata/tarvo_exception.h>

#include <boost/stacktrace.hpp>
#include <stdexcept>

namespace {

constexpr int kCalls = 20;  // beside the dozen of the benchmark itself

void ThrowOurs() {
    throw new CTarvoException(4711, _T("details"), __FILE__, __LINE__, CTarvoException::eDefault);
}

void ThrowTheirs() {
    throw std::runtime_error(boost::stacktrace::to_string(boost::stacktrace::stacktrace()));
}

// Caught where it is thrown, so that unwinding does not count.
template <void (*Throw)()>
[[gnu::noinline]] void Call(int deeper) {
    if (deeper > 0) {
        Call<Throw>(deeper - 1);
    } else {
        try {
            Throw();
        } catch (CTarvoException* e) {
            e->Delete();
        } catch (const std::runtime_error& e) {
            benchmark::DoNotOptimize(e.what());
        }
    }
    benchmark::ClobberMemory();  // no call is the last thing done, so each stays on the stack
}

template <void (*Throw)()>
void Construct(benchmark::State& state, int calls) {
    for (auto _ : state) {
        Call<Throw>(calls);
    }
}

void Ours(benchmark::State& state, int calls) {
    CLog::SetLogConfig({15, 10, 10 << 20});
    Construct<ThrowOurs>(state, calls);
}

void Theirs(benchmark::State& state, int calls) {
    Construct<ThrowTheirs>(state, calls);
}

BENCHMARK_CAPTURE(Ours, thrown, kCalls)->Name("exception/construct/kadata/thrown");
BENCHMARK_CAPTURE(Theirs, thrown, kCalls)->Name("exception/construct/boost/thrown");
BENCHMARK_CAPTURE(Ours, thrown_near_main, 0)->Name("exception/construct/kadata/thrown_near_main");
BENCHMARK_CAPTURE(Theirs, thrown_near_main, 0)->Name("exception/construct/boost/thrown_near_main");

}  // namespace
