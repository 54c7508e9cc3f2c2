#include "tools/updatekey/progress_bar.h"

#include <unistd.h>

#include <cstdio>

Progress makeProgressBar() {
    if (::isatty(STDERR_FILENO) == 0)
        return {};
    return [shown = -1](int percent) mutable {
        constexpr int width = 40;
        if (percent == shown)
            return;
        shown = percent;
        const std::string bar(static_cast<std::size_t>(percent * width / 100), '#');
        std::fprintf(stderr, "\r[%-*s] %3d%%", width, bar.c_str(), percent);
        if (percent == 100)
            std::fprintf(stderr, "\r%*s\r", width + 7, "");
    };
}
