#include "ui/drag_drop.h"

#include <ole2.h>

#include <cstring>
#include <memory>
#include <vector>

#include "core/com_object.h"
#include "core/errors.h"
#include "core/loop.h"
#include "core/text.h"
#include "ui/text_data.h"

namespace tunovka {

DragState dragState;

namespace {

class DropSource final : public SingleComObject<IDropSource> {
  public:
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override {
        if (escape) return DRAGDROP_S_CANCEL;
        return keys & MK_LBUTTON ? S_OK : DRAGDROP_S_DROP;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
};

}  // namespace

void dragText(const std::wstring& text, const DragState& state) {
    dragState = state;
    IDropSource* const source = new DropSource;
    IDataObject* data = createTextData(text);
    DWORD effect = DROPEFFECT_NONE;
    DoDragDrop(data, source, DROPEFFECT_COPY, &effect);
    data->Release();
    source->Release();
    dragState = {};
}

class TextDropTarget::Target final : public SingleComObject<IDropTarget> {
  public:
    Target(Window& window, Events events) : window_(&window), events_(std::move(events)) {}

    void forgetWindow() { window_ = nullptr; }

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD, POINTL at,
                                        DWORD* effect) override {
        offersText_ = hasText(data);
        return DragOver(0, at, effect);
    }
    HRESULT STDMETHODCALLTYPE DragOver(DWORD, POINTL at, DWORD* effect) override {
        welcome_ = false;
        guarded([&] {
            welcome_ = window_ && offersText_ && window_->isEnabled() && events_.over &&
                       events_.over(place(at));
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
        const std::shared_ptr<Target> alive(this, [](Target* own) { own->Release(); });
        postToLoop([alive, text, at, state = dragState] {
            if (alive->window_ && alive->events_.drop) alive->events_.drop(text, at, state);
        });
    }

    Window* window_;
    Events events_;
    bool offersText_ = false;
    bool welcome_ = false;  // where the pointer was last
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
