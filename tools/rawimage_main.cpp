// rawimage: a PNG picture to a background picture of the device.

#include "tools/command_line.h"
#include "tools/host_file.h"
#include "tools/raw_image.h"

namespace {

constexpr const char* TOOL = "rawimage";

struct Arguments {
    std::string picture;
    std::string output;
    uint32_t side = 1024;
};

void describe(CLI::App& app, Arguments& arguments) {
    app.add_option("picture", arguments.picture, "PNG file")->required();
    app.add_option("--output", arguments.output, "Raw file to write")->required();
    app.add_option("--side", arguments.side, "Side of the square, in pixels")
        ->check(CLI::Range(1, 8192))
        ->capture_default_str();
}

int convert(const Arguments& arguments) {
    std::string error;
    const std::optional<std::vector<uint8_t>> square =
        luminanceSquare(arguments.picture, arguments.side, error);
    if (!square || !writeHostFile(arguments.output, {square->begin(), square->end()}, error))
        return fail(TOOL, error);
    return EXIT_CODE_DONE;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        CLI::App app("Makes a raw luminance picture of the device from a PNG file.");
        Arguments arguments;
        describe(app, arguments);
        const std::optional<ExitCode> end = parseCommandLine(app, argc, argv);
        return end ? *end : convert(arguments);
    } catch (const std::exception& problem) {
        return fail(TOOL, problem.what());
    }
}
