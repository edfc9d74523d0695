// The ID3v1 reader on the last bytes of a file.
#include "core/id3v1.h"
#include "fuzz/fuzz.h"

namespace tunovka::fuzz {
namespace {

void run(std::string_view input) {
    using namespace MultiMedialny;
    const auto bytes = parseId3v1(input);
    const bool isTag = input.size() >= 128 && input.substr(input.size() - 128, 3) == "TAG";
    require(bytes.has_value() == isTag, "exactly 128 bytes that begin with TAG are one");
    if (!bytes) return;

    std::string all = "TAG";
    for (const auto field :
         {bytes->Title, bytes->Artist, bytes->Album, bytes->Year, bytes->Comment})
        all += field;
    require(all == input.substr(input.size() - 128, 127),
            "the fields hold every byte but the last");

    // A code page with two-byte characters gives fewer characters than bytes.
    const Id3v1Tag tag = id3v1Text(*bytes, [&](std::string_view raw) {
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

const Named kNamed("id3v1", run);

}  // namespace
}  // namespace tunovka::fuzz
