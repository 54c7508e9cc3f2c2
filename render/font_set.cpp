#include "render/font_set.h"

#include <exception>

#include "support/logger.h"

namespace {

// The only place that creates a face. Logs an error and returns null when memory runs out or the
// face exceeds its memory limit.
std::unique_ptr<FontRenderer> makeFace(const char* name, void* context) {
    try {
        auto face = std::make_unique<FontRenderer>(name, context);
        if (!face->isTooLarge())
            return face;
    } catch (const std::exception&) {
        // Memory ran out in one of the tables; the incomplete face is already destroyed.
    }
    Logger::instance().error("Font %s asks for too much memory.", name);
    return nullptr;
}

}  // namespace

bool FontSet::loadFonts(int32_t languageId) {
    clear();
    const Language* const language = findLanguage(languageId);
    if (language == nullptr)
        return false;
    for (std::size_t slot = 0; slot < FACE_SLOTS; ++slot) {
        const char* const name = facesOf(language->script).slots[slot];
        if (name == nullptr)
            continue;
        slots_[slot] = makeFace(name, context_);
        if (slots_[slot] == nullptr)
            return false;
    }
    return true;
}

FontRenderer* FontSet::getFont(int pixelSize) const {
    const std::size_t slot = pickFace(slots_, pixelSize);
    return slot < FACE_SLOTS ? slots_[slot].get() : nullptr;
}

void FontSet::clear() {
    for (std::unique_ptr<FontRenderer>& slot : slots_)
        slot.reset();
}
