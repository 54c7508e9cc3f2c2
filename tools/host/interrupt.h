// Leaves nothing behind when the user or the system interrupts the program: Ctrl-C, a closed
// terminal, a shutdown.
#pragma once

#include <functional>
#include <list>

// Something that exists as long as this object, and is removed when the program is interrupted.
class Leftover {
  public:
    // `remove` is called once at most, from another thread, and then the program ends.
    explicit Leftover(std::function<void()> remove);
    Leftover(const Leftover&) = delete;
    Leftover& operator=(const Leftover&) = delete;
    ~Leftover();

  private:
    std::list<std::function<void()>>::iterator place_;
};

// Call it first in main, before any thread is started.
void watchForInterrupts();

// Removes everything, the newest first. For the implementation of watchForInterrupts, which ends
// the program after it: it waits for no object's destructor.
void removeLeftovers();
