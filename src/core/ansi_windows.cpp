#include <windows.h>

#include "core/ansi.h"
#include "core/errors.h"

namespace tunovka {
namespace {

constexpr unsigned kCentralEuropean = 1250;

// The bytes of the text, or an empty result when a character has none. The code page's "best
// fits" (a Greek letter becoming a Latin one) count as none.
std::string exactBytes(unsigned codePage, std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const bool utf8 = codePage == CP_UTF8;
    const DWORD flags = utf8 ? WC_ERR_INVALID_CHARS : WC_NO_BEST_FIT_CHARS;
    BOOL lost = FALSE;
    BOOL* const lostOrNone = utf8 ? nullptr : &lost;  // not allowed with UTF-8

    // No ANSI code page needs more than four bytes for a unit of text.
    std::string bytes(text.size() * 4, '\0');
    const int written = WideCharToMultiByte(codePage, flags, text.data(), length, bytes.data(),
                                            static_cast<int>(bytes.size()), nullptr, lostOrNone);
    if (written <= 0 || lost) return {};
    bytes.resize(static_cast<std::size_t>(written));
    return bytes;
}

// A byte that the code page leaves undefined is read as the control character of its number; this
// is its way back, so that reading and writing a text keeps such bytes.
bool isUndefinedByte(unsigned codePage, wchar_t character) {
    const char byte = static_cast<char>(character);
    return character >= 0x80 && character <= 0x9F && codePage != CP_UTF8 &&
           fromCodePage(codePage, std::string_view(&byte, 1)) == std::wstring_view(&character, 1);
}

}  // namespace

std::wstring fromCodePage(unsigned codePage, std::string_view bytes) {
    if (bytes.empty()) return {};
    // Never more units of text than bytes.
    std::wstring text(bytes.size(), L'\0');
    const DWORD flags = codePage == CP_UTF8 ? MB_ERR_INVALID_CHARS : 0;
    const int written =
        MultiByteToWideChar(codePage, flags, bytes.data(), static_cast<int>(bytes.size()),
                            text.data(), static_cast<int>(text.size()));
    if (written == 0 && codePage == CP_UTF8) return fromCodePage(kCentralEuropean, bytes);
    text.resize(static_cast<std::size_t>(written));
    return text;
}

std::string toCodePage(unsigned codePage, std::wstring_view text) {
    if (text.empty()) return {};
    if (std::string bytes = exactBytes(codePage, text); !bytes.empty()) return bytes;

    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t count = IS_HIGH_SURROGATE(text[at]) && at + 1 < text.size() ? 2 : 1;
        if (const std::string one = exactBytes(codePage, text.substr(at, count)); !one.empty()) {
            bytes += one;
        } else if (isUndefinedByte(codePage, text[at])) {
            bytes += static_cast<char>(text[at]);
        } else {
            RuntimeError error(kInvalidCall);
            error.description =
                L"Kódová stránka systému nemá všetky písmená tejto položky, preto "
                L"ju nemožno zapísať: " +
                std::wstring(text);
            throw RuntimeError(error);
        }
        at += count;
    }
    return bytes;
}

std::wstring fromAnsi(std::string_view bytes) {
    return fromCodePage(GetACP(), bytes);
}

std::string toAnsi(std::wstring_view text) {
    return toCodePage(GetACP(), text);
}

}  // namespace tunovka
