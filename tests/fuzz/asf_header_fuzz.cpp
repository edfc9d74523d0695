// The ASF header: as any bytes, and as a well-formed header around the first two lines.
#include <cstdint>

#include "core/text.h"
#include "fuzz/fuzz.h"
#include "player/sound_file.h"

namespace tunovka::fuzz {
namespace {

std::string littleEndian(std::uint64_t value, int bytes) {
    std::string result;
    for (; bytes-- > 0; value >>= 8) result += static_cast<char>(value & 0xFF);
    return result;
}

std::string utf16(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t letter : text) {
        const auto point = static_cast<std::uint32_t>(letter);
        if (point >= 0x10000) bytes += littleEndian(0xD800 + ((point - 0x10000) >> 10), 2);
        bytes += littleEndian(point >= 0x10000 ? 0xDC00 + (point & 0x3FF) : point, 2);
    }
    return bytes;
}

std::string object(std::string_view guid, std::string_view body) {
    return std::string(guid) + littleEndian(24 + body.size(), 8) + std::string(body);
}

constexpr std::string_view kHeader(
    "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C", 16);
constexpr std::string_view kContent(
    "\x33\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C", 16);

void requireShowable(const std::wstring& text) {
    require(text.find(L'\0') == text.npos, "no NUL is shown");
    require(text == trimBlanks(text), "no blanks are shown around");
    require(text.size() <= 0xFFFF / 2, "no more than the field's bytes can hold");
}

void run(std::string_view input) {
    const ClipDetails any = asfDetails(input);
    requireShowable(any.title);
    requireShowable(any.author);
    if (!input.starts_with(kHeader)) require(any == ClipDetails{}, "other files tell nothing");

    const std::wstring title = wide(takeLine(input)), author = wide(takeLine(input));
    const std::string first = utf16(title), second = utf16(author);
    if (first.size() > 0xFFFF || second.size() > 0xFFFF) return;
    const std::string body = littleEndian(first.size(), 2) + littleEndian(second.size(), 2) +
                             littleEndian(0, 6) + first + second;
    // What stands before and behind it, whatever it is, does not matter.
    const std::string objects =
        object("0123456789abcdef", input) + object(kContent, body) + std::string(input);
    const std::string header = std::string(kHeader) + littleEndian(30 + objects.size(), 8) +
                               littleEndian(2, 4) + "\1\2" + objects;
    const ClipDetails known = asfDetails(header);
    require(utf16(known.title) == utf16(trimBlanks(trimAtNul(title))), "the title is read");
    require(utf16(known.author) == utf16(trimBlanks(trimAtNul(author))), "the author is read");
}

const Named kNamed("asf_header", run);

}  // namespace
}  // namespace tunovka::fuzz
