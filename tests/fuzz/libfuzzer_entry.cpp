// What libFuzzer calls.
#include <cstddef>
#include <cstdint>

#include "fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tunovka::fuzz::run({reinterpret_cast<const char*>(data), size});
    return 0;
}
