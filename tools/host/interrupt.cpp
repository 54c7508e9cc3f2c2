#include "tools/host/interrupt.h"

#include <mutex>

namespace {

std::mutex mutex;
std::list<std::function<void()>> leftovers;

}  // namespace

Leftover::Leftover(std::function<void()> remove) {
    const std::lock_guard<std::mutex> lock(mutex);
    leftovers.push_front(std::move(remove));
    place_ = leftovers.begin();
}

Leftover::~Leftover() {
    const std::lock_guard<std::mutex> lock(mutex);
    leftovers.erase(place_);
}

void removeLeftovers() {
    // Never unlocked, so that no other thread makes anything new.
    mutex.lock();
    for (const std::function<void()>& remove : leftovers)
        remove();
}
