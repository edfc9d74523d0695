#include "ui/drag_drop.h"

#include <shlobj.h>

#include <cstring>
#include <memory>
#include <optional>
#include <utility>

#include "core/ansi.h"
#include "core/com_object.h"
#include "core/late_function.h"
#include "core/loop.h"
#include "core/ole_windows.h"
#include "core/text.h"
#include "ui/form.h"

namespace tunovka {

DragState dragState;

namespace {

FORMATETC formatOf(CLIPFORMAT format) {
    return {format, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

HGLOBAL globalCopy(const void* bytes, std::size_t size) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    if (!memory) return nullptr;
    std::memcpy(GlobalLock(memory), bytes, size);
    GlobalUnlock(memory);
    return memory;
}

std::string asAnsi(const std::wstring& text) {
    std::string bytes(4 * text.size() + 1, '\0');  // no code page needs more; its end counts
    bytes.resize(WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, bytes.data(),
                                     static_cast<int>(bytes.size()), nullptr, nullptr));
    return bytes;
}

class TextData final : public SingleComObject<IDataObject> {
  public:
    explicit TextData(std::wstring text) : text_(std::move(text)) {}

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
        if (QueryGetData(format) != S_OK) return DV_E_FORMATETC;
        medium->tymed = TYMED_HGLOBAL;
        medium->pUnkForRelease = nullptr;
        if (format->cfFormat == CF_UNICODETEXT) {
            medium->hGlobal = globalCopy(text_.c_str(), (text_.size() + 1) * sizeof(wchar_t));
        } else {
            const std::string bytes = asAnsi(text_);
            medium->hGlobal = globalCopy(bytes.data(), bytes.size());
        }
        return medium->hGlobal ? S_OK : E_OUTOFMEMORY;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override {
        const bool known = format->cfFormat == CF_UNICODETEXT || format->cfFormat == CF_TEXT;
        return known && format->tymed & TYMED_HGLOBAL ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* same) override {
        same->ptd = nullptr;
        return DATA_S_SAMEFORMATETC;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override {
        static const LateFunction<decltype(SHCreateStdEnumFmtEtc)> create(L"shell32.dll",
                                                                          "SHCreateStdEnumFmtEtc");
        if (direction != DATADIR_GET || !create) return E_NOTIMPL;
        const FORMATETC both[] = {formatOf(CF_UNICODETEXT), formatOf(CF_TEXT)};
        return create(2, both, formats);
    }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }

  private:
    std::wstring text_;
};

std::optional<std::wstring> textIn(IDataObject* data, CLIPFORMAT format) {
    FORMATETC wanted = formatOf(format);
    STGMEDIUM medium{};
    if (FAILED(data->GetData(&wanted, &medium))) return std::nullopt;
    std::optional<std::wstring> text;
    const std::size_t size = medium.tymed == TYMED_HGLOBAL ? GlobalSize(medium.hGlobal) : 0;
    if (const void* bytes = size ? GlobalLock(medium.hGlobal) : nullptr) {
        text = format == CF_UNICODETEXT
                   ? trimAtNul({static_cast<const wchar_t*>(bytes), size / sizeof(wchar_t)})
                   : trimAtNul(fromAnsi({static_cast<const char*>(bytes), size}));
        GlobalUnlock(medium.hGlobal);
    }
    ReleaseStgMedium(&medium);
    return text;
}

class DropSource final : public SingleComObject<IDropSource> {
  public:
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override {
        if (escape) return DRAGDROP_S_CANCEL;
        return keys & MK_LBUTTON ? S_OK : DRAGDROP_S_DROP;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
};

bool hasText(IDataObject* data) {
    FORMATETC wide = formatOf(CF_UNICODETEXT);
    FORMATETC ansi = formatOf(CF_TEXT);
    return data && (data->QueryGetData(&wide) == S_OK || data->QueryGetData(&ansi) == S_OK);
}

// What dragging needs on the windows' thread, for the program's whole life.
void prepareOle() {
    static const HRESULT prepared = OleInitialize(nullptr);
    (void)prepared;
}

}  // namespace

IDataObject* createTextData(const std::wstring& text) {
    return new TextData(text);
}

void dragText(const std::wstring& text, const DragState& state) {
    dragState = state;
    const ComPtr<IDropSource> source(new DropSource);
    const ComPtr<IDataObject> data(createTextData(text));
    DWORD effect = DROPEFFECT_NONE;
    DoDragDrop(data.get(), source.get(), DROPEFFECT_COPY, &effect);
    dragState = {};
}

// Lives as long as the system holds it, without its window once the TextDropTarget has gone.
class TextDropTarget::Target final : public SingleComObject<IDropTarget> {
  public:
    Target(Window& window, Events events) : window_(&window), events_(std::move(events)) {
        window.onCreated = [this] {
            prepareOle();
            RegisterDragDrop(window_->handle(), this);
        };
    }
    void detach() {
        window_->onCreated = nullptr;
        if (window_->handle()) RevokeDragDrop(window_->handle());
        window_ = nullptr;
    }

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD, POINTL at,
                                        DWORD* effect) override {
        offersText_ = hasText(data);
        return DragOver(0, at, effect);
    }
    HRESULT STDMETHODCALLTYPE DragOver(DWORD, POINTL at, DWORD* effect) override {
        welcome_ = false;
        guarded([&] {
            if (!window_ || !offersText_) return;
            // A form is switched off while a box over it is open; its controls are not.
            const HWND control = window_->handle();
            welcome_ = IsWindowEnabled(control) && IsWindowEnabled(GetAncestor(control, GA_ROOT)) &&
                       events_.over(window_->fromScreen({at.x, at.y}));
        });
        *effect = welcome_ ? *effect & DROPEFFECT_COPY : DROPEFFECT_NONE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DragLeave() override {
        guarded([&] {
            if (window_ && events_.leave) events_.leave();
        });
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD, POINTL at, DWORD* effect) override {
        // Not asked again: a list would scroll once more and show another row than it takes.
        *effect = welcome_ ? *effect & DROPEFFECT_COPY : DROPEFFECT_NONE;
        guarded([&] {
            if (!window_ || *effect == DROPEFFECT_NONE) return;
            auto text = textIn(data, CF_UNICODETEXT);
            if (!text) text = textIn(data, CF_TEXT);
            if (!text) return;
            const auto self = std::make_shared<ComPtr<Target>>(ComPtr<Target>::shared(this));
            const Point place = window_->fromScreen({at.x, at.y});
            postToLoop([self, text = *text, place, drag = dragState] {
                if ((*self)->window_) (*self)->events_.drop(text, place, drag);
            });
        });
        return DragLeave();
    }

  private:
    Window* window_;
    Events events_;
    bool offersText_ = false;
    bool welcome_ = false;  // where the pointer was last
};

TextDropTarget::TextDropTarget(Window& window, Events events)
    : target_(new Target(window, std::move(events))) {}

TextDropTarget::~TextDropTarget() {
    target_->detach();
}

}  // namespace tunovka
