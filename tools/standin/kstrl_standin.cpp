// A stub of the instrument's main application for simulated devices, installed as KSTRL/KSTRL.exe.
// It prints its version, read from "version.txt" beside it, and runs until it is ended.

#include <sys/types.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

std::string ownVersion() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    std::ifstream file(self.parent_path() / "version.txt");
    std::string version;
    return std::getline(file, version) ? version : "unknown";
}

}  // namespace

int main(int argc, char** argv) {
    const std::string version = ownVersion();
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::printf("%s\n", version.c_str());
        return 0;
    }
    std::printf("KSTRL %s runs as process %d\n", version.c_str(), static_cast<int>(::getpid()));
    std::fflush(stdout);
    for (;;)
        ::pause();
}
