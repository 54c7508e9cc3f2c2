// What the screen shows: background, key markers, the texts of the state, and the release notes.

#include <string>

#include "render/gui_primitives.h"
#include "render/matrix.h"
#include "render/shader_program.h"
#include "support/string_table.h"
#include "support/text.h"
#include "ui/simple_ui.h"

namespace {

constexpr int32_t TEXT_LEFT = 48;
constexpr int32_t TITLE_TOP = 15;
constexpr int32_t TEXT_FONT_SIZE = 24;

constexpr int32_t MESSAGE_LEFT = 500;
constexpr int32_t MESSAGE_TOP = 235;
constexpr int32_t MESSAGE_SPACING = 22;
constexpr int32_t MESSAGE_FONT_SIZE = 13;

const GuiRect START_MARKER = {135, 529, 112, 36};
const GuiRect STOP_MARKER = {135, 478, 93, 36};

const WideString TITLE_SUFFIX = TEXT(" v1.1");
const WideString PROGRESS_SUFFIX = TEXT("%");
const WideString RESTART_NOTE = TEXT("Attempted to restart...");

// Texts begin at the top of the screen, shapes at its bottom.
struct Projection {
    float matrix[16];
};

Projection yDownwards(uint32_t width, uint32_t height) {
    Projection projection{};
    orthoMatrix(0, static_cast<float>(width), static_cast<float>(height), 0, -1, 1,
                projection.matrix);
    return projection;
}

Projection yUpwards(uint32_t width, uint32_t height) {
    Projection projection{};
    orthoMatrix(0, static_cast<float>(width), 0, static_cast<float>(height), -1, 1,
                projection.matrix);
    return projection;
}

const WideString& textOf(const char* key) {
    return StringTable::instance().lookup(key);
}

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

// The picture is stored in a square, top row first: its full width fills the screen, and as much of
// its height as the screen is high.
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
                       yUpwards(screenWidth, screenHeight).matrix);
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

// Behind the words START and STOP of the two texts, green and red as the keys are.
void SimpleUI::drawKeyMarkers() {
    if (updater.getState() != ReadyToUpdate)
        return;
    const GLuint program = getProgram(programCache(), "gui");
    const GLint position = glGetAttribLocation(program, "a_position");
    const GLint color = glGetAttribLocation(program, "a_colors");
    glUseProgram(program);
    glUniformMatrix4fv(getUniformLocation(program, "prmtx"), 1, GL_FALSE,
                       yUpwards(screenWidth, screenHeight).matrix);
    drawFilledRect(START_MARKER, position, color, 0, 1, 0);
    drawFilledRect(STOP_MARKER, position, color, 1, 0, 0);
    glUseProgram(0);
}

void SimpleUI::drawTexts() {
    FontRenderer* const face = fontSet.getFont(TEXT_FONT_SIZE);
    if (face == nullptr)
        return;
    const Projection projection = yDownwards(screenWidth, screenHeight);
    const auto drawLine = [&](const WideString& text, int32_t y) {
        face->drawText(text, TEXT_LEFT, y, 1, 1, 1, projection.matrix, true, nullptr);
    };
    enableTextBlending();
    drawLine(textOf("STR_KESTRELUPDATER") + TITLE_SUFFIX, TITLE_TOP);

    int32_t noteTop = 105;
    switch (updater.getState()) {
        case WaitingForMedia:
            drawLine(textOf("STR_PLEASEINSERTUPDATEKEY"), 155);
            drawLine(textOf("STR_PRESSSTOPTOCANCEL"), 205);
            noteTop = 255;
            break;
        case ReadyToUpdate:
            drawLine(textOf("STR_PRESSSTARTTOUPDATE"), 195);
            drawLine(textOf("STR_PRESSSTOPTOCANCEL"), 245);
            noteTop = 295;
            break;
        case Updating:
            drawLine(textOf("STR_PERFORMINGUPDATE") + widen(std::to_string(updater.getProgress())) +
                         PROGRESS_SUFFIX,
                     205);
            noteTop = 255;
            break;
        case UpdateComplete:
            // The keys are misspelled in every string table in the field.
            drawLine(textOf("STR_UDPATECOMPLETE"), 205);
            noteTop = 255;
            break;
        case UpdateFailed:
            drawLine(textOf("STR_UDPATEFAILED"), 205);
            drawLine(textOf("STR_VERSIONUNCHANGED"), 255);
            drawLine(textOf("STR_PRESSANYKEYTORESTART"), 305);
            noteTop = 355;
            break;
        case MainAppNotFound:
            drawLine(textOf("STR_KESTRELAPPNOTFOUND"), 205);
            noteTop = 255;
            break;
        default:
            break;
    }
    if (restartAttempted)
        drawLine(RESTART_NOTE, noteTop);
    // Made and not shown: the version was taken off the screen and stays off it.
    const std::string version = "Update Version: " + updater.getUpdateVersion();
    static_cast<void>(version);
    glDisable(GL_BLEND);
}

void SimpleUI::drawMessageLines() {
    FontRenderer* const face = fontSet.getFont(MESSAGE_FONT_SIZE);
    if (face == nullptr)
        return;
    const Projection projection = yDownwards(screenWidth, screenHeight);
    enableTextBlending();
    int32_t y = MESSAGE_TOP;
    for (const std::string& line : updater.getMessageLines()) {
        face->drawText(line, MESSAGE_LEFT, y, 1, 1, 1, projection.matrix, true, nullptr);
        y += MESSAGE_SPACING;
    }
    glDisable(GL_BLEND);
}
