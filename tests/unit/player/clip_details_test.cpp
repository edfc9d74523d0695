#include <gtest/gtest.h>

#include "player/asf_header.h"
#include "player/clip_details.h"

namespace tunovka {
namespace {

using namespace std::string_literals;

std::string littleEndian(std::uint64_t value, int bytes) {
    std::string result;
    for (; bytes-- > 0; value >>= 8) result += static_cast<char>(value & 0xFF);
    return result;
}

std::string utf16(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) bytes += littleEndian(unit, 2);
    return bytes;
}

const std::string kHeaderGuid = "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"s;
const std::string kContentGuid =
    "\x33\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"s;

std::string object(const std::string& guid, const std::string& body) {
    return guid + littleEndian(24 + body.size(), 8) + body;
}

std::string content(std::u16string_view title, std::u16string_view author) {
    const std::string first = utf16(title), second = utf16(author), rest = utf16(u"zvyšok");
    return object(kContentGuid, littleEndian(first.size(), 2) + littleEndian(second.size(), 2) +
                                    littleEndian(rest.size(), 2) + littleEndian(0, 4) + first +
                                    second + rest);
}

std::string header(const std::string& objects) {
    return kHeaderGuid + littleEndian(30 + objects.size(), 8) + littleEndian(2, 4) + "\x01\x02"s +
           objects;
}

const std::string kOther = object("0123456789abcdef", std::string(40, 'x'));

TEST(AsfHeader, readsTitleAndAuthorWhereverTheyStand) {
    const std::string bytes = header(kOther + content(u"Čerešne\0\0", u" Ján 𝄞 \0") + kOther);
    EXPECT_EQ(asfHeaderSize(bytes), bytes.size());
    EXPECT_EQ(asfDetails(bytes), (ClipDetails{L"Čerešne", L"Ján \U0001D11E"}));
    EXPECT_EQ(asfDetails(bytes + "what follows the header"), asfDetails(bytes));
    EXPECT_EQ(asfDetails(header(content(u"", u"Sama"))), (ClipDetails{L"", L"Sama"}));
    EXPECT_EQ(asfDetails(header(kOther)), ClipDetails{});
}

TEST(AsfHeader, everyCutAndEveryWrongLengthIsHarmless) {
    const std::string whole = header(kOther + content(u"Titul", u"Autor"));
    for (std::size_t size = 0; size < whole.size(); ++size) {
        // A copy of exactly that size, so that a read past its end is noticed.
        const std::string cut(whole.data(), size);
        const ClipDetails details = asfDetails(cut);
        EXPECT_TRUE(std::wstring(L"Titul").starts_with(details.title));
    }
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const char wrong : {'\x00', '\x01', '\x7F', '\xFF'}) {
            std::string bytes = whole;
            bytes[at] = wrong;
            asfDetails(bytes);
        }
    }
    EXPECT_EQ(asfHeaderSize("TAG"), 0u);
    EXPECT_EQ(asfDetails(header(kContentGuid + littleEndian(3, 8) + std::string(50, 'x'))),
              ClipDetails{})
        << "an object smaller than its own preamble ends the walk";
}

std::string id3v1(std::string title, std::string artist) {
    title.resize(30, '\0');
    artist.resize(30, ' ');
    return "TAG" + title + artist + std::string(65, 'x');
}

TEST(ClipDetails, comeFromTheTagElseFromTheList) {
    const auto widen = [](std::string_view bytes) {
        return std::wstring(bytes.begin(), bytes.end());
    };
    EXPECT_EQ(id3v1Details("sound" + id3v1("Titul", "Autor"), widen),
              (ClipDetails{L"Titul", L"Autor"}));
    EXPECT_EQ(id3v1Details(id3v1("", "Autor"), widen).orElse({L"Zo zoznamu", L"Niekto"}),
              (ClipDetails{L"Zo zoznamu", L"Autor"}));
    EXPECT_EQ(id3v1Details(std::string(128, 'x'), widen), ClipDetails{});
    EXPECT_EQ(id3v1Details("TAG", widen), ClipDetails{});
}

TEST(ClipDetails, aListedTitleMayNameTheAuthor) {
    EXPECT_EQ(listedDetails(L" Autor - Titul - živo "), (ClipDetails{L"Titul - živo", L"Autor"}));
    EXPECT_EQ(listedDetails(L"Tam-a-späť"), (ClipDetails{L"Tam-a-späť", L""}));
    EXPECT_EQ(listedDetails(L""), ClipDetails{});
}

}  // namespace
}  // namespace tunovka
