// Measures single calls of the POSIX layer, and beside each the host call that it cannot avoid.

#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "bench/bench_device.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/place.h"
#include "platform/win32.h"
#include "support/file_util.h"

namespace {

const BenchDevice& device() {
    static const BenchDevice& theDevice = *[] {
        const BenchDevice* const made = new BenchDevice;
        made->makeKey(2000, 1024, 1);
        return made;
    }();
    return theDevice;
}

const std::string& hostFile() {
    static const std::string PATH = (device().root() / "USB HD/VELD/KSTRL/file000000.dat").string();
    return PATH;
}
constexpr LPCWSTR DEVICE_FILE = TEXT("/USB HD/VELD/KSTRL\\file000000.dat");

void resolveOnText(benchmark::State& state) {
    device();
    for (auto _ : state)
        benchmark::DoNotOptimize(host::resolveOnText(DEVICE_FILE));
}
BENCHMARK(resolveOnText);

void locate(benchmark::State& state) {
    device();
    for (auto _ : state) {
        host::Place place;
        benchmark::DoNotOptimize(host::locate(DEVICE_FILE, place));
    }
}
BENCHMARK(locate);

void hostStatus(benchmark::State& state) {
    struct stat status {};
    for (auto _ : state)
        benchmark::DoNotOptimize(::lstat(hostFile().c_str(), &status));
}
BENCHMARK(hostStatus);

void fileAttributes(benchmark::State& state) {
    device();
    for (auto _ : state)
        benchmark::DoNotOptimize(GetFileAttributesW(DEVICE_FILE));
}
BENCHMARK(fileAttributes);

// The minimum for a sorted listing with sizes and times.
void hostListing(benchmark::State& state) {
    const std::string path = (device().root() / "USB HD/VELD/KSTRL").string();
    for (auto _ : state) {
        DIR* const folder = ::opendir(path.c_str());
        std::vector<std::string> names;
        while (const dirent* entry = ::readdir(folder))
            names.emplace_back(entry->d_name);
        std::sort(names.begin(), names.end());
        struct stat status {};
        for (const std::string& name : names)
            benchmark::DoNotOptimize(
                ::fstatat(::dirfd(folder), name.c_str(), &status, AT_SYMLINK_NOFOLLOW));
        ::closedir(folder);
    }
}
BENCHMARK(hostListing);

void listing(benchmark::State& state) {
    device();
    for (auto _ : state)
        benchmark::DoNotOptimize(listDirectory("/USB HD/VELD/KSTRL/", false, true));
}
BENCHMARK(listing);

void hostCopy(benchmark::State& state) {
    const std::string to = (device().root() / "host-copy").string();
    for (auto _ : state) {
        const int input = ::open(hostFile().c_str(), O_RDONLY);
        const int output = ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        while (::copy_file_range(input, nullptr, output, nullptr, 1 << 30, 0) > 0) {
        }
        ::close(input);
        ::close(output);
        ::unlink(to.c_str());
    }
}
BENCHMARK(hostCopy);

void copyAndDelete(benchmark::State& state) {
    device();
    for (auto _ : state) {
        CopyFileW(DEVICE_FILE, TEXT("/own-copy"), FALSE);
        DeleteFileW(TEXT("/own-copy"));
    }
}
BENCHMARK(copyAndDelete);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::filesystem::remove_all(device().root());
}
