// A file of the host that is closed at the end of its scope.
#pragma once

#include <unistd.h>

namespace host {

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }
    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

  private:
    int number_;
};

}  // namespace host
