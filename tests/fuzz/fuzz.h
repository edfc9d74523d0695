#pragma once

#include <cstdint>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include "core/file_questions.h"

// A fuzz target holds promises of the program against any bytes; libFuzzer looks for bytes that
// break one.
namespace tunovka::fuzz {

// What each target's file defines.
void run(std::string_view input);

// Nothing catches a promise that does not hold, so libFuzzer keeps the input.
inline void require(bool holds, const char* promise) {
    if (!holds) throw std::logic_error(promise);
}

// Bytes as text: ASCII as it is, the upper half as letters that matter somewhere: with and without
// two cases, parts of a surrogate pair, marks that look like separators.
inline std::wstring wide(std::string_view bytes) {
    static constexpr wchar_t kUpper[] = {L'ž',   L'Ž',   L'ľ',   L'č',   L'á',   L'ß',
                                         0xA0,   0xAD,   0x130,  0x131,  0x17F,  0x212A,
                                         0x3A3,  0x3C2,  0x2044, 0xFF0F, 0xFF3C, 0x2028,
                                         0xFEFF, 0xFFFF, 0xD83D, 0xDE00, 0xD800, 0xDFFF};
    std::wstring text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += value < 0x80 ? static_cast<wchar_t>(value) : kUpper[value % std::size(kUpper)];
    }
    return text;
}

// A disk that has every file, or none, and keeps what it was asked for.
struct FilesAsked : FileQuestions {
    explicit FilesAsked(bool all) : all_(all) {}
    void ask(const std::wstring& path) override { asked.push_back(path); }
    std::optional<std::vector<bool>> answers(const LoopHooks&) override {
        return std::vector<bool>(asked.size(), all_);
    }

    std::vector<std::wstring> asked;

  private:
    bool all_;
};

}  // namespace tunovka::fuzz

// What libFuzzer calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tunovka::fuzz::run({reinterpret_cast<const char*>(data), size});
    return 0;
}
