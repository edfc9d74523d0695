#pragma once

#include "search/frm_hladanie.h"
#include "support/program.h"

namespace tunovka {

// A search window, and what stands for the explorer: its window's name, and the program behind it.
struct SearchStage {
    struct Explorer : Form, Program {
        Explorer() : Form({.name = L"frmPrieskumnik", .title = L"", .size = {200, 100}}) { show(); }
    };

    SearchStage() { open(); }
    ~SearchStage() {
        Forms::unloadAll();
        runLoop();  // the last form's end asks the program to end
    }

    void open() {
        frmhladanie::open(explorer);
        window = dynamic_cast<frmhladanie*>(Forms::find(L"frmhladanie"));
    }
    void choose(const std::wstring& path) {
        explorer.searched = path;
        SendMessageW(window->handle(), WM_ACTIVATE, WA_ACTIVE, 0);
    }
    bool isDone() const {
        return window->lbladresar.text() == explorer.searched && !window->isBusy() &&
               !window->panel.PicInfo.isVisible() && !window->lblpočet.text().empty();
    }

    Explorer& explorer = Forms::load<Explorer>();
    frmhladanie* window;
};

}  // namespace tunovka
