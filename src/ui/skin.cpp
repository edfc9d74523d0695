#include "ui/skin.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <optional>
#include <span>
#include <tuple>
#include <utility>

#include "core/late_function.h"
#include "ui/painting.h"
#include "ui/window.h"

namespace tunovka {
namespace Skin {
namespace {

constexpr wchar_t kControls[] = L"comctl32.dll";  // loaded with the first list
constexpr int kLine = 20, kAroundLine = 4;        // in 96ths of an inch

// ---- Pictures as they are packed, and at other sizes --------------------------------------------

// Pictures are drawn for this many dots per inch and scaled from there.
constexpr int kSkinDotsPerInch = 192;

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

using Bytes = std::span<const std::byte>;

template <typename T>
T readAt(Bytes bytes, std::size_t offset) {
    T value{};
    std::memcpy(&value, &bytes[offset], sizeof value);
    return value;
}

struct Entry {
    char key[16];                                           // filled up with NUL
    std::uint16_t width, height, left, top, right, bottom;  // and borders, at kSkinDotsPerInch
    std::uint32_t offset, length;                           // of its runs in the resource, in bytes
};
static_assert(sizeof(Entry) == 36);

// Runs go on over the ends of rows: a byte n < 128, then n + 1 pixels B G R A; or a byte n >= 128,
// then one pixel that stands n - 127 times.
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

// A picture by its key, nullopt when there is none. The resource is what tools/pack-pictures
// writes: the 32-bit number of entries, the entries, then their runs. It is not checked.
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

// The picture and its borders times numerator / denominator (both above 0), rounded half up, at
// least one pixel: averaged by area where it shrinks, linear between pixels where it grows.
Picture scaledPicture(const Picture& picture, int numerator, int denominator) {
    if (numerator == denominator) return picture;
    const auto scaled = [&](int length) {
        return (2 * length * numerator + denominator) / (2 * denominator);
    };
    const auto axis = [&](int length) {
        return stretchedAxis(length, 0, 0, std::max(1, scaled(length)));
    };
    Picture result = resampled(picture, axis(picture.width), axis(picture.height));
    const Borders& borders = picture.borders;
    result.borders = {scaled(borders.left), scaled(borders.top), scaled(borders.right),
                      scaled(borders.bottom)};
    return result;
}

// The picture at that size, its borders as they are; where they do not fit they share what is.
Picture stretchedPicture(const Picture& picture, int width, int height) {
    if (width == picture.width && height == picture.height) return picture;
    const Borders& borders = picture.borders;
    return resampled(picture, stretchedAxis(picture.width, borders.left, borders.right, width),
                     stretchedAxis(picture.height, borders.top, borders.bottom, height));
}

// ---- Pictures as they are drawn ----------------------------------------------------------------

Bitmap bitmapOf(const Picture& picture) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = picture.width;
    info.bmiHeader.biHeight = -picture.height;  // rows from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    Bitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (bitmap) std::memcpy(bits, picture.pixels.data(), picture.pixels.size() * 4);
    return bitmap;
}

// The picture of a button, strip or icon by its key, as it is drawn; nullopt for an unknown key. It
// is read at each call: of most only what is scaled to the screen is kept.
std::optional<Picture> Ilistbt(const std::wstring& key) {
    const HRSRC found = FindResourceW(nullptr, L"SKIN", MAKEINTRESOURCEW(10));  // RT_RCDATA
    const void* bytes = LockResource(LoadResource(nullptr, found));
    return readPicture({static_cast<const std::byte*>(bytes), SizeofResource(nullptr, found)}, key);
}

const Picture* pictureAt(const std::wstring& key, int dpi) {
    static std::map<std::pair<std::wstring, int>, Picture> pictures;
    const auto known = pictures.find({key, dpi});
    if (known != pictures.end()) return &known->second;
    const std::optional<Picture> drawn = Ilistbt(key);
    if (!drawn) return nullptr;
    return &(pictures[{key, dpi}] = scaledPicture(*drawn, dpi, kSkinDotsPerInch));
}

// Lighter by a quarter of what is missing to white, or grey and half as strong.
Picture inLook(Picture picture, Look look) {
    if (look == Look::Plain) return picture;
    for (std::uint32_t& pixel : picture.pixels) {
        const std::uint32_t alpha = pixel >> 24;
        std::uint32_t channels[3];
        for (int i = 0; i < 3; ++i) channels[i] = pixel >> 8 * i & 0xFF;
        const std::uint32_t grey = (channels[0] + 6 * channels[1] + 3 * channels[2]) / 10;
        pixel = (look == Look::Lit ? alpha : alpha / 2) << 24;
        for (int i = 0; i < 3; ++i) {
            const std::uint32_t lit = channels[i] + (alpha - channels[i]) / 4;
            pixel |= (look == Look::Lit ? lit : grey / 2) << 8 * i;
        }
    }
    return picture;
}

// By key, dpi, size and look, at the sizes that windows use, ready for AlphaBlend.
std::map<std::tuple<std::wstring, int, int, int, Look>, Bitmap> bitmaps;

HFONT createFont(int dpi, Font kind) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics - sizeof metrics.iPaddedBorderWidth;  // also before Vista
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    LOGFONTW font = metrics.lfMessageFont;
    // The system gives the height for its own dpi.
    font.lfHeight = MulDiv(font.lfHeight, dpi, dpiOf(nullptr));
    if (kind == Font::Title) font.lfHeight *= 2;
    if (kind != Font::Text) font.lfWeight = FW_BOLD;
    return CreateFontIndirectW(&font);
}

// Square, with the colours not multiplied by alpha, as image lists take it.
Bitmap createIcon(const std::wstring& key, int side) {
    const std::optional<Picture> drawn = Ilistbt(key);
    if (!drawn) return {};
    Picture picture = scaledPicture(*drawn, side, drawn->width);
    for (std::uint32_t& pixel : picture.pixels) {
        const std::uint32_t alpha = pixel >> 24;
        if (alpha == 0) continue;
        std::uint32_t plain = alpha << 24;
        for (int shift = 0; shift < 24; shift += 8)
            plain |= std::min<std::uint32_t>(255, (pixel >> shift & 0xFF) * 255 / alpha) << shift;
        pixel = plain;
    }
    return bitmapOf(picture);
}

std::map<std::pair<int, Font>, HFONT> fonts;

}  // namespace

Size pictureSize(const std::wstring& key, int dpi) {
    const Picture* picture = pictureAt(key, dpi);
    return picture ? Size{picture->width, picture->height} : Size{};
}

void draw(HDC dc, const std::wstring& key, Point place, int dpi) {
    const Size size = pictureSize(key, dpi);
    drawStretched(dc, key, {place.x, place.y, size.width, size.height}, dpi);
}

void drawStretched(HDC dc, const std::wstring& key, const Rect& area, int dpi, Look look) {
    const Picture* picture = pictureAt(key, dpi);
    if (!picture || area.width < 1 || area.height < 1) return;
    if (bitmaps.size() > 160) bitmaps.clear();  // resizing a window asks for many widths
    Bitmap& bitmap = bitmaps[{key, dpi, area.width, area.height, look}];
    if (!bitmap)
        bitmap = bitmapOf(inLook(stretchedPicture(*picture, area.width, area.height), look));
    if (!bitmap) return;
    const MemoryDc source = memoryDc();
    const Selected selected(source.get(), bitmap.get());
    const BLENDFUNCTION over{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    GdiAlphaBlend(dc, area.x, area.y, area.width, area.height, source.get(), 0, 0, area.width,
                  area.height, over);
}

void forgetBitmaps() {
    bitmaps.clear();
}

// The old ones are not destroyed: controls may still hold them.
void forgetFonts() {
    fonts.clear();
}

HFONT font(int dpi, Font kind) {
    HFONT& font = fonts[{dpi, kind}];
    if (!font) font = createFont(dpi, kind);
    return font;
}

int fontHeight(int dpi, Font kind) {
    return measureText(L"Ág", font(dpi, kind)).height;
}

int lineHeight(int dpi) {
    return std::max(MulDiv(kLine, dpi, 96), fontHeight(dpi) + MulDiv(kAroundLine, dpi, 96));
}

ImageList createImageList(Size size, const std::vector<std::wstring>& keys) {
    static const LateFunction<decltype(ImageList_Create)> create(kControls, "ImageList_Create");
    static const LateFunction<decltype(ImageList_Add)> add(kControls, "ImageList_Add");
    if (!create || !add) return {};
    ImageList list(create(size.width, size.height, ILC_COLOR32, 1, 16));
    for (const std::wstring& key : keys) {
        const Bitmap icon = createIcon(key, size.width);
        add(list.get(), icon.get(), nullptr);
    }
    return list;
}

}  // namespace Skin

void ImageListKind::close(HIMAGELIST list) {
    static const LateFunction<decltype(ImageList_Destroy)> destroy(Skin::kControls,
                                                                   "ImageList_Destroy");
    if (destroy) destroy(list);
}

}  // namespace tunovka
