#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string_view>

#include "log_writers.h"

int main(int count, char** texts) {
    if (count == 5 && std::string_view(texts[1]) == "--log-child") {
        return RunLogChild(texts[2], texts[3], std::atoi(texts[4]));
    }
    benchmark::Initialize(&count, texts);
    if (benchmark::ReportUnrecognizedArguments(count, texts)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
