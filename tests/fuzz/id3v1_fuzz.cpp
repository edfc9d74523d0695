// The ID3v1 reader on the last bytes of a file.
#include "core/id3v1.h"
#include "fuzz/fuzz.h"

namespace tunovka::fuzz {
namespace {}  // namespace

void run(std::string_view input) {
    using namespace MultiMedialny;
    const auto whole = parseId3v1(input, [](std::string_view raw) { return wide(raw); });
    const bool isTag = input.size() >= 128 && input.substr(input.size() - 128, 3) == "TAG";
    require(whole.has_value() == isTag, "exactly 128 bytes that begin with TAG are one");
    if (!whole) return;
    require(whole->Title + whole->Artist + whole->Album + whole->Year + whole->Comment ==
                wide(input.substr(input.size() - 125, 124)),
            "the fields hold every byte but the last");

    // A code page with two-byte characters gives fewer characters than bytes.
    const Id3v1Tag tag = *parseId3v1(input, [&](std::string_view raw) {
        return wide(raw.substr(0, static_cast<unsigned char>(input.back()) % (raw.size() + 1)));
    });
    require(tag.Title.size() == 30 && tag.Artist.size() == 30 && tag.Album.size() == 30 &&
                tag.Year.size() == 4 && tag.Comment.size() == 30,
            "the fields keep their widths");
    const std::wstring shown = shownField(tag.Title);
    require(shown.find(L'\0') == shown.npos, "no NUL is shown");
    require(!shown.starts_with(L' ') && !shown.ends_with(L' '), "no padding is shown");
    require(tag.Title.find(shown) != tag.Title.npos, "what is shown stands in the field");
}

}  // namespace tunovka::fuzz
