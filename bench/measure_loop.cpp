// Compares the whole program's update of 2,000 files on a screen with its floor, the shortest
// possible time: for each frame the pause of 2 ms and the measured drawing and swap, plus the
// engine's time without a window.
// Usage: measure_loop FOLDER_OF_THE_PROGRAMS

#include <cstdio>
#include <string>

#include "bench/bench_device.h"
#include "bench/measure.h"

namespace {

constexpr double PAUSE = 0.002;
constexpr std::size_t FILE_COUNT = 2000;

struct Loop {
    double frames = 0, wall = 0, draw = 0, swap = 0;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const std::string programs = argv[1];
    const BenchDevice device;
    device.makeInstallation();
    device.makeKey(FILE_COUNT, 1024, 20);
    std::filesystem::copy(device.root() / "FlashDisk/VELD/KSTRL/KSTRL.exe",
                          device.root() / "USB HD/VELD/KSTRL/KSTRL.exe");
    device.makeGuiData("USB HD/VELD/ORBUI/data");
    const std::string report = (device.root() / "report").string();

    Loop loop;
    double start[6] = {};
    double memory[2] = {};
    runCommand(
        {"sh", "-c", "exec \"$1\" /auto 2>\"$2\"", "sh", programs + "/timed_updater", report});
    if (std::FILE* const file = std::fopen(report.c_str(), "r")) {
        char line[512];
        while (std::fgets(line, sizeof line, file) != nullptr) {
            std::sscanf(line, "loop %lf %lf %lf %lf", &loop.frames, &loop.wall, &loop.draw,
                        &loop.swap);
            std::sscanf(line, "start %lf %lf %lf %lf %lf %lf", &start[0], &start[1], &start[2],
                        &start[3], &start[4], &start[5]);
            std::sscanf(line, "memory %lf %lf", &memory[0], &memory[1]);
        }
        std::fclose(file);
    }
    std::string output;
    double engine = 0;
    runCommand({programs + "/engine_update"}, &output);
    std::sscanf(output.c_str(), "%*f %lf", &engine);

    const double floor = loop.frames * PAUSE + loop.draw + loop.swap + engine;
    printRow("whole program, 2000 files, against its floor", {loop.wall, floor, loop.wall / floor},
             "1.05");
    const std::pair<const char*, std::string> rows[] = {
        {"  a frame's drawing and swap", timeText((loop.draw + loop.swap) / loop.frames)},
        {"start-up, entry to first swap", timeText(start[0])},
        {"  fonts", timeText(start[1])},
        {"  texts", timeText(start[2])},
        {"  textures, of the fonts too", timeText(start[3])},
        {"  GL programs", timeText(start[4])},
        {"  whole set-up of the screen", timeText(start[5])},
        {"  peak resident memory of the program", megabytes(memory[0])},
        {"  peak heap of the program", megabytes(memory[1])},
    };
    for (const auto& [what, figure] : rows)
        printRow(what, figure, "", "", "");
}
