// stringtable: converts a UTF-8 text source to a string table of the device.
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <set>

#include "render/faces.h"
#include "tools/guidata/font_reader.h"
#include "tools/guidata/text_fit.h"
#include "tools/guidata/text_source.h"
#include "tools/guidata/tool_main.h"
#include "tools/host/host_file.h"
#include "tools/screen_keys.h"
#include "ui/screen_layout.h"

namespace {

struct Arguments {
    std::string source;
    std::string output;
    std::string language;  // suffix of a language of the screen; empty for other tables
    std::string fonts;
};

// Returns the path of the face in which the screen shows the texts.
std::string faceFile(const Arguments& arguments) {
    const auto* const language =
        std::find_if(std::begin(LANGUAGES), std::end(LANGUAGES),
                     [&](const Language& known) { return known.suffix == arguments.language; });
    return arguments.fonts + "/" + faceName(language->script, layout::TEXT_FONT_SIZE) + ".fnt";
}

void convert(const Arguments& arguments) {
    const std::string source = readHostFile(arguments.source);
    const bool isOfScreen = !arguments.language.empty();
    const ScreenKeys keys = isOfScreen ? screenKeys() : ScreenKeys{};
    const std::vector<TextEntry> entries = parseTextSource(source, arguments.source, keys);
    if (isOfScreen) {
        const FontData face = readFont(faceFile(arguments));
        for (const std::string& warning : checkTexts(entries, arguments.source, keys, face))
            std::fprintf(stderr, "%s\n", warning.c_str());
    }
    writeHostFile(arguments.output, encodeStringTable(entries));
}

void addOptions(CLI::App& app, Arguments& arguments) {
    std::set<std::string> languages;
    for (const Language& language : LANGUAGES)
        languages.insert(language.suffix);
    app.add_option("source", arguments.source,
                   "UTF-8 file; each line is a key, blanks or tabs, and a text")
        ->required();
    app.add_option("--output", arguments.output, "String table to write")->required();
    auto* const fonts =
        app.add_option("--fonts", arguments.fonts, "Folder of the .fnt files that show the texts");
    auto* const language =
        app.add_option("--language", arguments.language,
                       "Suffix of the language, such as en. The source must then contain exactly "
                       "the texts of the updater's screen; warnings name texts with characters "
                       "that the language's face lacks, and texts that do not fit the screen "
                       "(default: no such checks)")
            ->check(CLI::IsMember(languages))
            ->needs(fonts);
    fonts->needs(language);
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    return runTool(
        {"stringtable", "Converts a UTF-8 text file to a string table of the device.",
         [&](CLI::App& app) { addOptions(app, arguments); }, [&] { return convert(arguments); }},
        argc, argv);
}
