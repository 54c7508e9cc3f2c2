#include "render/shader_source.h"

#include <cstring>
#include <map>

#include "render/embedded_shaders.h"
#include "support/open_file.h"

namespace {

constexpr const char* SHADER_FOLDER = "../../HarrierPrototype/shaders/";

using SourceTable = std::map<std::string, std::string>;

const SourceTable& sourceTable() {
    static SourceTable table;
    if (table.empty())
        for (std::size_t i = 0; i < EMBEDDED_SHADER_COUNT; ++i)
            table[EMBEDDED_SHADERS[i].fileName] = EMBEDDED_SHADERS[i].text;
    return table;
}

}  // namespace

std::unique_ptr<char[]> getShaderSource(const std::string& fileName) {
    const auto entry = sourceTable().find(fileName);
    if (entry == sourceTable().end())
        return nullptr;
    const std::string& text = entry->second;
    auto copy = std::make_unique<char[]>(text.size() + 1);
    std::memcpy(copy.get(), text.c_str(), text.size() + 1);
    return copy;
}

std::unique_ptr<char[]> loadShaderFile(const std::string& fileName) {
    const FilePointer file = openFile(SHADER_FOLDER + fileName, TEXT("rb"));
    if (file == nullptr)
        return nullptr;
    const std::size_t size = static_cast<std::size_t>(bytesLeft(file.get()));
    auto text = std::make_unique<char[]>(size + 1);
    const std::size_t got = std::fread(text.get(), 1, size, file.get());
    text[got] = '\0';
    return text;
}
