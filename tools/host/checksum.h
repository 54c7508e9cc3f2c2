// SHA-256, computed incrementally.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

class Checksum {
  public:
    Checksum();
    Checksum(const Checksum&) = delete;
    Checksum& operator=(const Checksum&) = delete;
    ~Checksum();
    void add(const char* bytes, std::size_t size);
    // The checksum of everything added, in lower-case hexadecimal. Call it once, at the end.
    std::string text();

  private:
    static constexpr std::size_t SIZE = 32;  // bytes
    static std::string textOf(const unsigned char (&digest)[SIZE]);

    struct State;
    std::unique_ptr<State> state_;
};
