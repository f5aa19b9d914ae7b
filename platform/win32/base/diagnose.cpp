#include "diagnose.h"

#include <deque>
#include <mutex>
#include <new>
#include <string>

#include "../../diagnostics.h"

namespace kawin {
namespace {

constexpr std::size_t kMostKept = 16;

struct Waiting {
    std::mutex mutex;
    DiagnosticSink sink = nullptr;     // guarded by mutex, and so are the lines
    std::deque<std::u16string> lines;  // from before there was a sink
};

Waiting& GetWaiting() {
    static Waiting& waiting = *new Waiting;  // never destroyed: the end of a process may have something to say
    return waiting;
}

}  // namespace

void Diagnose(std::u16string_view line) noexcept {
    try {
        Waiting& waiting = GetWaiting();
        DiagnosticSink sink = nullptr;
        {
            const std::lock_guard lock(waiting.mutex);
            sink = waiting.sink;
            if (sink == nullptr) {
                waiting.lines.emplace_back(line);
                if (waiting.lines.size() > kMostKept) {
                    waiting.lines.pop_front();
                }
            }
        }
        if (sink != nullptr) {
            sink(line);
        }
    } catch (const std::bad_alloc&) {  // the line is lost, the caller goes on
    }
}

void SetDiagnosticSink(DiagnosticSink sink) {
    Waiting& waiting = GetWaiting();
    std::deque<std::u16string> lines;
    {
        const std::lock_guard lock(waiting.mutex);
        waiting.sink = sink;
        if (sink != nullptr) {
            lines.swap(waiting.lines);
        }
    }
    for (const std::u16string& line : lines) {
        sink(line);
    }
}

}  // namespace kawin
