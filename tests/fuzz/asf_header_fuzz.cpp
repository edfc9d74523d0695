// The ASF header.
#include "core/text.h"
#include "fuzz/fuzz.h"
#include "player/sound_file.h"

namespace tunovka::fuzz {
namespace {

constexpr std::string_view kHeader(
    "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C", 16);

void requireShowable(const std::wstring& text) {
    require(text.find(L'\0') == text.npos, "no NUL is shown");
    require(text == trimBlanks(text), "no blanks are shown around");
    require(text.size() <= 0xFFFF / 2, "no more than the field's bytes can hold");
}

}  // namespace

void run(std::string_view input) {
    const ClipDetails any = asfDetails(input);
    requireShowable(any.title);
    requireShowable(any.author);
    if (!input.starts_with(kHeader)) require(any == ClipDetails{}, "other files tell nothing");
}

}  // namespace tunovka::fuzz
