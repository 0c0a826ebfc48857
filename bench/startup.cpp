// Compares the start of the program with that of a bare GTK+ 2 window: the time from exec until
// painted, and the peak memory. Starts each in turn, and ends with 1 when a bar is missed.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int repetitions = 41;
constexpr double timeBar = 1.6;
constexpr double memoryBar = 1.3;

// What one program took, run by run.
struct Record {
    std::string path;
    std::string argument;
    std::vector<double> milliseconds;
    std::vector<double> megabytes;
};

void Run(Record& record) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        execl(record.path.c_str(), record.path.c_str(), record.argument.c_str(), nullptr);
        _exit(EXIT_FAILURE);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) < 0 || status != 0) {
        std::fprintf(stderr, "%s failed\n", record.path.c_str());
        std::exit(EXIT_FAILURE);
    }
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    record.milliseconds.push_back(time.count());
    record.megabytes.push_back(static_cast<double>(usage.ru_maxrss) / 1024.0);
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

int main(int /*argc*/, char** argv) {
    const std::string folder = std::filesystem::path(argv[0]).parent_path().string() + "/";
    std::vector<Record> records = {{folder + "bare_window", "empty", {}, {}},
                                   {folder + "bare_window", "text", {}, {}},
                                   {folder + "startup_probe", "", {}, {}}};
    for (int i = 0; i < repetitions; ++i) {
        for (Record& record : records) {
            Run(record);
        }
    }
    const double time = Median(records[2].milliseconds);
    const double memory = Median(records[2].megabytes);
    std::printf("medians of %d starts:  time until painted  peak memory\n", repetitions);
    std::printf("Drovan W              %7.1f ms         %7.1f MB\n", time, memory);
    for (const Record* const bare : {&records[1], &records[0]}) {
        const double bareTime = Median(bare->milliseconds);
        const double bareMemory = Median(bare->megabytes);
        std::printf("bare window, %-6s   %7.1f ms (%.2fx) %7.1f MB (%.2fx)\n",
                    bare->argument.c_str(), bareTime, time / bareTime, bareMemory,
                    memory / bareMemory);
    }
    const bool isWithinBars = time <= timeBar * Median(records[1].milliseconds) &&
                              memory <= memoryBar * Median(records[1].megabytes);
    std::printf("bars, to the window with a line of text: %.1fx and %.1fx: %s\n", timeBar,
                memoryBar, isWithinBars ? "met" : "missed");
    return isWithinBars ? EXIT_SUCCESS : EXIT_FAILURE;
}
