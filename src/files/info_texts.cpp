#include "files/info_texts.h"

#include <cmath>

#include "core/text.h"

namespace tunovka {
namespace {

// The nearest single; stored, so that no processor keeps more of it than a single holds.
double single(double value) {
    volatile float stored = static_cast<float>(value);
    return stored;
}

std::wstring cutToHundredths(double value, std::wstring_view decimalSeparator) {
    const auto hundredths = static_cast<std::uint64_t>(std::floor(single(value * 100)));
    std::wstring text = std::to_wstring(hundredths / 100);
    const unsigned rest = hundredths % 100;
    if (rest == 0) return text;
    text += decimalSeparator;
    text += static_cast<wchar_t>(L'0' + rest / 10);
    if (rest % 10 != 0) text += static_cast<wchar_t>(L'0' + rest % 10);
    return text;
}

}  // namespace

std::wstring sizeText(std::uint64_t bytes, std::wstring_view decimalSeparator) {
    const double kilobytes = single(static_cast<double>(bytes) / 1024);
    const bool small = kilobytes <= 1024;
    const double shown = small ? kilobytes : single(static_cast<double>(bytes) / 1024 / 1024);
    return cutToHundredths(shown, decimalSeparator) + (small ? L" kB" : L" MB") + L" (" +
           formatGrouped(bytes) + L" bajtov)";
}

std::wstring dateText(const FileDate& date) {
    if (date.year == 0) return {};
    return std::to_wstring(date.day) + L"." + std::to_wstring(date.month) + L"." +
           std::to_wstring(date.year);
}

std::wstring attributeLines(std::uint32_t attributes) {
    std::wstring lines;
    if (attributes & 1) lines += L"len na čítanie\r\n";
    if (attributes & 4) lines += L"systémový súbor\r\n";
    if (attributes & 2) lines += L"skrytý súbor\r\n";
    return lines;
}

}  // namespace tunovka
