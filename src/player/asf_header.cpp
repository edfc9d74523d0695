#include "player/asf_header.h"

#include <string>

#include "core/text.h"

namespace tunovka {
namespace {

using namespace std::string_view_literals;

constexpr auto kHeaderObject = "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv;
constexpr auto kContentDescription =
    "\x33\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv;
constexpr std::size_t kGuidSize = 16;
constexpr std::size_t kObjectPreamble = kGuidSize + 8;  // GUID and 64-bit length

std::uint64_t littleEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
        value = value << 8 | static_cast<unsigned char>(*byte);
    return value;
}

// UTF-16 as text of this system's wide characters, up to the first NUL.
std::wstring fromUtf16(std::string_view bytes) {
    std::wstring text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        auto unit = static_cast<std::uint32_t>(littleEndian(bytes.substr(at, 2)));
        if (unit == 0) break;
        if (sizeof(wchar_t) > 2 && unit >= 0xD800 && unit < 0xDC00 && at + 3 < bytes.size()) {
            const auto low = static_cast<std::uint32_t>(littleEndian(bytes.substr(at + 2, 2)));
            if (low >= 0xDC00 && low < 0xE000) {
                unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
                at += 2;
            }
        }
        text += static_cast<wchar_t>(unit);
    }
    return trimBlanks(text);
}

// Five 16-bit lengths (title, author, copyright, description, rating), then the five texts.
ClipDetails contentDescription(std::string_view body) {
    constexpr std::size_t texts = 5 * 2;
    if (body.size() < texts) return {};
    const auto titleSize = static_cast<std::size_t>(littleEndian(body.substr(0, 2)));
    const auto authorSize = static_cast<std::size_t>(littleEndian(body.substr(2, 2)));
    const std::string_view title = body.substr(texts, titleSize);
    const std::string_view author = body.substr(texts + title.size(), authorSize);
    return {fromUtf16(title), fromUtf16(author)};
}

}  // namespace

std::uint64_t asfHeaderSize(std::string_view fileStart) {
    if (fileStart.size() < kAsfPreambleSize || !fileStart.starts_with(kHeaderObject)) return 0;
    return littleEndian(fileStart.substr(kGuidSize, 8));
}

ClipDetails asfDetails(std::string_view header) {
    if (asfHeaderSize(header) == 0) return {};
    std::string_view rest = header.substr(kAsfPreambleSize);
    while (rest.size() >= kObjectPreamble) {
        const std::uint64_t size = littleEndian(rest.substr(kGuidSize, 8));
        if (size < kObjectPreamble) return {};
        const std::string_view object = rest.substr(0, size < rest.size() ? size : rest.size());
        if (object.starts_with(kContentDescription))
            return contentDescription(object.substr(kObjectPreamble));
        rest.remove_prefix(object.size());
    }
    return {};
}

}  // namespace tunovka
