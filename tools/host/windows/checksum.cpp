#include "tools/host/checksum.h"

#include <stdexcept>

#include "platform/win32.h"
// Uses the types of the header above.
#include <bcrypt.h>

namespace {

void require(NTSTATUS status) {
    if (status < 0)
        throw std::runtime_error("this computer's SHA-256 fails");
}

}  // namespace

struct Checksum::State {
    BCRYPT_ALG_HANDLE algorithm = nullptr;
    BCRYPT_HASH_HANDLE hash = nullptr;
};

Checksum::Checksum() : state_(std::make_unique<State>()) {
    require(BCryptOpenAlgorithmProvider(&state_->algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
    require(BCryptCreateHash(state_->algorithm, &state_->hash, nullptr, 0, nullptr, 0, 0));
}

Checksum::~Checksum() {
    BCryptDestroyHash(state_->hash);
    BCryptCloseAlgorithmProvider(state_->algorithm, 0);
}

void Checksum::add(const char* bytes, std::size_t size) {
    auto* const start = reinterpret_cast<UCHAR*>(const_cast<char*>(bytes));
    require(BCryptHashData(state_->hash, start, static_cast<ULONG>(size), 0));
}

std::string Checksum::text() {
    unsigned char digest[SIZE];
    require(BCryptFinishHash(state_->hash, digest, SIZE, 0));
    return textOf(digest);
}
