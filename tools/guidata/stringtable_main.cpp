// stringtable: converts a UTF-8 text source to a string table of the device.
#include <cstdio>

#include "tools/guidata/font_reader.h"
#include "tools/guidata/host_file.h"
#include "tools/guidata/text_fit.h"
#include "tools/guidata/text_source.h"
#include "tools/guidata/tool_main.h"
#include "tools/screen_keys.h"

namespace {

constexpr const char* TOOL = "stringtable";

struct Arguments {
    std::string source;
    std::string output;
    std::string face;
};

void print(const std::vector<std::string>& messages) {
    for (const std::string& message : messages)
        std::fprintf(stderr, "%s\n", message.c_str());
}

ExitCode convert(const Arguments& arguments) {
    std::string error;
    std::string source;
    FontData face;
    if (!readHostFile(arguments.source, source, error) ||
        (!arguments.face.empty() && !readFont(arguments.face, face, error)))
        return fail(TOOL, error);

    const bool isOfScreen = !arguments.face.empty();
    const ScreenKeys keys = isOfScreen ? screenKeys() : ScreenKeys{};
    MessageList messages;
    const std::vector<TextEntry> entries =
        parseTextSource(source, arguments.source, keys, messages);
    if (isOfScreen)
        checkTexts(entries, arguments.source, keys, face, messages);
    print(messages.errors);
    print(messages.warnings);
    if (!messages.errors.empty())
        return ExitFailed;
    if (!writeHostFile(arguments.output, encodeStringTable(entries), error))
        return fail(TOOL, error);
    return ExitDone;
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    return runTool(
        {TOOL,
         "Makes a string-table file of the device from a UTF-8 source.",
         {{"source",
           &arguments.source,
           "UTF-8 file of lines KEY, blanks, text",
           {},
           ToolOption::Required},
          {"--output", &arguments.output, "UTF-16LE file to write", {}, ToolOption::Required},
          {"--face", &arguments.face,
           "The .fnt file that the updater's screen draws the texts with: the source must have "
           "all texts of the screen and no other; warns about what the face or the screen cannot "
           "show"}},
         [&] { return convert(arguments); }},
        argc, argv);
}
