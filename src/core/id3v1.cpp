#include "core/id3v1.h"

#include "core/text.h"

namespace tunovka::MultiMedialny {

std::optional<Id3v1Bytes> parseId3v1(std::string_view fileEnd) {
    if (fileEnd.size() < kId3v1Size) return std::nullopt;
    const std::string_view tag = fileEnd.substr(fileEnd.size() - kId3v1Size);
    if (!tag.starts_with("TAG")) return std::nullopt;
    return Id3v1Bytes{tag.substr(3, 30), tag.substr(33, 30), tag.substr(63, 30), tag.substr(93, 4),
                      tag.substr(97, 30)};
}

Id3v1Tag id3v1Text(const Id3v1Bytes& bytes,
                   const std::function<std::wstring(std::string_view)>& fromAnsi) {
    const auto field = [&](std::string_view raw) {
        std::wstring text = fromAnsi(raw);
        text.resize(raw.size(), L'\0');
        return text;
    };
    return {field(bytes.Title), field(bytes.Artist), field(bytes.Album), field(bytes.Year),
            field(bytes.Comment)};
}

std::wstring shownField(std::wstring_view field) {
    return trimBlanks(trimAtNul(field));
}

}  // namespace tunovka::MultiMedialny
