#include "fuzz/fuzz.h"

#include <iterator>

namespace tunovka::fuzz {

std::map<std::string, Target>& targets() {
    static std::map<std::string, Target> all;
    return all;
}

std::wstring wide(std::string_view bytes) {
    static constexpr wchar_t kUpper[] = {L'ž',   L'Ž',   L'ľ',   L'č',   L'á',   L'ß',
                                         0xA0,   0xAD,   0x130,  0x131,  0x17F,  0x212A,
                                         0x3A3,  0x3C2,  0x2044, 0xFF0F, 0xFF3C, 0x2028,
                                         0xFEFF, 0xFFFF, 0xD83D, 0xDE00, 0xD800, 0xDFFF};
    std::wstring text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += value < 0x80 ? static_cast<wchar_t>(value) : kUpper[value % std::size(kUpper)];
    }
    return text;
}

std::string_view takeLine(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
    return line;
}

}  // namespace tunovka::fuzz
