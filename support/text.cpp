#include "support/text.h"

WideString widen(const std::string& narrow) {
    WideString wide(narrow.size(), WCHAR{});
    for (std::size_t i = 0; i < narrow.size(); ++i)
        wide[i] = static_cast<WCHAR>(static_cast<unsigned char>(narrow[i]));
    return wide;
}

std::string narrow(const WideString& wide) {
    std::string narrow(wide.size(), '\0');
    for (std::size_t i = 0; i < wide.size(); ++i)
        narrow[i] = wide[i] <= 0xFF ? static_cast<char>(static_cast<unsigned char>(wide[i])) : '?';
    return narrow;
}
