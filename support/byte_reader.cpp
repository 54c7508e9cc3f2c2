#include "support/byte_reader.h"

#include "support/logger.h"

ByteReader::ByteReader(const std::string& path, LPCWSTR mode, std::size_t limit)
    : file_(openFile(path, mode)), path_(path), left_(limit) {}

int ByteReader::next() {
    const int byte = peek();
    if (byte != EOF) {
        std::fgetc(file_.get());
        --left_;
    }
    return byte;
}

int ByteReader::peek() {
    const int byte = file_ != nullptr ? std::fgetc(file_.get()) : EOF;
    if (byte == EOF || left_ > 0) {
        if (byte != EOF)
            std::ungetc(byte, file_.get());
        return byte;
    }
    Logger::instance().warning("File %s is too long; its end was not read.", path_.c_str());
    file_.reset();
    return EOF;
}
