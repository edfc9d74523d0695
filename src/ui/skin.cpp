#include "ui/skin.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

#include "core/late_function.h"
#include "ui/painting.h"
#include "ui/skin_pack.h"
#include "ui/window.h"

namespace tunovka {
namespace Skin {
namespace {

constexpr wchar_t kControls[] = L"comctl32.dll";  // loaded with the first list
constexpr int kLine = 20, kAroundLine = 4;        // in 96ths of an inch

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

// A picture ready for AlphaBlend.
class Drawn {
  public:
    explicit Drawn(const Picture& picture)
        : size_{picture.width, picture.height}, bitmap_(bitmapOf(picture)) {}

    void draw(HDC target, Point place) const {
        if (!bitmap_) return;
        const MemoryDc source = memoryDc();
        const Selected selected(source.get(), bitmap_.get());
        const BLENDFUNCTION over{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
        GdiAlphaBlend(target, place.x, place.y, size_.width, size_.height, source.get(), 0, 0,
                      size_.width, size_.height, over);
    }

  private:
    Size size_;
    Bitmap bitmap_;
};

// The picture of a button, strip or icon by its key, as it is drawn; nullopt for an unknown key. It
// is read at each call: of most only what is scaled to the screen is kept.
std::optional<Picture> Ilistbt(const std::wstring& key) {
    const HRSRC found = FindResourceW(nullptr, L"SKIN", MAKEINTRESOURCEW(10));  // RT_RCDATA
    const void* bytes = LockResource(LoadResource(nullptr, found));
    return readPicture({static_cast<const std::byte*>(bytes), SizeofResource(nullptr, found)}, key);
}

const Picture* pictureAt(const std::wstring& key, int dpi) {
    static std::map<std::pair<std::wstring, int>, Picture> scaled;
    const auto known = scaled.find({key, dpi});
    if (known != scaled.end()) return &known->second;
    const std::optional<Picture> drawn = Ilistbt(key);
    if (!drawn) return nullptr;
    return &scaled.emplace(std::pair{key, dpi}, scaledPicture(*drawn, dpi, kSkinDotsPerInch))
                .first->second;
}

// Lighter by a quarter of what is missing to white, or grey and half as strong; the colours stay
// multiplied by alpha.
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

// Pictures by key, dpi, size and look, at the sizes that windows use.
using Bitmaps = std::map<std::tuple<std::wstring, int, int, int, Look>, Drawn>;

Bitmaps& keptBitmaps() {
    static Bitmaps bitmaps;
    return bitmaps;
}

// Resizing a window asks for many widths: a full cache is emptied.
const Drawn* drawnAt(const std::wstring& key, int dpi, Size size, Look look) {
    Bitmaps& bitmaps = keptBitmaps();
    const auto wanted = std::tuple{key, dpi, size.width, size.height, look};
    const auto known = bitmaps.find(wanted);
    if (known != bitmaps.end()) return &known->second;
    const Picture* picture = pictureAt(key, dpi);
    if (!picture) return nullptr;
    if (bitmaps.size() > 160) bitmaps.clear();
    const bool asItIs = size == Size{picture->width, picture->height};
    return &bitmaps
                .try_emplace(
                    wanted,
                    inLook(asItIs ? *picture : stretchedPicture(*picture, size.width, size.height),
                           look))
                .first->second;
}

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

}  // namespace

Size pictureSize(const std::wstring& key, int dpi) {
    const Picture* picture = pictureAt(key, dpi);
    return picture ? Size{picture->width, picture->height} : Size{};
}

void draw(HDC dc, const std::wstring& key, Point place, int dpi, Look look) {
    if (const Drawn* picture = drawnAt(key, dpi, pictureSize(key, dpi), look))
        picture->draw(dc, place);
}

void drawStretched(HDC dc, const std::wstring& key, const Rect& area, int dpi, Look look) {
    if (area.width < 1 || area.height < 1) return;
    if (const Drawn* picture = drawnAt(key, dpi, {area.width, area.height}, look))
        picture->draw(dc, {area.x, area.y});
}

void forgetBitmaps() {
    keptBitmaps().clear();
}

namespace {

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

std::map<std::pair<int, Font>, HFONT>& fonts() {
    static std::map<std::pair<int, Font>, HFONT> all;
    return all;
}

}  // namespace

// The old ones are not destroyed: controls may still hold them.
void forgetFonts() {
    fonts().clear();
}

HFONT font(int dpi, Font kind) {
    HFONT& font = fonts()[{dpi, kind}];
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
