#pragma once

#include <windows.h>
// windows.h first: it needs its types.
#include <ole2.h>

#include "ui/drag_drop.h"
#include "ui/window.h"

namespace tunovka {

// What the system does with a drag of some data over a place of a control.
struct Drag {
    Drag(const Window& control, Point at, IDataObject* data)
        : onto(static_cast<IDropTarget*>(GetPropW(control.handle(), L"OleDropTargetInterface"))),
          data(data) {
        const Point screen = control.toScreen(at);
        place = {screen.x, screen.y};
        onto->DragEnter(data, MK_LBUTTON, place, &effect);
    }
    Drag(const Drag&) = delete;
    Drag& operator=(const Drag&) = delete;
    ~Drag() {
        if (!dropped) onto->DragLeave();
        data->Release();
    }
    void drop() {
        effect = DROPEFFECT_COPY;
        onto->Drop(data, 0, place, &effect);
        dropped = true;
    }
    IDropTarget* onto;
    IDataObject* data;
    POINTL place{};
    DWORD effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    bool dropped = false;
};

}  // namespace tunovka
