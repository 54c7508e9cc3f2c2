#include "render/font_renderer.h"

#include <set>

#include "render/matrix.h"
#include "render/raw_texture.h"
#include "render/shader_program.h"
#include "support/logger.h"
#include "support/system_settings.h"
#include "support/text.h"

namespace {

constexpr std::size_t EXTENSION_LENGTH = 4;

constexpr GLushort QUAD_INDICES[] = {0, 1, 2, 3, 0, 2};
constexpr GLsizei QUAD_INDEX_COUNT = 6;

void reportUnknown(WCHAR code) {
    static std::set<WCHAR> reported;
    if (reported.insert(code).second)
        Logger::instance().warning("Unrecognized Char: %d  %x", static_cast<int>(code),
                                   static_cast<unsigned>(code));
}

void setMatrix(GLuint program, const char* name, const float* matrix) {
    glUniformMatrix4fv(getUniformLocation(program, name), 1, GL_FALSE, matrix);
}

}  // namespace

// Delegates to the other constructor, so that the destructor deletes the textures also when this
// constructor throws.
FontRenderer::FontRenderer(const std::string& faceName, void* context) : FontRenderer(context) {
    const std::string folder = SystemSettings::instance().dataFolder + "fonts/";
    loadFontFile(folder + faceName + ".fnt", font_);
    loadKerningFile(folder + faceName + ".kern", font_);
    if (isTooLarge())
        return;
    loadPages(folder);

    program_ = getProgram(programCache(), "fontrenderer");
    positionLocation_ = glGetAttribLocation(program_, "a_position");
    texCoordLocation_ = glGetAttribLocation(program_, "a_texCoord");
    samplerLocation_ = glGetUniformLocation(program_, "s_texture");
    colorLocation_ = glGetUniformLocation(program_, "u_fontColor");
}

FontRenderer::~FontRenderer() {
    if (!pageTextures_.empty())
        glDeleteTextures(static_cast<GLsizei>(pageTextures_.size()), pageTextures_.data());
}

void FontRenderer::loadPages(const std::string& folder) {
    for (const std::string& name : font_.pageNames) {
        const std::size_t length =
            name.size() > EXTENSION_LENGTH ? name.size() - EXTENSION_LENGTH : 0;
        const std::string path = folder + name.substr(0, length) + ".raw";
        pageTextures_.push_back(
            loadRawLuminanceTexture(path.c_str(), static_cast<GLsizei>(font_.atlasSize), 0));
    }
}

void FontRenderer::drawText(WideText text, int x, int y, float red, float green, float blue,
                            const float* projection, bool useKerning,
                            const float* modelview) const {
    // A face that exceeds its memory limit has loaded no textures.
    if (font_.glyphs.empty() || pageTextures_.size() != font_.pageNames.size())
        return;
    glUseProgram(program_);
    float identity[16];
    identityMatrix(identity);
    setMatrix(program_, "mvmtx", modelview != nullptr ? modelview : identity);
    setMatrix(program_, "prmtx", projection);

    const auto draw = [&](const PlacedGlyph& placed) {
        glActiveTexture(GL_TEXTURE0);
        glBindTexture(GL_TEXTURE_2D, pageTextures_[placed.glyph.page]);
        glUniform1i(samplerLocation_, 0);
        glUniform3f(colorLocation_, red, green, blue);
        drawGlyph(placed, y);
    };
    layOutLine(font_, text, static_cast<float>(x), useKerning, draw, reportUnknown);
}

void FontRenderer::drawText(const std::string& text, int x, int y, float red, float green,
                            float blue, const float* projection, bool useKerning,
                            const float* modelview) const {
    drawText(widen(text), x, y, red, green, blue, projection, useKerning, modelview);
}

void FontRenderer::drawGlyph(const PlacedGlyph& placed, int y) const {
    const Glyph& glyph = placed.glyph;
    const float atlasSize = static_cast<float>(font_.atlasSize);
    const float top = static_cast<float>(placed.top + int64_t{y});
    const float bottom = static_cast<float>(glyph.height) + top;
    const float u0 = static_cast<float>(glyph.x) / atlasSize;
    const float u1 = static_cast<float>(glyph.x + glyph.width) / atlasSize;
    const float v0 = static_cast<float>(glyph.y) / atlasSize;
    const float v1 = static_cast<float>(glyph.y + glyph.height) / atlasSize;

    const GLfloat positions[] = {placed.left,  bottom, 0, placed.left,  top,    0,
                                 placed.right, top,    0, placed.right, bottom, 0};
    const GLfloat texCoords[] = {u0, v1, u0, v0, u1, v0, u1, v1};
    const GLuint position = static_cast<GLuint>(positionLocation_);
    const GLuint texCoord = static_cast<GLuint>(texCoordLocation_);
    glEnableVertexAttribArray(position);
    glEnableVertexAttribArray(texCoord);
    glVertexAttribPointer(position, 3, GL_FLOAT, GL_FALSE, 0, positions);
    glVertexAttribPointer(texCoord, 2, GL_FLOAT, GL_FALSE, 0, texCoords);
    glDrawElements(GL_TRIANGLES, QUAD_INDEX_COUNT, GL_UNSIGNED_SHORT, QUAD_INDICES);
    glDisableVertexAttribArray(position);
    glDisableVertexAttribArray(texCoord);
}

uint32_t FontRenderer::textWidth(WideText text) const {
    uint32_t width = 0;
    for (const WCHAR code : text)
        if (const Glyph* const glyph = findGlyph(code))
            width += static_cast<uint16_t>(glyph->xadvance);
    return width;
}

uint32_t FontRenderer::textWidth(const std::string& text) const {
    return textWidth(widen(text));
}

void FontRenderer::setKerning(uint32_t first, uint32_t second, int16_t amount) {
    font_.kerning[{first, second}] = amount;
}
