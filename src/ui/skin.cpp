#include "ui/skin.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <tuple>
#include <utility>

#include "core/late_function.h"
#include "ui/painting.h"
#include "ui/skin_pack.h"
#include "ui/window.h"

namespace tunovka {
namespace Skin {
namespace {

constexpr int kLine = 20, kAroundLine = 4;  // in 96ths of an inch

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
        const MemoryDc source;
        const Selected selected(source.get(), bitmap_.get());
        const BLENDFUNCTION over{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
        GdiAlphaBlend(target, place.x, place.y, size_.width, size_.height, source.get(), 0, 0,
                      size_.width, size_.height, over);
    }

  private:
    Size size_;
    Bitmap bitmap_;
};

const PictureTable& pack() {
    static const PictureTable table = [] {
        const HRSRC found = FindResourceW(nullptr, L"SKIN", MAKEINTRESOURCEW(10));  // RT_RCDATA
        const HGLOBAL loaded = found ? LoadResource(nullptr, found) : nullptr;
        const auto* bytes = static_cast<const std::byte*>(loaded ? LockResource(loaded) : nullptr);
        return bytes ? readSkinPack({bytes, SizeofResource(nullptr, found)}) : PictureTable{};
    }();
    return table;
}

const Picture* pictureAt(const std::wstring& key, int dpi) {
    static std::map<std::pair<std::wstring, int>, Picture> scaled;
    const auto known = scaled.find({key, dpi});
    if (known != scaled.end()) return &known->second;
    const auto drawn = pack().find(key);
    if (drawn == pack().end()) return nullptr;
    return &scaled.emplace(std::pair{key, dpi}, scaledPicture(drawn->second, dpi, kSkinDotsPerInch))
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

// A window that is being resized asks for many widths: when there are too many of them, all go.
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

Bitmap createIcon(const std::wstring& key, int side) {
    const auto found = pack().find(key);
    if (found == pack().end()) return {};
    Picture picture = scaledPicture(found->second, side, found->second.width);
    for (std::uint32_t& pixel : picture.pixels) {  // plain colours beside their alpha
        const std::uint32_t alpha = pixel >> 24;
        if (alpha == 0) continue;
        std::uint32_t plain = alpha << 24;
        for (int shift = 0; shift < 24; shift += 8)
            plain |= std::min<std::uint32_t>(255, (pixel >> shift & 0xFF) * 255 / alpha) << shift;
        pixel = plain;
    }
    return bitmapOf(picture);
}

namespace {

std::map<std::pair<int, Font>, HFONT>& fonts() {
    static std::map<std::pair<int, Font>, HFONT> all;
    return all;
}

}  // namespace

// Controls may still hold the former ones, so that these are not destroyed.
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
    return std::max(scaledTo(dpi, kLine), fontHeight(dpi) + scaledTo(dpi, kAroundLine));
}

}  // namespace Skin

namespace {

constexpr wchar_t kControls[] = L"comctl32.dll";  // loaded with the first list

}  // namespace

ImageList::ImageList(Size size) {
    static const LateFunction<decltype(ImageList_Create)> create(kControls, "ImageList_Create");
    if (create) handle_ = create(size.width, size.height, ILC_COLOR32, 1, 16);
}

ImageList::ImageList(const std::vector<std::wstring>& keys, int side)
    : ImageList(Size{side, side}) {
    static const LateFunction<decltype(ImageList_Add)> add(kControls, "ImageList_Add");
    for (const std::wstring& key : keys) {
        const Bitmap icon = Skin::createIcon(key, side);
        if (icon && add && add(handle_, icon.get(), nullptr) >= 0) keys_.push_back(key);
    }
}

ImageList::~ImageList() {
    static const LateFunction<decltype(ImageList_Destroy)> destroy(kControls, "ImageList_Destroy");
    if (handle_ && destroy) destroy(handle_);
}

ImageList::ImageList(ImageList&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)), keys_(std::move(other.keys_)) {}

ImageList& ImageList::operator=(ImageList&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(keys_, other.keys_);
    return *this;
}

int ImageList::index(const std::wstring& key) const {
    const auto found = std::find(keys_.begin(), keys_.end(), key);
    return found == keys_.end() ? -1 : static_cast<int>(found - keys_.begin());
}

}  // namespace tunovka
