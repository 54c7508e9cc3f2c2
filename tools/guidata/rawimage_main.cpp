// rawimage: converts a PNG picture to a background picture of the device.

#include "tools/guidata/host_file.h"
#include "tools/guidata/raw_image.h"
#include "tools/guidata/tool_main.h"

namespace {

constexpr const char* TOOL = "rawimage";

struct Arguments {
    std::string picture;
    std::string output;
    uint32_t side = 1024;
};

ExitCode convert(const Arguments& arguments) {
    std::string error;
    const std::optional<std::vector<uint8_t>> square =
        luminanceSquare(arguments.picture, arguments.side, error);
    if (!square || !writeHostFile(arguments.output, {square->begin(), square->end()}, error))
        return fail(TOOL, error);
    return ExitDone;
}

void addOptions(CLI::App& app, Arguments& arguments) {
    app.add_option("picture", arguments.picture, "PNG file")->required();
    app.add_option("--output", arguments.output, "Raw file to write")->required();
    app.add_option("--side", arguments.side, "Side of the square, in pixels")
        ->check(CLI::Range(1, 8192))
        ->capture_default_str();
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    return runTool(
        {TOOL, "Makes a raw luminance picture of the device from a PNG file.",
         [&](CLI::App& app) { addOptions(app, arguments); }, [&] { return convert(arguments); }},
        argc, argv);
}
