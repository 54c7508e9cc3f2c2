// The layout of the updater's screen: the position of every text and shape, and the texts shown in
// each state. The screen draws from these numbers, and the tools that make and check texts, fonts
// and release notes use the same ones.
//
// All numbers are pixels. Texts are placed from the top left corner of the screen, key markers from
// the bottom left corner.
#pragma once

#include <cstdint>

#include "platform/instrument_screen.h"
#include "platform/win32.h"
#include "render/gui_primitives.h"
#include "update/updater.h"

namespace layout {

using instrument::SCREEN_HEIGHT;
using instrument::SCREEN_WIDTH;

// The picture behind everything, in the GUI data: square, one byte per pixel.
constexpr const char* BACKGROUND_FILE = "KSTRL-menubg4.raw";
constexpr int32_t BACKGROUND_SIDE = 1024;

// The title and the texts of the states, one below the other in the large face.
constexpr int32_t TEXT_LEFT = 48;
constexpr int32_t TEXT_SPACING = 50;
constexpr int32_t TEXT_FONT_SIZE = 24;  // as FontSet::getFont takes it

// The release notes: lines in the small face to the right of the texts, shown once an update key is
// found.
constexpr int32_t NOTES_LEFT = 500;
constexpr int32_t NOTES_TOP = 235;
constexpr int32_t NOTES_SPACING = 22;
constexpr int32_t NOTES_FONT_SIZE = 13;
constexpr int32_t NOTES_LINES = (SCREEN_HEIGHT - NOTES_TOP) / NOTES_SPACING;  // visible lines
constexpr int32_t NOTES_EDGE = NOTES_LEFT - 12;  // right limit of a text beside them

struct Text {
    int32_t state;        // an UpdateState, or EVERY_STATE
    int32_t top;          // y
    const char* key;      // in the string table
    const WCHAR* suffix;  // appended to the text; the longest one for the percentage
};

constexpr int32_t EVERY_STATE = -1;

// Two keys are misspelled "UDPATE": the tables on the instruments have them so. Kept.
constexpr Text TEXTS[] = {
    {EVERY_STATE, 15, "STR_KESTRELUPDATER", TEXT(" v1.1")},
    {WaitingForMedia, 155, "STR_PLEASEINSERTUPDATEKEY", TEXT("")},
    {WaitingForMedia, 205, "STR_PRESSSTOPTOCANCEL", TEXT("")},
    {ReadyToUpdate, 195, "STR_PRESSSTARTTOUPDATE", TEXT("")},
    {ReadyToUpdate, 245, "STR_PRESSSTOPTOCANCEL", TEXT("")},
    {Updating, 205, "STR_PERFORMINGUPDATE", TEXT("100%")},
    {UpdateComplete, 205, "STR_UDPATECOMPLETE", TEXT("")},
    {UpdateFailed, 205, "STR_UDPATEFAILED", TEXT("")},
    {UpdateFailed, 255, "STR_VERSIONUNCHANGED", TEXT("")},
    {UpdateFailed, 305, "STR_PRESSANYKEYTORESTART", TEXT("")},
    {MainAppNotFound, 205, "STR_KESTRELAPPNOTFOUND", TEXT("")},
};

constexpr bool isShown(const Text& text, int32_t state) {
    return text.state == state || text.state == EVERY_STATE;
}

// The right limit of a text. The title lies above the release notes and may use the whole width.
constexpr int32_t rightEdge(const Text& text) {
    return text.state >= ReadyToUpdate ? NOTES_EDGE : SCREEN_WIDTH;
}

// Shown below the last text of the state when the main application could not be started.
constexpr const WCHAR* RESTART_NOTE = TEXT("Attempted to restart...");

constexpr int32_t restartNoteTop(int32_t state) {
    int32_t top = 105;
    for (const Text& text : TEXTS)
        if (text.state == state && state != EVERY_STATE)
            top = text.top + TEXT_SPACING;
    return top;
}

constexpr int32_t MARKER_GAP = 2;  // free space on each side of the word

// Rectangles behind the words START and STOP, in the colours of the instrument's keys.
struct KeyMarker {
    GuiRect place;
    float red, green, blue;
    const char* textKey;
    const WCHAR* word;
};

constexpr int32_t MARKED_STATE = ReadyToUpdate;
constexpr KeyMarker KEY_MARKERS[] = {
    {{135, 529, 112, 36}, 0, 1, 0, "STR_PRESSSTARTTOUPDATE", TEXT("START")},
    {{135, 478, 93, 36}, 1, 0, 0, "STR_PRESSSTOPTOCANCEL", TEXT("STOP")},
};

}  // namespace layout
