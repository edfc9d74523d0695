#include "ui/skin_pack.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace tunovka {
namespace {

using Bytes = std::span<const std::byte>;

template <typename T>
T readAt(Bytes bytes, std::size_t offset) {
    T value{};
    std::memcpy(&value, &bytes[offset], sizeof value);
    return value;
}

struct Entry {
    char key[16];
    std::uint16_t width, height, left, top, right, bottom;
    std::uint32_t offset, length;
};
static_assert(sizeof(Entry) == 36);

std::vector<std::uint32_t> decodedRuns(Bytes runs, std::size_t count) {
    std::vector<std::uint32_t> pixels;
    pixels.reserve(count);
    for (std::size_t at = 0; at < runs.size();) {
        const auto n = std::to_integer<std::size_t>(runs[at++]);
        const std::size_t stored = n < 128 ? n + 1 : 1, times = n < 128 ? 1 : n - 127;
        for (std::size_t i = 0; i < stored; ++i, at += 4)
            pixels.insert(pixels.end(), times, readAt<std::uint32_t>(runs, at));
    }
    return pixels;
}

// How one pixel of the result is mixed along one axis: weights for the source pixels from `first`
// on, whose sum is kWhole. Two axes multiplied by a channel just fit into 32 bits.
constexpr std::uint32_t kWhole = 4096;
struct Mix {
    int first;
    std::vector<std::uint32_t> weights;
};
using Axis = std::vector<Mix>;

// What source pixels share in the result pixel i. Of fewer pixels each is the mean of the stretch
// that it covers; of more, each lies between the centres of two.
std::pair<int, std::vector<double>> sharesOf(int i, int length, int result) {
    const double step = static_cast<double>(length) / result;
    if (result >= length) {
        const double centre = std::clamp((i + 0.5) * step - 0.5, 0.0, length - 1.0);
        const int first = static_cast<int>(centre);
        const double second = centre - first;
        if (second > 0) return {first, {1 - second, second}};
        return {first, {1.0}};
    }
    const double begin = i * step, end = (i + 1) * step;
    const int first = static_cast<int>(begin);
    std::vector<double> shares;
    for (int pixel = first; pixel < length && pixel < end; ++pixel)
        shares.push_back((std::min(end, pixel + 1.0) - std::max<double>(begin, pixel)) / step);
    return {first, shares};
}

// The source pixels [from, from + length) as that many result pixels.
void appendResized(Axis& axis, int from, int length, int result) {
    for (int i = 0; i < result; ++i) {
        const auto [first, shares] = sharesOf(i, length, result);
        Mix mix{from + first, {}};
        std::uint32_t rest = kWhole;  // of which the last takes what rounding left over
        for (std::size_t share = 0; share + 1 < shares.size(); ++share) {
            const auto wanted = static_cast<std::uint32_t>(std::lround(shares[share] * kWhole));
            mix.weights.push_back(std::min(rest, wanted));
            rest -= mix.weights.back();
        }
        mix.weights.push_back(rest);
        axis.push_back(std::move(mix));
    }
}

// An axis of that length whose borders before and after the middle are kept.
Axis stretchedAxis(int length, int before, int after, int result) {
    int keptBefore = before, keptAfter = after;
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
        const std::uint32_t* pixel = &picture.pixels[(row.first + y) * picture.width];
        for (std::size_t x = 0; x < column.weights.size(); ++x) {
            const std::uint32_t weight = row.weights[y] * column.weights[x];
            for (int channel = 0; channel < 4; ++channel)
                channels[channel] += (pixel[column.first + x] >> 8 * channel & 0xFF) * weight;
        }
    }
    std::uint32_t mixed = 0;
    for (int channel = 0; channel < 4; ++channel)
        mixed |= channels[channel] / (kWhole * kWhole) << 8 * channel;
    return mixed;
}

Picture resampled(const Picture& picture, const Axis& columns, const Axis& rows) {
    Picture result{
        static_cast<int>(columns.size()), static_cast<int>(rows.size()), picture.borders, {}};
    result.pixels.reserve(columns.size() * rows.size());
    for (const Mix& row : rows)
        for (const Mix& column : columns) result.pixels.push_back(mixedPixel(picture, column, row));
    return result;
}

}  // namespace

std::optional<Picture> readPicture(Bytes bytes, std::wstring_view key) {
    for (std::uint32_t i = 0; i < readAt<std::uint32_t>(bytes, 0); ++i) {
        const auto entry = readAt<Entry>(bytes, 4 + i * sizeof(Entry));
        if (!std::equal(key.begin(), key.end(), entry.key, std::ranges::find(entry.key, '\0')))
            continue;
        return Picture{entry.width,
                       entry.height,
                       {entry.left, entry.top, entry.right, entry.bottom},
                       decodedRuns(bytes.subspan(entry.offset, entry.length),
                                   std::size_t{entry.width} * entry.height)};
    }
    return std::nullopt;
}

Picture scaledPicture(const Picture& picture, int numerator, int denominator) {
    if (numerator == denominator) return picture;
    const auto scaled = [&](int length) {
        return (2 * length * numerator + denominator) / (2 * denominator);
    };
    Axis columns, rows;
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
    return resampled(picture, stretchedAxis(picture.width, borders.left, borders.right, width),
                     stretchedAxis(picture.height, borders.top, borders.bottom, height));
}

}  // namespace tunovka
