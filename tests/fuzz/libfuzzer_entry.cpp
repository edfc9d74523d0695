// What libFuzzer calls; the program holds exactly one target.
#include <cstddef>
#include <cstdint>

#include "fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tunovka::fuzz::targets().begin()->second({reinterpret_cast<const char*>(data), size});
    return 0;
}
