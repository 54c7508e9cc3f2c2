// What the screen shows: background, key markers, the texts of the state, and the release notes.

#include <string>

#include "render/gui_primitives.h"
#include "render/matrix.h"
#include "render/shader_program.h"
#include "support/string_table.h"
#include "support/text.h"
#include "ui/screen_layout.h"
#include "ui/simple_ui.h"

namespace {

// An orthographic projection of the screen. Texts count y down from the top, shapes count it up
// from the bottom.
struct Projection {
    Projection(uint32_t width, uint32_t bottom, uint32_t top) {
        orthoMatrix(0, static_cast<float>(width), static_cast<float>(bottom),
                    static_cast<float>(top), -1, 1, matrix);
    }
    float matrix[16];
};

void enableTextBlending() {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

}  // namespace

void SimpleUI::draw() {
    drawBackground();
    drawKeyMarkers();
    drawTexts();
    drawMessageLines();
}

// The picture is square and stored from the top row down. Its full width fills the screen; rows
// below the screen's height-to-width ratio are cut off.
void SimpleUI::drawBackground() {
    if (imageRenderer == nullptr)
        return;
    const auto width = static_cast<GLint>(screenWidth);
    const auto height = static_cast<GLint>(screenHeight);
    const float bottom = static_cast<float>(screenHeight) / static_cast<float>(screenWidth);
    const GLint corners[] = {0, 0, width, 0, width, height, 0, height};
    const GLfloat texCoords[] = {0, bottom, 1, bottom, 1, 0, 0, 0};
    const GLushort indices[] = {0, 1, 2, 3, 0, 2};
    const auto position = static_cast<GLuint>(imageRenderer->positionLocation);
    const auto texCoord = static_cast<GLuint>(imageRenderer->texCoordLocation);

    glDisable(GL_BLEND);
    glUseProgram(imageRenderer->program);
    glUniformMatrix4fv(getUniformLocation(imageRenderer->program, "prmtx"), 1, GL_FALSE,
                       Projection(screenWidth, 0, screenHeight).matrix);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, backgroundTexture);
    glUniform1i(imageRenderer->samplerLocation, 0);
    glVertexAttribPointer(position, 2, GL_INT, GL_FALSE, 0, corners);
    glVertexAttribPointer(texCoord, 2, GL_FLOAT, GL_FALSE, 0, texCoords);
    glEnableVertexAttribArray(position);
    glEnableVertexAttribArray(texCoord);
    glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_SHORT, indices);
    glDisableVertexAttribArray(position);
    glDisableVertexAttribArray(texCoord);
    glUseProgram(0);
}

void SimpleUI::drawKeyMarkers() {
    if (updater.getState() != layout::MARKED_STATE)
        return;
    const GLuint program = getProgram(programCache(), "gui");
    const GLint position = glGetAttribLocation(program, "a_position");
    const GLint color = glGetAttribLocation(program, "a_colors");
    glUseProgram(program);
    glUniformMatrix4fv(getUniformLocation(program, "prmtx"), 1, GL_FALSE,
                       Projection(screenWidth, 0, screenHeight).matrix);
    for (const layout::KeyMarker& marker : layout::KEY_MARKERS)
        drawFilledRect(marker.place, position, color, marker.red, marker.green, marker.blue);
    glUseProgram(0);
}

void SimpleUI::drawTexts() {
    FontRenderer* const face = fontSet.getFont(layout::TEXT_FONT_SIZE);
    if (face == nullptr)
        return;
    const Projection projection(screenWidth, screenHeight, 0);
    const auto drawLine = [&](WideText text, int32_t top) {
        face->drawText(text, layout::TEXT_LEFT, top, 1, 1, 1, projection.matrix, true, nullptr);
    };
    enableTextBlending();
    const int32_t state = updater.getState();
    for (const layout::Text& text : layout::TEXTS) {
        if (!layout::isShown(text, state))
            continue;
        const WideString suffix = text.state == Updating
                                      ? widen(std::to_string(updater.getProgress()) + "%")
                                      : text.suffix;
        drawLine(StringTable::instance().lookup(text.key) + suffix, text.top);
    }
    if (restartAttempted)
        drawLine(layout::RESTART_NOTE, layout::restartNoteTop(state));
    // The version text is built but not drawn. Kept.
    [[maybe_unused]] const std::string version = "Update Version: " + updater.getUpdateVersion();
    glDisable(GL_BLEND);
}

void SimpleUI::drawMessageLines() {
    FontRenderer* const face = fontSet.getFont(layout::NOTES_FONT_SIZE);
    if (face == nullptr)
        return;
    const Projection projection(screenWidth, screenHeight, 0);
    enableTextBlending();
    int32_t top = layout::NOTES_TOP;
    for (const std::string& line : updater.getMessageLines()) {
        face->drawText(line, layout::NOTES_LEFT, top, 1, 1, 1, projection.matrix, true, nullptr);
        top += layout::NOTES_SPACING;
    }
    glDisable(GL_BLEND);
}
