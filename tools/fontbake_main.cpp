// fontbake: a font file and a size to the files of a face of the device.
#include <cstdio>

#include "tools/command_line.h"
#include "tools/font_baker.h"
#include "tools/font_dump.h"
#include "tools/font_reader.h"
#include "tools/host_file.h"
#include "tools/source_lines.h"
#include "tools/text_encoding.h"

namespace {

constexpr const char* TOOL = "fontbake";

struct Arguments {
    BakeRequest request;
    std::string outputFolder = ".";
    std::vector<std::string> textSources;
    std::string kerningSource;
    std::string dump;
};

void describe(CLI::App& app, Arguments& arguments) {
    BakeRequest& request = arguments.request;
    CLI::Option_group* const mode = app.add_option_group("What to do");
    CLI::Option* const font =
        mode->add_option("--font", request.fontPath, "Bake a face of this TrueType font file");
    mode->add_option("--dump", arguments.dump, "Print what this .fnt file holds, as JSON");
    mode->require_option(1);
    app.add_option("--face", request.faceIndex, "Number of the font in a collection")
        ->check(CLI::NonNegativeNumber);
    app.add_option("--em", request.emSize, "Size of the em, in pixels")
        ->check(CLI::Range(4.0, 400.0));
    app.add_option("--line-height", request.lineHeight, "Height of a line, in pixels")
        ->check(CLI::Range(1, 1000));
    app.add_option("--base", request.base, "Rows from a line's top to its baseline")
        ->check(CLI::Range(1, 1000));
    app.add_option("--name", request.faceName, "Name of the face, as in SegoeUI_24px");
    app.add_option("--texts", arguments.textSources,
                   "UTF-8 files; what they use is baked beside Latin-1");
    app.add_option("--kerning", arguments.kerningSource, "UTF-8 file of extra kerning pairs");
    app.add_option("--max-page", request.maxPageSide, "Largest side of a page, in pixels")
        ->check(CLI::IsMember({32, 64, 128, 256, 512, 1024}));
    app.add_option("--output", arguments.outputFolder, "Folder that the files are written to");
    for (const char* const name : {"--em", "--line-height", "--base", "--name"})
        font->needs(app.get_option(name));
}

bool addCharacters(const std::string& path, std::set<char16_t>& characters, std::string& error) {
    std::string source;
    if (!readHostFile(path, source, error))
        return false;
    const std::optional<std::vector<SourceLine>> lines = sourceLines(source, path, error);
    if (!lines)
        return false;
    for (const SourceLine& line : *lines)
        characters.insert(line.text.begin(), line.text.end());
    characters.erase(u'\t');
    return true;
}

bool readInputs(Arguments& arguments, std::string& error) {
    arguments.request.characters = latin1();
    for (const std::string& path : arguments.textSources) {
        if (!addCharacters(path, arguments.request.characters, error))
            return false;
    }
    if (arguments.kerningSource.empty())
        return true;
    std::string source;
    if (!readHostFile(arguments.kerningSource, source, error))
        return false;
    std::optional<ExtraKerning> pairs = parseExtraKerning(source, arguments.kerningSource, error);
    if (!pairs)
        return false;
    arguments.request.extraKerning = std::move(*pairs);
    return true;
}

int bake(Arguments& arguments) {
    std::string error;
    if (!readInputs(arguments, error))
        return fail(TOOL, error);
    const std::optional<BakedFace> face = bakeFace(arguments.request, error);
    if (!face || !writeFace(*face, arguments.request.faceName, arguments.outputFolder, error))
        return fail(TOOL, error);
    for (const char16_t character : face->missing) {
        std::fprintf(stderr, "fontbake: warning: %s: no glyph for %s\n",
                     arguments.request.fontPath.c_str(), characterName(character).c_str());
    }
    return EXIT_CODE_DONE;
}

int dump(const std::string& path) {
    std::string error;
    FontData font;
    if (!readFont(path, font, error))
        return fail(TOOL, error);
    std::fputs(fontAsJson(font).c_str(), stdout);
    return EXIT_CODE_DONE;
}

int run(Arguments& arguments) {
    return arguments.dump.empty() ? bake(arguments) : dump(arguments.dump);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        CLI::App app("Bakes a font at one size into the .fnt, .kern and .raw files of the device.");
        Arguments arguments;
        describe(app, arguments);
        const std::optional<ExitCode> end = parseCommandLine(app, argc, argv);
        return end ? *end : run(arguments);
    } catch (const std::exception& problem) {
        return fail(TOOL, problem.what());
    }
}
