#include "tools/updatekey/report/progress_bar.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <mutex>
#include <optional>

#include "tools/host/terminal.h"

namespace {

std::string barOf(int percent) {
    const std::string filled(static_cast<std::size_t>(percent * 40 / 100), '#');
    char text[80];
    std::snprintf(text, sizeof text, "[%-40s] %3d%%", filled.c_str(), percent);
    return text;
}

// Several bars, one below the other. The first change draws them, each later one redraws all.
class Bars {
  public:
    explicit Bars(const std::vector<std::string>& names)
        : names_(names), percents_(names.size(), 0) {}

    void show(std::size_t place, int percent) {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (start_ && percents_[place] == percent)
            return;
        percents_[place] = percent;
        if (start_)
            std::fprintf(stderr, "\x1b[%zuA", names_.size());
        else
            start_ = Clock::now();
        for (std::size_t i = 0; i < names_.size(); ++i)
            std::fprintf(stderr, "\r%s  %s%s\x1b[K\n", barOf(percents_[i]).c_str(),
                         names_[i].c_str(), timeLeft(percents_[i]).c_str());
    }

  private:
    using Clock = std::chrono::steady_clock;

    std::string timeLeft(int percent) const {
        constexpr int ENOUGH_TO_ESTIMATE = 5;
        if (percent < ENOUGH_TO_ESTIMATE || percent == 100)
            return {};
        const double passed = std::chrono::duration<double>(Clock::now() - *start_).count();
        return ", " + std::to_string(std::lround(passed * (100 - percent) / percent)) + " s left";
    }

    const std::vector<std::string> names_;
    std::vector<int> percents_;
    std::optional<Clock::time_point> start_;
    std::mutex mutex_;
};

}  // namespace

Progress makeProgressBar() {
    if (!errorsAreTerminal())
        return {};
    return [shown = -1](int percent) mutable {
        if (percent == shown)
            return;
        shown = percent;
        std::fputs(percent == 100 ? "\r\x1b[K" : ("\r" + barOf(percent)).c_str(), stderr);
    };
}

std::function<void(std::size_t, int)> makeStickBars(const std::vector<std::string>& names) {
    if (!errorsAreTerminal())
        return {};
    const auto bars = std::make_shared<Bars>(names);
    return [bars](std::size_t place, int percent) { bars->show(place, percent); };
}

std::function<void(double)> makeClock(int limit) {
    if (!errorsAreTerminal())
        return {};
    return [limit, shown = -1](double seconds) mutable {
        if (static_cast<int>(seconds) == shown)
            return;
        shown = static_cast<int>(seconds);
        std::fprintf(stderr, "\rThe updater runs: %d s, at most %d s\r", shown, limit);
    };
}
