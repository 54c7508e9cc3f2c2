#include "tools/updatekey/write/sticks.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

#include "tools/updatekey/write/stick_writer.h"
#include "tools/updatekey/write/targets.h"

namespace fs = std::filesystem;

bool WriteReport::allGood() const {
    return !sticks.empty() && std::all_of(sticks.begin(), sticks.end(),
                                          [](const StickReport& s) { return s.problem.empty(); });
}

namespace {

// Writes one stick, and ejects it if that is wanted.
void serve(StickReport& stick, const WriteOptions& options, const Manifest& manifest,
           const std::vector<Volume>& volumes, const Progress& progress) try {
    stick.kept = writeStick(options.key, manifest, stick.stick, options.replace, progress);
    if (!options.eject)
        return;
    try {
        const std::optional<Volume> volume = volumeOf(stick.stick, volumes);
        if (!volume)
            throw std::runtime_error("it is not a disk");
        eject(*volume);
        stick.ejected = true;
    } catch (const std::exception& error) {
        stick.notEjected = error.what();
    }
} catch (const std::exception& error) {
    stick.problem = error.what();
}

}  // namespace

WriteReport writeSticks(const WriteOptions& options, const CheckOptions& check) {
    requireDifferentFolders(options.source, options.sticks);
    WriteReport report;
    report.check = checkKey(options.key, check);
    if (hasErrors(report.check.findings))
        return report;
    const Manifest manifest = computeManifest(options.key);
    const std::vector<Volume> volumes = mountedVolumes(options.systemRoot);
    for (const fs::path& stick : options.sticks) {
        StickReport& result = report.sticks.emplace_back();
        result.stick = stick;
        result.problem = whyNotWritten(stick, options.source, volumes, options.anyFolder);
    }

    std::vector<std::thread> workers;
    for (std::size_t i = 0; i < report.sticks.size(); ++i) {
        if (!report.sticks[i].problem.empty())
            continue;
        workers.emplace_back([&, i] {
            const auto start = std::chrono::steady_clock::now();
            serve(report.sticks[i], options, manifest, volumes, [&](int percent) {
                if (options.progress)
                    options.progress(i, percent);
            });
            report.sticks[i].seconds =
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        });
    }
    for (std::thread& worker : workers)
        worker.join();
    return report;
}
