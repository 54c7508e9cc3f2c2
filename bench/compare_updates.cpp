// Compares a whole update by the engine with one by the system's tools, which copy the key's
// folders to a staging folder, remove the old backups and move the folders, and flush at the same
// places. Like the engine the tools keep the times of the files and whether they are read-only. The
// two update the same device alternately from the same key; each starts from the state that the
// other left.
//
// Usage: compare_updates ENGINE

#include <unistd.h>

#include <cstdio>

#include "bench/bench_device.h"
#include "bench/measure.h"

namespace {

constexpr const char* TOOLS_UPDATE = R"(set -e
key=$1/USB\ HD/VELD
cd "$1/FlashDisk/VELD"
mkdir Update
$2 "$key/KSTRL" "$key/ORBUI" Update  # the tool with its options
for name in KSTRL ORBUI; do
    rm -rf "${name}_old"
    sync -f .
    mv "$name" "${name}_old"
    sync .
    sync -f .
    mv "Update/$name" "$name"
    sync . Update
done
rmdir Update
echo 'Update succeeded' >log.txt
sync log.txt
)";

constexpr const char* COPY = "cp -r --preserve=timestamps,mode";
constexpr const char* RSYNC = "rsync -a";

struct EngineReport {
    double files = 0;
    double seconds = 0;
    double residentBytes = 0;
    double heapBytes = 0;
};

struct Measured {
    Comparison wall;
    EngineReport engine;
};

Measured measure(const std::string& engine, const BenchDevice& device, int pairs,
                 const char* tool = COPY) {
    EngineReport report;
    std::vector<double> engineSeconds;
    const auto ours = [&] {
        ::sync();  // so that no write of the last measurement is left
        std::string output;
        const double seconds = runCommand({engine}, &output);
        std::sscanf(output.c_str(), "%lf %lf %lf %lf", &report.files, &report.seconds,
                    &report.residentBytes, &report.heapBytes);
        engineSeconds.push_back(report.seconds);
        return seconds;
    };
    const std::string root = device.root().string();
    const auto theirs = [&] {
        ::sync();
        return runCommand({"sh", "-c", TOOLS_UPDATE, "sh", root, tool});
    };
    // The installation and the backup have the size of the update: the usual case is an instrument
    // that has been updated before.
    std::filesystem::create_directories(device.root() / "FlashDisk/VELD");
    for (const std::string name : {"KSTRL", "KSTRL_old", "ORBUI", "ORBUI_old"})
        runCommand({"cp", "-rT", root + "/USB HD/VELD/" + name.substr(0, 5),
                    root + "/FlashDisk/VELD/" + name});
    const Comparison wall = compare(pairs, ours, theirs);
    report.seconds = median(engineSeconds);
    return {wall, report};
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const std::string engine = argv[1];
    constexpr std::size_t SMALL_FILE = 1024;
    const struct {
        std::size_t files;
        int pairs;
    } trees[] = {{100, 9}, {1000, 9}, {10000, 5}, {100000, 1}};
    EngineReport first;
    EngineReport thousand;
    EngineReport last;
    for (const auto& tree : trees) {
        const BenchDevice device;
        device.makeKey(tree.files, SMALL_FILE, 50);
        const Measured measured = measure(engine, device, tree.pairs);
        printRow("update of " + std::to_string(tree.files) + " files of 1 KiB", measured.wall,
                 "1.00");
        if (tree.files == 1000 || tree.files == 10000)
            printRow("  the same, against rsync -a", measure(engine, device, 3, RSYNC).wall, "");
        last = measured.engine;
        if (tree.files == 100)
            first = last;
        if (tree.files == 1000)
            thousand = last;
    }
    const double perFile = last.seconds / last.files;
    const double perFileOfThousand = thousand.seconds / thousand.files;
    printRow("time per file, 100000 against 1000 files", timeText(perFile),
             timeText(perFileOfThousand), numberText(perFile / perFileOfThousand, 2), "1.20");

    for (const std::size_t megabyte : {1U, 16U, 256U}) {
        const BenchDevice device;
        device.makeKeyOfOneFile(megabyte << 20);
        const Measured measured = measure(engine, device, megabyte == 256 ? 3 : 5);
        printRow("update of one file of " + std::to_string(megabyte) + " MiB", measured.wall,
                 "1.05");
    }
    printRow("peak resident memory, 100000 against 100 files", megabytes(last.residentBytes),
             megabytes(first.residentBytes),
             numberText(last.residentBytes / first.residentBytes, 1), "");
    printRow("peak heap, 100000 against 100 files", megabytes(last.heapBytes),
             megabytes(first.heapBytes), numberText(last.heapBytes / first.heapBytes, 1), "");
    printRow(
        "heap for each further file",
        numberText((last.heapBytes - first.heapBytes) / (last.files - first.files), 0) + " bytes",
        "", "", "");
}
