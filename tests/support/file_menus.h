#pragma once

#include <gtest/gtest.h>

#include "app/frm_prieskumnik.h"
#include "support/drag.h"
#include "support/person.h"
#include "support/scratch_folder.h"

namespace tunovka {

// The explorer on two folders of drive E:, with a person who answers its boxes.
class FileMenus : public testing::Test {
  protected:
    FileMenus() { explorer = std::make_unique<frmPrieskumnik>(); }
    ~FileMenus() override {
        if (explorer) explorer->unload();
    }
    // Shows the folder in both trees and selects a node.
    void show(const std::wstring& key) {
        if (strom().firstRoot().empty()) explorer->load();
        strom().select(folder.path());
        explorer->contents.ListFolderContents(folder.path());
        if (!key.empty()) select(key);
    }
    void select(const std::wstring& key) {
        Tview().select(key);
        Tview().onSelectionByKey();
    }
    void choose(const wchar_t* entry) {
        select(Tview().selectedKey());
        explorer->prehrat.choose(entry);
    }
    void press(WORD key) { pressKey(Tview(), key); }
    // A place on a node, which is brought into view.
    static Point placeOf(TreeView& tree, const std::wstring& key) {
        tree.ensureVisible(key);
        const Rect area = tree.nodeArea(key);
        return {area.x + 3, area.y + area.height / 2};
    }
    void dropOnContents(const std::wstring& text) {
        Drag drag(Tview(), {5, 200}, createTextData(text));
        EXPECT_EQ(drag.effect, DWORD{DROPEFFECT_COPY});
        drag.drop();
    }
    TreeView& strom() { return explorer->folders.strom; }
    TreeView& Tview() { return explorer->contents.Tview; }
    const std::wstring& clipboard() { return explorer->txtsubor.text(); }

    ScratchFolder folder{L"E:\\"};
    ScratchFolder other{L"E:\\"};
    Person person;
    std::unique_ptr<frmPrieskumnik> explorer;
};

}  // namespace tunovka
