#include "render/font_set.h"

#include <exception>

#include "support/logger.h"

namespace {

constexpr const char* LATIN_FACES[] = {"SegoeUI_10px", "SegoeUI_13px", "SegoeUI_18px",
                                       "SegoeUI_24px"};
constexpr const char* JAPANESE_FACES[] = {nullptr, "MeiryoUI_24px", "MeiryoUI_36px", nullptr};
constexpr const char* CHINESE_FACES[] = {nullptr, "FangSong_24px", "FangSong_36px", nullptr};

// The faces of the slots, null for a slot that stays empty; null for an unknown language.
const char* const* faceNames(int32_t languageId) {
    switch (languageId) {
        case 0:
        case 1:
        case 2:
        case 3:
        case 6:
            return LATIN_FACES;
        case 4:
            return JAPANESE_FACES;
        case 5:
            return CHINESE_FACES;
        default:
            return nullptr;
    }
}

std::size_t firstSlot(int pixelSize) {
    if (pixelSize < 12)
        return 0;
    if (pixelSize <= 15)
        return 1;
    if (pixelSize <= 20)
        return 2;
    if (pixelSize <= 28)
        return 3;
    // Sizes beyond the largest face have always fallen to the smallest one, and screens count on
    // it.
    return 0;
}

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
    const char* const* const names = faceNames(languageId);
    if (names == nullptr)
        return false;
    for (std::size_t slot = 0; slot < SLOT_COUNT; ++slot) {
        if (names[slot] == nullptr)
            continue;
        slots_[slot] = makeFace(names[slot], context_);
        if (slots_[slot] == nullptr)
            return false;
    }
    return true;
}

FontRenderer* FontSet::getFont(int pixelSize) const {
    const std::size_t first = firstSlot(pixelSize);
    for (std::size_t slot = first; slot < SLOT_COUNT; ++slot)
        if (slots_[slot] != nullptr)
            return slots_[slot].get();
    for (std::size_t slot = SLOT_COUNT - 1; slot-- > 0;)
        if (slots_[slot] != nullptr)
            return slots_[slot].get();
    return nullptr;
}

void FontSet::clear() {
    for (std::unique_ptr<FontRenderer>& slot : slots_)
        slot.reset();
}
