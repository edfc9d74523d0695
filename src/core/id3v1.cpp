#include "core/id3v1.h"

#include "core/text.h"

namespace tunovka::MultiMedialny {

std::optional<Id3v1Tag> parseId3v1(std::string_view fileEnd,
                                   const std::function<std::wstring(std::string_view)>& fromAnsi) {
    if (fileEnd.size() < kId3v1Size) return std::nullopt;
    const std::string_view tag = fileEnd.substr(fileEnd.size() - kId3v1Size);
    if (!tag.starts_with("TAG")) return std::nullopt;
    const auto field = [&](std::size_t from, std::size_t size) {
        std::wstring text = fromAnsi(tag.substr(from, size));
        text.resize(size, L'\0');
        return text;
    };
    return Id3v1Tag{field(3, 30), field(33, 30), field(63, 30), field(93, 4), field(97, 30)};
}

std::wstring shownField(std::wstring_view field) {
    return trimBlanks(trimAtNul(field));
}

}  // namespace tunovka::MultiMedialny
