// Where everything stands on the updater's screen, and which texts it shows in which state. The
// screen is drawn by these numbers; the tools that make and check texts, fonts and release notes
// judge by them.
//
// All numbers are pixels. Texts are placed from the top left corner of the screen, the key markers
// from the bottom left one.
#pragma once

#include <cstdint>

#include "platform/win32.h"
#include "render/gui_primitives.h"
#include "update/updater.h"

namespace layout {

// The instrument's screen.
constexpr int32_t SCREEN_WIDTH = 1024;
constexpr int32_t SCREEN_HEIGHT = 768;

// The title and the texts of the states: one below the other, with the large face.
constexpr int32_t TEXT_LEFT = 48;
constexpr int32_t TEXT_SPACING = 50;
constexpr int32_t TEXT_FONT_SIZE = 24;  // as FontSet::getFont takes it

// The release notes: lines in the small face to the right of the texts, as soon as a key was found.
constexpr int32_t NOTES_LEFT = 500;
constexpr int32_t NOTES_TOP = 235;
constexpr int32_t NOTES_SPACING = 22;
constexpr int32_t NOTES_FONT_SIZE = 13;
constexpr int32_t NOTES_LINES = (SCREEN_HEIGHT - NOTES_TOP) / NOTES_SPACING;  // that can be seen
constexpr int32_t NOTES_EDGE = NOTES_LEFT - 12;  // that a text beside them must not go beyond

struct Text {
    int32_t state;        // an UpdateState, or EVERY_STATE
    int32_t top;          // y
    const char* key;      // in the string table
    const WCHAR* suffix;  // directly behind the text; for the percentage the longest there is
};

constexpr int32_t EVERY_STATE = -1;

// "UDPATE" is how the keys are spelled in every string table in the field.
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

// The x that a text must not go beyond. The title stands above the release notes.
constexpr int32_t rightEdge(const Text& text) {
    return text.state >= ReadyToUpdate ? NOTES_EDGE : SCREEN_WIDTH;
}

// Shown below the last text of the state when the main application could not be started.
constexpr const WCHAR* RESTART_NOTE = TEXT("Attempted to restart...");

constexpr int32_t restartNoteTop(int32_t state) {
    int32_t top = 105;
    for (const Text& text : TEXTS)
        if (text.state == state)
            top = text.top + TEXT_SPACING;
    return top;
}

constexpr int32_t MARKER_GAP = 2;  // that a word leaves to each side in its marker

// Coloured like a key of the instrument, behind the word in a text that names this key.
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
