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
    for (const std::wstring& field :
         {whole->Title, whole->Artist, whole->Album, whole->Year, whole->Comment}) {
        require(field.find(L'\0') == field.npos, "no NUL is shown");
        require(!field.starts_with(L' ') && !field.ends_with(L' '), "no padding is shown");
    }
    const std::wstring title = wide(input.substr(input.size() - 125, 30));
    require(title.find(whole->Title) != title.npos, "what is shown stands in the field");
}

}  // namespace tunovka::fuzz
