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

// A picture ready for AlphaBlend.
class Drawn {
  public:
    explicit Drawn(const Picture& picture) : size_{picture.width, picture.height} {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = picture.width;
        info.bmiHeader.biHeight = -picture.height;  // rows from the top
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        bitmap_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        if (bitmap_) std::memcpy(bits, picture.pixels.data(), picture.pixels.size() * 4);
    }

    Size size() const { return size_; }
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

// Pictures by key, dpi and size, at the sizes that windows use.
using Bitmaps = std::map<std::tuple<std::wstring, int, int, int>, Drawn>;

Bitmaps& keptBitmaps() {
    static Bitmaps bitmaps;
    return bitmaps;
}

// A window that is being resized asks for many widths: when there are too many of them, all go.
const Drawn* drawnAt(const std::wstring& key, int dpi, Size size) {
    Bitmaps& bitmaps = keptBitmaps();
    const auto wanted = std::tuple{key, dpi, size.width, size.height};
    const auto known = bitmaps.find(wanted);
    if (known != bitmaps.end()) return &known->second;
    const Picture* picture = pictureAt(key, dpi);
    if (!picture) return nullptr;
    if (bitmaps.size() > 160) bitmaps.clear();
    const bool asItIs = size == Size{picture->width, picture->height};
    return &bitmaps
                .try_emplace(
                    wanted, asItIs ? *picture : stretchedPicture(*picture, size.width, size.height))
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

void draw(HDC dc, const std::wstring& key, Point place, int dpi) {
    if (const Drawn* picture = drawnAt(key, dpi, pictureSize(key, dpi))) picture->draw(dc, place);
}

void drawStretched(HDC dc, const std::wstring& key, const Rect& area, int dpi) {
    if (area.width < 1 || area.height < 1) return;
    if (const Drawn* picture = drawnAt(key, dpi, {area.width, area.height}))
        picture->draw(dc, {area.x, area.y});
}

void forgetBitmaps() {
    keptBitmaps().clear();
}

HICON createIcon(const std::wstring& key, int side) {
    const auto found = pack().find(key);
    if (found == pack().end()) return nullptr;
    Picture picture = scaledPicture(found->second, side, found->second.width);
    for (std::uint32_t& pixel : picture.pixels) {  // an icon wants plain colours beside its alpha
        const std::uint32_t alpha = pixel >> 24;
        if (alpha == 0) continue;
        std::uint32_t plain = alpha << 24;
        for (int shift = 0; shift < 24; shift += 8)
            plain |= std::min<std::uint32_t>(255, (pixel >> shift & 0xFF) * 255 / alpha) << shift;
        pixel = plain;
    }
    const int width = picture.width, height = picture.height;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP color = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (!color) return nullptr;
    std::memcpy(bits, picture.pixels.data(), picture.pixels.size() * 4);
    const std::vector<std::uint8_t> opaque((width + 15) / 16 * 2 * height, 0);
    const HBITMAP mask = CreateBitmap(width, height, 1, 1, opaque.data());
    ICONINFO parts{TRUE, 0, 0, mask, color};
    const HICON icon = CreateIconIndirect(&parts);
    DeleteObject(mask);
    DeleteObject(color);
    return icon;
}

HFONT font(int dpi, Font kind) {
    static std::map<std::pair<int, Font>, HFONT> fonts;
    HFONT& font = fonts[{dpi, kind}];
    if (!font) font = createFont(dpi, kind);
    return font;
}

int fontHeight(int dpi, Font kind) {
    return measureText(L"Ág", font(dpi, kind)).height;
}

}  // namespace Skin

namespace {

constexpr wchar_t kControls[] = L"comctl32.dll";  // loaded with the first list

}  // namespace

ImageList::ImageList(Size size) {
    static const LateFunction<decltype(ImageList_Create)> create(kControls, "ImageList_Create");
    if (create) handle_ = create(size.width, size.height, ILC_COLOR32 | ILC_MASK, 1, 16);
}

ImageList::ImageList(const std::vector<std::wstring>& keys, int side)
    : ImageList(Size{side, side}) {
    static const LateFunction<decltype(ImageList_ReplaceIcon)> put(kControls,
                                                                   "ImageList_ReplaceIcon");
    for (const std::wstring& key : keys) {
        const Icon icon(Skin::createIcon(key, side));
        if (icon && put && put(handle_, -1, icon.get()) >= 0) keys_.push_back(key);
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
