// Compares listing, deleting and copying by the program's own calls with the system's tools, on
// separate trees on the same disk.

#include "bench/bench_device.h"
#include "bench/measure.h"
#include "platform/win32.h"
#include "support/file_util.h"
#include "update/file_tree.h"

namespace {

constexpr std::size_t FILE_COUNT = 10000;
constexpr int PAIRS = 3;

double timeOf(const std::function<void()>& work) {
    const double start = now();
    work();
    return now() - start;
}

void compareListing(const BenchDevice& device) {
    const std::string folder = (device.root() / "USB HD/VELD/KSTRL").string();
    const Comparison comparison = compare(
        PAIRS, [] { return timeOf([] { listDirectory("/USB HD/VELD/KSTRL/", false, true); }); },
        [&] {
            return runCommand({"find", folder, "-type", "f", "-printf", "%f %s %t\n"});
        });
    printRow("listing " + std::to_string(FILE_COUNT / 2) + " files, against find", comparison, "");
}

void compareDeletion(const BenchDevice& device) {
    const std::string key = (device.root() / "USB HD/VELD").string();
    const std::string tree = (device.root() / "tree").string();
    const auto prepare = [&] {
        runCommand({"cp", "-r", key, tree});
        settleDisk();
    };
    const Comparison comparison = compare(
        PAIRS,
        [&] {
            prepare();
            return timeOf([] { deleteTree("/tree/"); });
        },
        [&] {
            prepare();
            return runCommand({"rm", "-rf", tree});
        });
    printRow("deleting " + std::to_string(FILE_COUNT) + " files, against rm -rf", comparison, "");
}

void compareCopy(const BenchDevice& device) {
    device.makeKeyOfOneFile(std::size_t{64} << 20);
    const std::string from = (device.root() / "USB HD/VELD/KSTRL/file.dat").string();
    const std::string to = (device.root() / "copy").string();
    const auto prepare = [&] {
        std::filesystem::remove(to);
        settleDisk();
    };
    const Comparison comparison = compare(
        PAIRS,
        [&] {
            prepare();
            return timeOf(
                [] { CopyFileW(TEXT("/USB HD/VELD/KSTRL/file.dat"), TEXT("/copy"), FALSE); });
        },
        [&] {
            prepare();
            return runCommand({"cp", from, to});
        });
    printRow("copying one file of 64 MiB, against cp", comparison, "");
}

}  // namespace

int main() {
    const BenchDevice device;
    device.makeKey(FILE_COUNT, 1024, 1);
    compareListing(device);
    compareDeletion(device);
    compareCopy(device);
}
