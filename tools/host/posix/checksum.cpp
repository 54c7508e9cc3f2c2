#include "tools/host/checksum.h"

#include <nettle/sha2.h>

struct Checksum::State {
    sha256_ctx context;
};

Checksum::Checksum() : state_(std::make_unique<State>()) {
    sha256_init(&state_->context);
}

Checksum::~Checksum() = default;

void Checksum::add(const char* bytes, std::size_t size) {
    sha256_update(&state_->context, size, reinterpret_cast<const uint8_t*>(bytes));
}

std::string Checksum::text() {
    unsigned char digest[SIZE];
    sha256_digest(&state_->context, SIZE, digest);
    return textOf(digest);
}
