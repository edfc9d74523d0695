#include "player/clip_details.h"

#include "core/id3v1.h"
#include "core/text.h"

namespace tunovka {

ClipDetails id3v1Details(std::string_view fileEnd,
                         const std::function<std::wstring(std::string_view)>& fromAnsi) {
    const auto tag = MultiMedialny::parseId3v1(fileEnd);
    if (!tag) return {};
    return {MultiMedialny::shownField(fromAnsi(tag->Title)),
            MultiMedialny::shownField(fromAnsi(tag->Artist))};
}

ClipDetails listedDetails(std::wstring_view text) {
    constexpr std::wstring_view separator = L" - ";
    const auto found = text.find(separator);
    if (found == std::wstring_view::npos) return {trimBlanks(text), L""};
    return {trimBlanks(text.substr(found + separator.size())), trimBlanks(text.substr(0, found))};
}

}  // namespace tunovka
