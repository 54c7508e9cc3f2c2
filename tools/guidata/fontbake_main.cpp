// fontbake: renders a font file at one size into the files of a face of the device.
#include <cstdio>

#include "tools/guidata/font_baker.h"
#include "tools/guidata/font_dump.h"
#include "tools/guidata/font_reader.h"
#include "tools/guidata/source_lines.h"
#include "tools/guidata/text_encoding.h"
#include "tools/guidata/tool_main.h"
#include "tools/host/host_file.h"

namespace {

struct Arguments {
    BakeRequest request;
    std::string outputFolder = ".";
    std::vector<std::string> textSources;
    std::string kerningSource;
    std::string dump;
};

void addOptions(CLI::App& app, Arguments& arguments) {
    BakeRequest& request = arguments.request;
    limit(app.add_option("--face", request.faceIndex,
                         "Number of the font in a font collection (default: 0)"),
          0, 65535);
    auto* const em =
        limit(app.add_option("--em", request.emSize, "Size of the em in pixels"), 4, 400);
    auto* const height = limit(
        app.add_option("--line-height", request.lineHeight, "Height of a line in pixels"), 1, 1000);
    auto* const base =
        limit(app.add_option("--base", request.base,
                             "Distance from the top of a line to its baseline in pixels"),
              1, 1000);
    auto* const name =
        app.add_option("--name", request.faceName,
                       "Name of the face and, without extensions, of its files, such as "
                       "SegoeUI_24px");
    app.add_option("--texts", arguments.textSources,
                   "UTF-8 text files; the face gets their characters and those of Latin-1 "
                   "(default: only Latin-1)");
    app.add_option("--kerning", arguments.kerningSource,
                   "UTF-8 file of additional kerning pairs, one per line: two characters, a blank, "
                   "and the distance in thousandths of the em (default: none)");
    app.add_option("--max-page", request.maxPageSide,
                   "Largest side of a page in pixels: 32, 64, 128, 256, 512 or 1024 (default: "
                   "1024); more pages are added when one is too small")
        ->check(CLI::IsMember({32, 64, 128, 256, 512, 1024}).description(""))
        ->type_name("NUMBER");
    app.add_option("--output", arguments.outputFolder,
                   "Existing folder to write the files to (default: the current folder)");
    CLI::App* const work = app.add_option_group("What to do")->require_option(1);
    work->add_option("--font", request.fontPath,
                     "Make a face from this TrueType or OpenType font file")
        ->needs(em, height, base, name);
    work->add_option("--dump", arguments.dump, "Print the content of this .fnt file as JSON");
}

void readInputs(Arguments& arguments) {
    std::set<char16_t>& characters = arguments.request.characters = latin1();
    for (const std::string& path : arguments.textSources)
        for (const SourceLine& line : sourceLines(readHostFile(path), path))
            characters.insert(line.text.begin(), line.text.end());
    characters.erase(u'\t');
    const std::string& kerning = arguments.kerningSource;
    if (!kerning.empty())
        arguments.request.extraKerning = parseExtraKerning(readHostFile(kerning), kerning);
}

void run(Arguments& arguments) {
    if (!arguments.dump.empty()) {
        std::fputs(fontAsJson(readFont(arguments.dump)).c_str(), stdout);
        return;
    }
    readInputs(arguments);
    const BakedFace face = bakeFace(arguments.request);
    writeFace(face, arguments.request.faceName, arguments.outputFolder);
    for (const char16_t character : face.missing)
        std::fprintf(stderr, "fontbake: warning: %s: no glyph for %s\n",
                     arguments.request.fontPath.c_str(), characterName(character).c_str());
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    return runTool(
        {"fontbake",
         "Renders a font at one size into the .fnt, .kern and .raw files of the device.",
         [&](CLI::App& app) { addOptions(app, arguments); }, [&] { return run(arguments); }},
        argc, argv);
}
