// A host process for the logging tests: it logs from several threads at once, so that
// its first log call (which loads the logging library) happens concurrently.
//   log_probe <threads> <lines per thread>

#include "../../qt_halvo/utilities/logging_p.h"

#include <atomic>
#include <cstdlib>
#include <thread>
#include <vector>

int main(int argc, char** argv)
{
    const int threadCount = argc > 1 ? std::atoi(argv[1]) : 1;
    const int lineCount = argc > 2 ? std::atoi(argv[2]) : 1;
    std::atomic<int> waiting{threadCount};
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back([&waiting, t, lineCount] {
            --waiting;
            while (waiting.load() > 0) {
            }
            for (int i = 0; i < lineCount; ++i)
                QTH_LOG_WARNING("probe thread %d line %d", t, i);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    return 0;
}
