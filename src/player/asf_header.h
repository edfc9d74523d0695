#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "player/clip_details.h"

namespace tunovka {

// How many bytes of a file's start tell how long its ASF header is.
inline constexpr std::size_t kAsfPreambleSize = 30;

// The length in bytes of the ASF header (the container of WMA) that a file begins with, preamble
// included; 0 when the file begins with something else. The number is what the file claims.
std::uint64_t asfHeaderSize(std::string_view fileStart);

// Title and author of the content description in an ASF header. Foreign bytes: every length is
// checked, a header that is cut short gives what could be read, anything else gives nothing.
ClipDetails asfDetails(std::string_view header);

}  // namespace tunovka
