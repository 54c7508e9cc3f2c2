#include "tools/updatekey/write/sticks.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace fs = std::filesystem;

bool WriteReport::allGood() const {
    return !sticks.empty() && std::all_of(sticks.begin(), sticks.end(),
                                          [](const StickReport& s) { return s.problem.empty(); });
}

WriteReport writeSticks(const WriteOptions& options) {
    WriteReport report;
    report.check = checkKey(options.key, options.check);
    if (hasErrors(report.check.findings))
        return report;
    const Manifest manifest = computeManifest(options.key);
    for (const fs::path& stick : options.sticks)
        report.sticks.push_back({stick, "", 0});

    std::vector<std::thread> workers;
    for (std::size_t i = 0; i < report.sticks.size(); ++i) {
        workers.emplace_back([&, i] {
            StickReport& result = report.sticks[i];
            const auto start = std::chrono::steady_clock::now();
            try {
                writeStick(options.key, manifest, result.stick, options.replace, [&](int percent) {
                    if (options.progress)
                        options.progress(i, percent);
                });
            } catch (const std::exception& error) {
                result.problem = error.what();
            }
            result.seconds =
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        });
    }
    for (std::thread& worker : workers)
        worker.join();
    return report;
}
