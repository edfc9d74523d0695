#pragma once

#include <functional>
#include <string>

#include "core/handle.h"
#include "ui/window.h"

struct IDataObject;

namespace tunovka {

// What the program knows of its own drag, beside the text; empty while none is under way.
struct DragState {
    std::wstring source;  // name of the control in which the drag began: "Tview", "Lview"
    std::wstring key;     // key of the dragged item, or the tag of the window it comes from
    std::wstring path;    // path of an entry that is dragged out of an editor's list
};

extern DragState dragState;

// Drags a text (as CF_UNICODETEXT and CF_TEXT, effect copy) from where the mouse is until it is
// dropped or cancelled, with `state` set meanwhile. Lets events run.
void dragText(const std::wstring& text, const DragState& state);

// A text as a data object in those two formats. The caller releases it.
IDataObject* createTextData(const std::wstring& text);

// Takes texts that are dropped onto a control. Made before the control's system window is.
class TextDropTarget : NonCopyable {
  public:
    struct Events {
        // The pointer is over a place of the control; true when a text may be dropped there.
        std::function<bool(Point)> over;
        std::function<void()> leave;
        // Called from the message loop after the drop has been answered, so that it may ask
        // questions; `state` is the program's drag state at the moment of the drop.
        std::function<void(const std::wstring& text, Point, const DragState& state)> drop;
    };

    TextDropTarget(Window& window, Events events);
    ~TextDropTarget();

  private:
    class Target;
    ComPtr<Target> target_;
};

}  // namespace tunovka
