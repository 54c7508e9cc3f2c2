// rawimage: converts a PNG picture to a background picture of the device.

#include "tools/guidata/raw_image.h"
#include "tools/guidata/tool_main.h"
#include "tools/host/host_file.h"
#include "ui/screen_layout.h"

namespace {

struct Arguments {
    std::string picture;
    std::string output;
    uint32_t side = layout::BACKGROUND_SIDE;
};

void convert(const Arguments& arguments) {
    const std::vector<uint8_t> square = luminanceSquare(arguments.picture, arguments.side);
    writeHostFile(arguments.output, {square.begin(), square.end()});
}

void addOptions(CLI::App& app, Arguments& arguments) {
    app.add_option("picture", arguments.picture,
                   "PNG file; a picture smaller than the square is placed at its top left")
        ->required();
    app.add_option("--output", arguments.output, ".raw file to write")->required();
    limit(app.add_option("--side", arguments.side, "Side of the square in pixels (default: 1024)"),
          1, 8192);
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    return runTool(
        {"rawimage",
         "Converts a PNG file to a background picture of the device: a square with one byte of "
         "luminance per pixel.",
         [&](CLI::App& app) { addOptions(app, arguments); }, [&] { return convert(arguments); }},
        argc, argv);
}
