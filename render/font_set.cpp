#include "render/font_set.h"

#include <exception>

#include "support/logger.h"

namespace {

// The one place where a face is made. Null, and a line in the log, when there is not the memory for
// it or it asks for more than any face may.
std::unique_ptr<FontRenderer> makeFace(const char* name, void* context) {
    try {
        auto face = std::make_unique<FontRenderer>(name, context);
        if (!face->isTooLarge())
            return face;
    } catch (const std::exception&) {
        // The memory ended in one of the tables; what there was of the face is gone.
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
