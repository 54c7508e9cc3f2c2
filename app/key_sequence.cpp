#include "app/key_sequence.h"

#include <string>

namespace {

// One digit for each function key F1 to F6.
const std::string HIDDEN_QUIT_SEQUENCE = "14436652211335";

std::string keySequence;

}  // namespace

bool completesQuitSequence(WPARAM virtualKey) {
    if (virtualKey >= VK_F1 && virtualKey <= VK_F6)
        keySequence += static_cast<char>(virtualKey - 0x3F);
    else
        keySequence.clear();
    return keySequence == HIDDEN_QUIT_SEQUENCE;
}
