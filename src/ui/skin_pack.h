#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tunovka {

// Pictures are drawn for this many dots per inch and scaled from there.
inline constexpr int kSkinDotsPerInch = 192;

// Widths, in pixels, of the borders that keep their size when a picture is stretched.
struct Borders {
    int left = 0, top = 0, right = 0, bottom = 0;
};

// Pixels 0xAARRGGBB with the colours multiplied by alpha (in memory the bytes B G R A, as
// AlphaBlend takes them), rows from the top without gaps: width * height of them.
struct Picture {
    int width = 0;
    int height = 0;
    Borders borders;
    std::vector<std::uint32_t> pixels;
};

// A picture of a skin resource by its key, nullopt when there is none. The program's own resource
// is not checked.
//
// It is what tools/pack-pictures writes (numbers little-endian, sizes in pixels at
// kSkinDotsPerInch):
//   32-bit number of pictures
//   a picture: its key in 16 bytes of ASCII filled up with NUL; six 16-bit numbers: width, height
//   and the borders left, top, right, bottom; 32-bit offset of its runs from the first byte of the
//   resource; 32-bit length of its runs in bytes
//   runs: a byte n < 128, then n + 1 pixels B G R A; or a byte n >= 128, then one pixel that
//   stands n - 127 times. Runs go on over the ends of rows and fill the picture exactly.
std::optional<Picture> readPicture(std::span<const std::byte> bytes, std::wstring_view key);

// The picture and its borders times numerator / denominator (both above 0), rounded half up, at
// least one pixel: averaged by area where it shrinks, linear between pixels where it grows.
Picture scaledPicture(const Picture& picture, int numerator, int denominator);

// The picture at that size (at least 1 by 1) with its borders as they are and the middle resampled;
// borders that do not fit share what there is.
Picture stretchedPicture(const Picture& picture, int width, int height);

}  // namespace tunovka
