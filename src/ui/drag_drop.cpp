#include "ui/drag_drop.h"

#include <ole2.h>

#include <cstring>
#include <vector>

#include "core/errors.h"
#include "core/events.h"
#include "core/text.h"
#include "ui/boundary.h"
#include "ui/text_data.h"

namespace tunovka {

DragState dragState;

namespace {

class DropSource final : public IDropSource {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (id != IID_IUnknown && id != IID_IDropSource) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = this;
        return S_OK;
    }
    // It lives on the stack of the drag.
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override {
        if (escape) return DRAGDROP_S_CANCEL;
        return keys & MK_LBUTTON ? S_OK : DRAGDROP_S_DROP;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
};

}  // namespace

void dragText(const std::wstring& text, const DragState& state) {
    dragState = state;
    DropSource source;
    IDataObject* data = createTextData(text);
    DWORD effect = DROPEFFECT_NONE;
    DoDragDrop(data, &source, DROPEFFECT_COPY, &effect);
    data->Release();
    dragState = {};
}

class TextDropTarget::Target final : public IDropTarget {
  public:
    Target(Window& window, Events events) : window_(&window), events_(std::move(events)) {}

    void forgetWindow() { window_ = nullptr; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (id != IID_IUnknown && id != IID_IDropTarget) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = this;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD, POINTL at,
                                        DWORD* effect) override {
        offersText_ = hasText(data);
        return DragOver(0, at, effect);
    }
    HRESULT STDMETHODCALLTYPE DragOver(DWORD, POINTL at, DWORD* effect) override {
        bool welcome = false;
        guarded([&] {
            welcome = window_ && offersText_ && window_->isEnabled() && events_.over &&
                      events_.over(place(at));
        });
        *effect = welcome ? *effect & DROPEFFECT_COPY : DROPEFFECT_NONE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DragLeave() override {
        guarded([&] {
            if (window_ && events_.leave) events_.leave();
        });
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD, POINTL at, DWORD* effect) override {
        DragOver(0, at, effect);
        guarded([&] {
            std::wstring text;
            if (*effect != DROPEFFECT_NONE && textOf(data, text)) deliver(text, place(at));
        });
        return DragLeave();
    }

  private:
    Point place(POINTL at) const {
        return window_->fromScreen({static_cast<int>(at.x), static_cast<int>(at.y)});
    }
    void deliver(const std::wstring& text, Point at) {
        AddRef();
        postToLoop([this, text, at, state = dragState] {
            if (window_ && events_.drop) events_.drop(text, at, state);
            Release();
        });
    }

    Window* window_;
    Events events_;
    ULONG references_ = 1;
    bool offersText_ = false;
};

TextDropTarget::TextDropTarget(Window& window, Events events)
    : target_(new Target(window, std::move(events))), window_(window) {
    attach();
}

void TextDropTarget::attach() {
    if (attached_ || !window_.handle()) return;
    attached_ = window_.handle();
    RegisterDragDrop(attached_, target_);
}

TextDropTarget::~TextDropTarget() {
    target_->forgetWindow();
    if (attached_) RevokeDragDrop(attached_);
    target_->Release();
}

}  // namespace tunovka
