#include "ui/skin_pack.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace tunovka {
namespace {

constexpr std::size_t kKeyBytes = 16;
constexpr std::size_t kHeaderBytes = 8;
constexpr std::size_t kEntryBytes = kKeyBytes + 6 * 2 + 2 * 4;
constexpr std::uint32_t kMagic = 0x4E4B5354;  // "TSKN"
constexpr std::uint32_t kVersion = 1;
constexpr int kLargestSide = 4096;

using Bytes = std::span<const std::byte>;

// Little-endian number of Size bytes; the caller has checked the bounds.
template <std::size_t Size>
std::uint32_t numberAt(Bytes bytes, std::size_t offset) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < Size; ++i) {
        number |= std::to_integer<std::uint32_t>(bytes[offset + i]) << (8 * i);
    }
    return number;
}

// Exactly count pixels out of all the runs, or none.
std::vector<std::uint32_t> decodedRuns(Bytes runs, std::size_t count) {
    std::vector<std::uint32_t> pixels;
    // A run stands for at most 128 pixels and takes at least five bytes: a header that promises
    // more than its runs can hold is refused before memory is asked for.
    if (count > runs.size() / 5 * 128) return pixels;
    pixels.reserve(count);
    std::size_t at = 0;
    while (at < runs.size()) {
        const auto n = std::to_integer<std::size_t>(runs[at++]);
        const std::size_t stored = n < 128 ? n + 1 : 1;
        const std::size_t shown = n < 128 ? n + 1 : n - 127;
        if (stored * 4 > runs.size() - at || shown > count - pixels.size()) return {};
        if (n < 128) {
            for (std::size_t i = 0; i < stored; ++i) {
                pixels.push_back(numberAt<4>(runs, at + i * 4));
            }
        } else {
            pixels.insert(pixels.end(), shown, numberAt<4>(runs, at));
        }
        at += stored * 4;
    }
    if (pixels.size() != count) return {};
    return pixels;
}

std::wstring keyAt(Bytes bytes, std::size_t offset) {
    std::wstring key;
    for (std::size_t i = 0; i < kKeyBytes && bytes[offset + i] != std::byte{0}; ++i) {
        key += static_cast<wchar_t>(std::to_integer<unsigned char>(bytes[offset + i]));
    }
    return key;
}

std::optional<Picture> pictureAt(Bytes bytes, std::size_t entry) {
    const auto side = [&](std::size_t index) {
        return static_cast<int>(numberAt<2>(bytes, entry + kKeyBytes + index * 2));
    };
    Picture picture{side(0), side(1), {side(2), side(3), side(4), side(5)}, {}};
    const Borders& borders = picture.borders;
    if (picture.width < 1 || picture.width > kLargestSide || picture.height < 1 ||
        picture.height > kLargestSide || borders.left + borders.right >= picture.width ||
        borders.top + borders.bottom >= picture.height) {
        return std::nullopt;
    }
    const std::size_t offset = numberAt<4>(bytes, entry + kEntryBytes - 8);
    const std::size_t length = numberAt<4>(bytes, entry + kEntryBytes - 4);
    if (offset > bytes.size() || length > bytes.size() - offset) return std::nullopt;
    picture.pixels =
        decodedRuns(bytes.subspan(offset, length), static_cast<std::size_t>(picture.width) *
                                                       static_cast<std::size_t>(picture.height));
    if (picture.pixels.empty()) return std::nullopt;
    return picture;
}

// How one pixel of the result is mixed along one axis: weights for the source pixels from first
// on, whose sum is kWhole. Two axes multiplied by a channel just fit into 32 bits.
constexpr std::uint32_t kWhole = 4096;
struct Mix {
    int first;
    std::vector<std::uint32_t> weights;
};
using Axis = std::vector<Mix>;

// The last weight takes what rounding left over.
void appendMix(Axis& axis, int first, const std::vector<double>& shares) {
    Mix mix{first, {}};
    std::uint32_t rest = kWhole;
    for (std::size_t i = 0; i + 1 < shares.size(); ++i) {
        const auto weight =
            std::min(rest, static_cast<std::uint32_t>(std::lround(shares[i] * kWhole)));
        mix.weights.push_back(weight);
        rest -= weight;
    }
    mix.weights.push_back(rest);
    axis.push_back(std::move(mix));
}

// Each result pixel is the mean of the stretch of source pixels that it covers.
void appendShrunk(Axis& axis, int from, int length, int result) {
    const double step = static_cast<double>(length) / result;
    for (int i = 0; i < result; ++i) {
        const double begin = i * step;
        const double end = (i + 1) * step;
        const int first = static_cast<int>(begin);
        std::vector<double> shares;
        for (int pixel = first; pixel < length && pixel < end; ++pixel) {
            const double covered =
                std::min(end, pixel + 1.0) - std::max(begin, static_cast<double>(pixel));
            shares.push_back(covered / step);
        }
        appendMix(axis, from + first, shares);
    }
}

// Each result pixel lies between the centres of two source pixels.
void appendGrown(Axis& axis, int from, int length, int result) {
    const double step = static_cast<double>(length) / result;
    for (int i = 0; i < result; ++i) {
        const double centre = std::clamp((i + 0.5) * step - 0.5, 0.0, length - 1.0);
        const int first = static_cast<int>(centre);
        const double share = centre - first;
        if (share > 0) {
            appendMix(axis, from + first, {1 - share, share});
        } else {
            appendMix(axis, from + first, {1.0});
        }
    }
}

// The source pixels [from, from + length) as that many result pixels.
void appendResized(Axis& axis, int from, int length, int result) {
    if (result == 0) return;
    if (result < length) {
        appendShrunk(axis, from, length, result);
    } else {
        appendGrown(axis, from, length, result);
    }
}

// An axis of that length whose borders before and after the middle are kept.
Axis stretchedAxis(int length, int before, int after, int result) {
    // After scaling down, the rounded borders may have swallowed the middle.
    if (before + after >= length) {
        before = std::min(before, length - 1);
        after = length - 1 - before;
    }
    int keptBefore = before;
    int keptAfter = after;
    if (before + after > result) {
        keptBefore = result * before / (before + after);
        keptAfter = result - keptBefore;
    }
    Axis axis;
    appendResized(axis, 0, before, keptBefore);
    appendResized(axis, before, length - before - after, result - keptBefore - keptAfter);
    appendResized(axis, length - after, after, keptAfter);
    return axis;
}

std::uint32_t mixedPixel(const Picture& picture, const Mix& column, const Mix& row) {
    constexpr std::uint32_t kHalf = kWhole * kWhole / 2;
    std::uint32_t channels[4] = {kHalf, kHalf, kHalf, kHalf};
    for (std::size_t y = 0; y < row.weights.size(); ++y) {
        const auto line =
            (static_cast<std::size_t>(row.first) + y) * static_cast<std::size_t>(picture.width) +
            static_cast<std::size_t>(column.first);
        for (std::size_t x = 0; x < column.weights.size(); ++x) {
            const std::uint32_t pixel = picture.pixels[line + x];
            const std::uint32_t weight = row.weights[y] * column.weights[x];
            for (int channel = 0; channel < 4; ++channel) {
                channels[channel] += ((pixel >> (8 * channel)) & 255) * weight;
            }
        }
    }
    std::uint32_t mixed = 0;
    for (int channel = 0; channel < 4; ++channel) {
        mixed |= channels[channel] / (kWhole * kWhole) << (8 * channel);
    }
    return mixed;
}

Picture resampled(const Picture& picture, const Axis& columns, const Axis& rows) {
    Picture result{
        static_cast<int>(columns.size()), static_cast<int>(rows.size()), picture.borders, {}};
    result.pixels.reserve(columns.size() * rows.size());
    for (const Mix& row : rows) {
        for (const Mix& column : columns) result.pixels.push_back(mixedPixel(picture, column, row));
    }
    return result;
}

}  // namespace

PictureTable readSkinPack(std::span<const std::byte> bytes) {
    if (bytes.size() < kHeaderBytes || numberAt<4>(bytes, 0) != kMagic ||
        numberAt<2>(bytes, 4) != kVersion) {
        return {};
    }
    const std::size_t count = numberAt<2>(bytes, 6);
    if (count > (bytes.size() - kHeaderBytes) / kEntryBytes) return {};
    PictureTable table;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = kHeaderBytes + i * kEntryBytes;
        auto picture = pictureAt(bytes, entry);
        if (!picture) return {};
        table[keyAt(bytes, entry)] = std::move(*picture);
    }
    return table;
}

Picture scaledPicture(const Picture& picture, int numerator, int denominator) {
    if (numerator == denominator) return picture;
    const auto scaled = [&](int length) {
        return static_cast<int>((2 * static_cast<std::int64_t>(length) * numerator + denominator) /
                                (2 * static_cast<std::int64_t>(denominator)));
    };
    Axis columns;
    Axis rows;
    appendResized(columns, 0, picture.width, std::max(1, scaled(picture.width)));
    appendResized(rows, 0, picture.height, std::max(1, scaled(picture.height)));
    Picture result = resampled(picture, columns, rows);
    const Borders& borders = picture.borders;
    result.borders = {scaled(borders.left), scaled(borders.top), scaled(borders.right),
                      scaled(borders.bottom)};
    return result;
}

Picture stretchedPicture(const Picture& picture, int width, int height) {
    const Borders& borders = picture.borders;
    return resampled(
        picture, stretchedAxis(picture.width, borders.left, borders.right, std::max(1, width)),
        stretchedAxis(picture.height, borders.top, borders.bottom, std::max(1, height)));
}

}  // namespace tunovka
