// Fuzzes the reader of ".kern" files: no file may make it crash or read beyond the end.

#include "render/font_file.h"
#include "tests/fuzz/fuzz_device.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    static const FuzzDevice DEVICE;
    DEVICE.write("face.kern", data, size);
    FontData font;
    loadKerningFile("/face.kern", font);
    return 0;
}
