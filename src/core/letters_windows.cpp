#include <windows.h>

#include "core/text.h"

namespace tunovka {
namespace {

// A mapping of letters. The invariant locale's, which does not change with the user's language,
// because keys and file names are compared after it. One character always gives one character.
class LetterMapping {
  public:
    explicit LetterMapping(DWORD mapping) : mapping_(mapping) {
        for (wchar_t letter = 0; letter < kKnown; ++letter) known_[letter] = letter;
        map(known_, kKnown);
    }

    std::wstring operator()(std::wstring_view text) const {
        std::wstring result(text);
        for (wchar_t& letter : result) {
            if (letter >= kKnown) {
                result = text;
                map(result.data(), result.size());
                break;
            }
            letter = known_[letter];
        }
        return result;
    }

  private:
    void map(wchar_t* text, std::size_t size) const {
        const std::wstring before(text, size);
        LCMapStringW(LOCALE_INVARIANT, mapping_, before.data(), static_cast<int>(size), text,
                     static_cast<int>(size));
    }

    // Latin letters, those of Central Europe among them: asking the system takes far longer.
    static constexpr wchar_t kKnown = 0x180;
    DWORD mapping_;
    wchar_t known_[kKnown]{};
};

}  // namespace

std::wstring lowerCased(std::wstring_view text) {
    static const LetterMapping mapping(LCMAP_LOWERCASE);
    return mapping(text);
}

std::wstring upperCased(std::wstring_view text) {
    static const LetterMapping mapping(LCMAP_UPPERCASE);
    return mapping(text);
}

std::string sortKey(std::wstring_view text) {
    const DWORD how = LCMAP_SORTKEY | NORM_IGNORECASE;
    const int length = static_cast<int>(text.size());
    if (length == 0) return {};
    // Most keys fit into the first guess, which spares the question for the size.
    std::string key(text.size() * 8 + 32, '\0');
    const auto make = [&] {
        return LCMapStringW(LOCALE_USER_DEFAULT, how, text.data(), length,
                            reinterpret_cast<wchar_t*>(key.data()), static_cast<int>(key.size()));
    };
    int size = make();
    if (size == 0) {
        size = LCMapStringW(LOCALE_USER_DEFAULT, how, text.data(), length, nullptr, 0);
        key.resize(size);
        size = make();
    }
    key.resize(size);
    return key;
}

}  // namespace tunovka
