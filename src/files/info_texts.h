#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/file_system.h"

namespace tunovka {

// "1,5 kB (     1 536 bajtov)": kB through exactly 1024 of them, MB above; in single precision,
// with two decimals cut off and no trailing zeros. `decimalSeparator` is the system's.
std::wstring sizeText(std::uint64_t bytes, std::wstring_view decimalSeparator);

// "5.1.2024"; "" for a date that the system could not give.
std::wstring dateText(const FileDate& date);

// One line, ended by CR LF, for each of read-only, system and hidden that is set.
std::wstring attributeLines(std::uint32_t attributes);

}  // namespace tunovka
