// Checks the release notes: the version in the first line, and whether the screen can show the
// rest.

#include "render/faces.h"
#include "support/text.h"
#include "tools/diagnosis/installation.h"
#include "tools/host/printable.h"
#include "tools/updatekey/check/checks.h"
#include "tools/updatekey/check/drawn_text.h"
#include "ui/screen_layout.h"

namespace {

using keypaths::NOTES;

const std::string VERSION_PREFIX = keylayout::VERSION_PREFIX;

void checkVersionLine(KeyUnderCheck& key, const std::string& bytes) {
    const std::string line = bytes.substr(0, bytes.find_first_of("\r\n"));
    const std::size_t prefix = line.rfind(VERSION_PREFIX);
    if (prefix == std::string::npos)
        key.add("notes-no-version", NOTES,
                "the first line must be \"" + VERSION_PREFIX + "\" and the version");
    else if (prefix != 0)
        key.add("notes-prefix-misplaced", NOTES,
                "the device removes the first 14 characters of the first line, so \"" +
                    VERSION_PREFIX + "\" must be at the very start of the file, and only there");
    else if (line.find_first_not_of(' ', VERSION_PREFIX.size()) == std::string::npos)
        key.add("notes-no-version", NOTES, "the first line contains no version");
    const std::size_t second = bytes.find(VERSION_PREFIX, line.size());
    if (second != std::string::npos && prefix != std::string::npos)
        key.add("notes-second-version", NOTES,
                "a later line also contains \"" + VERSION_PREFIX +
                    "\"; only the first line counts; delete the other");
}

// The application may state its version in "version.txt".
void checkVersionFile(KeyUnderCheck& key) {
    const std::string version = applicationVersion(key.folder / keypaths::APPLICATION);
    if (!version.empty() && version != key.report.prediction.version)
        key.add("version-differs", NOTES,
                "has version \"" + printable(key.report.prediction.version) +
                    "\", but the application's version.txt has \"" + printable(version) +
                    "\"; correct one of them");
}

void checkLineEnds(KeyUnderCheck& key, const std::string& bytes) {
    const bool bareReturns =
        bytes.find('\r') != std::string::npos && bytes.find('\n') == std::string::npos;
    if (bareReturns)
        return key.add("notes-carriage-return", NOTES,
                       "ends its lines with a carriage return alone; the device reads the text as "
                       "one line and does not show it; end lines with a line feed");
    const std::size_t nul = bytes.find('\0');
    const std::size_t ctrlZ = bytes.find('\x1A');
    if (nul != std::string::npos)
        key.add("notes-nul", NOTES,
                "contains NUL characters (is it UTF-16?); the screen shows each line only up to "
                "the first one");
    if (ctrlZ != std::string::npos)
        key.add("notes-cut", NOTES, "contains a Ctrl-Z, at which the device stops reading");
    else if (bytes.empty() || bytes.back() != '\n')
        key.add("notes-no-final-line-feed", NOTES,
                "the last line does not end with a line feed; the device does not show it");
}

bool isUtf8BeyondAscii(const std::string& bytes) {
    const std::size_t first = bytes.find_first_of("\xC3\xC2\xE2\xEF");
    return first != std::string::npos && first + 1 < bytes.size() &&
           (static_cast<unsigned char>(bytes[first + 1]) & 0xC0) == 0x80;
}

// Checks the width and the characters of the notes in the face of each script that the key must
// support.
void checkDrawing(KeyUnderCheck& key) {
    for (const Script script : key.scripts()) {
        const std::string notesFace = faceName(script, layout::NOTES_FONT_SIZE);
        const FontData face = loadKeyFace(notesFace);
        if (face.glyphs.empty())
            continue;
        std::set<WCHAR> missing;
        int number = 0;
        int firstMissing = 0;
        for (const std::string& line : key.report.prediction.notes) {
            ++number;
            const DrawnText drawn = drawnText(face, widen(line));
            if (missing.empty() && !drawn.missing.empty())
                firstMissing = number;
            missing.insert(drawn.missing.begin(), drawn.missing.end());
            const int beyond =
                static_cast<int>(layout::NOTES_LEFT + drawn.right) - layout::SCREEN_WIDTH;
            if (beyond > 0)
                key.add("notes-line-too-wide", NOTES,
                        "line " + std::to_string(number) + " extends " + std::to_string(beyond) +
                            " pixels beyond the screen's edge in " + notesFace);
        }
        const bool isOfWindows = std::any_of(missing.begin(), missing.end(),
                                             [](WCHAR c) { return c >= 0x80 && c < 0xA0; });
        if (!missing.empty())
            key.add("notes-missing-glyph", NOTES,
                    notesFace + " has no glyph for " + listCharacters(missing) +
                        ", first in line " + std::to_string(firstMissing) +
                        (isOfWindows ? "; this is Windows-1252: save the notes as UTF-8 and make "
                                       "the key again"
                                     : ""));
    }
}

}  // namespace

void checkNotes(KeyUnderCheck& key) {
    const TreeEntry* const entry = key.find(NOTES);
    if (entry == nullptr || entry->kind != TreeEntry::Kind::File)
        return key.add("notes-missing", NOTES,
                       "is missing; the device accepts the key, but with an empty version");
    const std::string bytes = key.read(NOTES);
    checkVersionLine(key, bytes);
    checkVersionFile(key);
    checkLineEnds(key, bytes);
    if (isUtf8BeyondAscii(bytes))
        key.add("notes-utf8", NOTES,
                "looks like UTF-8; the device shows each byte as a Latin-1 character");
    const std::size_t lines = key.report.prediction.notes.size();
    if (lines > layout::NOTES_LINES)
        key.add("notes-too-many-lines", NOTES,
                "has " + std::to_string(lines) + " lines, of which the screen shows only " +
                    std::to_string(layout::NOTES_LINES));
    checkDrawing(key);
}
