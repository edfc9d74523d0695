// The tags of sound files: the ASF header at a file's start, the ID3v1 record at its end.
#include "core/id3v1.h"
#include "core/text.h"
#include "fuzz/fuzz.h"
#include "player/sound_file.h"

namespace tunovka::fuzz {
namespace {

constexpr std::string_view kAsf("\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C",
                                16);

void requireShowable(const std::wstring& text) {
    require(text.find(L'\0') == text.npos, "no NUL is shown");
    require(text == trimBlanks(text), "no blanks are shown around");
    require(text.size() <= 0xFFFF / 2, "no more than the field's bytes can hold");
}

void readAsf(std::string_view input) {
    const ClipDetails any = asfDetails(input);
    requireShowable(any.title);
    requireShowable(any.author);
    if (!input.starts_with(kAsf)) require(any == ClipDetails{}, "other files tell nothing");
}

void readId3v1(std::string_view input) {
    const auto tag = MultiMedialny::parseId3v1(input, wide);
    const bool isTag = input.size() >= 128 && input.substr(input.size() - 128, 3) == "TAG";
    require(tag.has_value() == isTag, "exactly 128 bytes that begin with TAG are one");
    if (!tag) return;
    require(tag->Title + tag->Artist + tag->Album + tag->Year + tag->Comment ==
                wide(input.substr(input.size() - 125, 124)),
            "the fields keep their padding");
    // Two-byte characters are fewer than their bytes.
    const auto fewer =
        MultiMedialny::parseId3v1(input, [](auto raw) { return wide(raw.substr(1)); });
    require(fewer->Title.size() == 30 && fewer->Year.size() == 4, "the fields keep their widths");
    const std::wstring shown = MultiMedialny::shownField(tag->Title);
    requireShowable(shown);
    require(tag->Title.find(shown) != shown.npos, "what is shown stands in the field");
}

}  // namespace

void run(std::string_view input) {
    readAsf(input);
    readId3v1(input);
}

}  // namespace tunovka::fuzz
