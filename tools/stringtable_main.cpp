// stringtable: a UTF-8 source of texts to a string-table file of the device.
#include <cstdio>

#include "tools/command_line.h"
#include "tools/font_reader.h"
#include "tools/host_file.h"
#include "tools/text_fit.h"
#include "tools/text_source.h"

namespace {

constexpr const char* TOOL = "stringtable";

struct Arguments {
    std::string source;
    std::string output;
    std::string keys;
    std::string face;
};

void describe(CLI::App& app, Arguments& arguments) {
    app.add_option("source", arguments.source, "UTF-8 file of lines KEY, blanks, text")->required();
    app.add_option("--output", arguments.output, "UTF-16LE file to write")->required();
    app.add_option("--keys", arguments.keys,
                   "File of the keys that the source must have, each with the x that its text must "
                   "not go beyond");
    app.add_option("--face", arguments.face,
                   "The .fnt file that the texts are drawn with; warns about what it cannot show");
}

bool readKeys(const std::string& path, ScreenKeys& keys, std::string& error) {
    std::string source;
    if (!readHostFile(path, source, error))
        return false;
    const std::optional<ScreenKeys> parsed = parseScreenKeys(source, path, error);
    if (parsed)
        keys = *parsed;
    return parsed.has_value();
}

void print(const std::vector<std::string>& messages) {
    for (const std::string& message : messages)
        std::fprintf(stderr, "%s\n", message.c_str());
}

int convert(const Arguments& arguments) {
    std::string error;
    std::string source;
    ScreenKeys keys;
    FontData face;
    if (!readHostFile(arguments.source, source, error) ||
        (!arguments.keys.empty() && !readKeys(arguments.keys, keys, error)) ||
        (!arguments.face.empty() && !readFont(arguments.face, face, error)))
        return fail(TOOL, error);

    MessageList messages;
    const std::vector<TextEntry> entries =
        parseTextSource(source, arguments.source, keys, messages);
    if (!arguments.face.empty())
        checkTexts(entries, arguments.source, keys, face, messages);
    print(messages.errors);
    print(messages.warnings);
    if (!messages.errors.empty())
        return EXIT_CODE_FAILED;
    if (!writeHostFile(arguments.output, encodeStringTable(entries), error))
        return fail(TOOL, error);
    return EXIT_CODE_DONE;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        CLI::App app("Makes a string-table file of the device from a UTF-8 source.");
        Arguments arguments;
        describe(app, arguments);
        const std::optional<ExitCode> end = parseCommandLine(app, argc, argv);
        return end ? *end : convert(arguments);
    } catch (const std::exception& problem) {
        return fail(TOOL, problem.what());
    }
}
