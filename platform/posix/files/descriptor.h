// A file descriptor that is closed at the end of its scope.
#pragma once

#include <unistd.h>

#include <utility>

namespace host {

class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { close(); }

    // Returns false and sets errno when the file system reports an earlier write error only now.
    bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }
    // Gives the descriptor away, to be closed elsewhere.
    int release() { return std::exchange(number_, -1); }
    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

  private:
    int number_;
};

}  // namespace host
