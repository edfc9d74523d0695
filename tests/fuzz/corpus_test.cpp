// The fuzzers' corpus without a fuzzer: each file, whole and cut short at every byte, on every
// system that the tests run on.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "core/errors.h"
#include "fuzz/fuzz.h"

namespace tunovka::fuzz {
namespace {

std::string broken(Target target, std::string_view input) {
    try {
        target(input);
    } catch (const Broken& promise) {
        return promise.what();
    } catch (const RuntimeError& error) {
        return "run-time error " + std::to_string(error.number);
    }
    return {};
}

TEST(FuzzCorpus, keepsEveryPromise) {
    for (const auto& [name, target] : targets()) {
        int files = 0;
        for (const auto& file :
             std::filesystem::directory_iterator(std::string(TUNOVKA_CORPUS "/") + name)) {
            std::ifstream stream(file.path(), std::ios::binary);
            const std::string bytes(std::istreambuf_iterator<char>(stream), {});
            ASSERT_FALSE(bytes.empty()) << file.path();
            for (std::size_t size = 0; size <= bytes.size(); ++size)
                ASSERT_EQ(broken(target, std::string_view(bytes).substr(0, size)), "")
                    << file.path() << ", the first " << size << " bytes";
            ++files;
        }
        EXPECT_GT(files, 0) << name;
    }
}

}  // namespace
}  // namespace tunovka::fuzz
