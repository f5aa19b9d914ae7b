// A message in the file before the call returns: one thread, four threads, four processes.

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "log_writers.h"

extern char** environ;

namespace {

constexpr int kProcesses = 4;
constexpr int kMessagesOfProcess = 5000;

std::string NewFolder() {
    std::string folder = (std::filesystem::temp_directory_path() / "kadata-bench-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    return folder;
}

std::unique_ptr<ILogWriter> shared_log;
std::string shared_folder;

void WriteMessages(benchmark::State& state, const std::string& who) {
    if (state.thread_index() == 0) {
        shared_folder = NewFolder();
        shared_log = OpenLog(who, shared_folder);
    }
    int number = 0;
    for (auto _ : state) {
        shared_log->Write(++number);
    }
    state.SetItemsProcessed(state.iterations());
    if (state.thread_index() == 0) {
        shared_log.reset();
        std::filesystem::remove_all(shared_folder);
    }
}

// A writing process that waits for its start.
class Child {
public:
    Child(const std::string& who, const std::string& folder) {
        int in[2];
        int out[2];
        if (pipe(in) != 0 || pipe(out) != 0) {
            throw std::runtime_error("no pipe");
        }
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
        std::string count = std::to_string(kMessagesOfProcess);
        std::vector<std::string> texts = {"/proc/self/exe", "--log-child", who, folder, count};
        std::vector<char*> arguments;
        for (std::string& text : texts) {
            arguments.push_back(text.data());
        }
        arguments.push_back(nullptr);
        if (posix_spawn(&m_process, "/proc/self/exe", &actions, nullptr, arguments.data(), environ) != 0) {
            throw std::runtime_error("no process");
        }
        posix_spawn_file_actions_destroy(&actions);
        close(in[0]);
        close(out[1]);
        m_go = in[1];
        char ready = 0;
        if (read(out[0], &ready, 1) != 1) {
            throw std::runtime_error("the process did not start");
        }
        close(out[0]);
    }
    void Go() const {
        if (write(m_go, "g", 1) != 1) {
            throw std::runtime_error("the process is gone");
        }
    }
    void Wait() const {
        int status = 0;
        waitpid(m_process, &status, 0);
        close(m_go);
        if (status != 0) {
            throw std::runtime_error("a writing process failed");
        }
    }

private:
    pid_t m_process = 0;
    int m_go = -1;
};

void WriteFromProcesses(benchmark::State& state, const std::string& who) {
    const std::string folder = NewFolder();
    for (auto _ : state) {
        std::vector<Child> children;
        for (int i = 0; i < kProcesses; ++i) {
            children.emplace_back(who, folder);
        }
        const auto start = std::chrono::steady_clock::now();
        for (const Child& child : children) {
            child.Go();
        }
        for (const Child& child : children) {
            child.Wait();
        }
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(time.count() / (kProcesses * kMessagesOfProcess));
    }
    std::filesystem::remove_all(folder);
}

[[maybe_unused]] const bool registered = [] {
    for (const std::string who : kLogWriters) {
        benchmark::RegisterBenchmark(("log/" + who + "/1thread").c_str(), WriteMessages, who)->UseRealTime();
        benchmark::RegisterBenchmark(("log/" + who + "/4threads").c_str(), WriteMessages, who)->Threads(4)->UseRealTime();
    }
    for (const std::string who : {"kadata", "log4cplus"}) {
        benchmark::RegisterBenchmark(("log/" + who + "/4processes").c_str(), WriteFromProcesses, who)
            ->Iterations(3)
            ->UseManualTime();
    }
    return true;
}();

}  // namespace
