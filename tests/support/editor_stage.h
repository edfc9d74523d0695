#pragma once

#include <gtest/gtest.h>

#include "editor/frm_plejlist.h"
#include "support/person.h"
#include "support/program.h"
#include "support/scratch_folder.h"

namespace tunovka {

// A shown playlist editor, a folder with a.mp3, b.wav and c.wma, and a program around them.
class EditorStage : public testing::Test {
  protected:
    using Texts = std::vector<std::wstring>;

    EditorStage() {
        for (const wchar_t* name : {L"a.mp3", L"b.wav", L"c.wma"}) folder.file(name);
        renew();
    }

    void renew() {
        window = std::make_unique<frmplejlist>(program);
        window->show();
    }

    // A new window on a playlist of these lines (ASCII).
    void open(const std::wstring& lines, const std::wstring& name = L"list.m3u") {
        folder.file(name, std::string(lines.begin(), lines.end()));
        renew();
        window->txtodkaz.setText(folder / name);
    }

    // The same of many times one file.
    void openLong(int lines = 100) {
        std::wstring list;
        while (lines-- > 0) list += L"a.mp3\r\n";
        open(list);
    }

    Editor& editor() { return window->editor; }
    frmplejlist& view() { return *window; }

    // What the list shows; "-" before a red row.
    Texts rows() {
        Texts rows;
        for (LRESULT i = 0; i < SendMessageW(view().Lview.handle(), LVM_GETITEMCOUNT, 0, 0); ++i) {
            const ListRow row = editor().document.row(i);
            const bool red = row.color == MultiMedialny::palette().MissingEntryColor;
            rows.push_back((red ? L"-" : L"") + row.name);
        }
        return rows;
    }

    // Begins a step in which the person answers like this.
    void expect(std::deque<int> answers) {
        person.seen.clear();
        person.answer(std::move(answers));
    }
    void drop(const std::wstring& text, std::optional<std::size_t> target = {},
              const DragState& drag = {}) {
        window->Lview_OLEDragDrop(text, target, drag);
    }
    void choose(const wchar_t* entry) { window->menu1.choose(entry); }
    void pressKey(WORD key) { tunovka::pressKey(view().Lview, key); }

    // Opens the list's menu by the right button beside the rows; the person closes it again.
    void openMenu() {
        person.closeMenus();
        pressAndRelease(view().Lview, WM_RBUTTONDOWN, WM_RBUTTONUP);
    }

    ScratchFolder folder;
    Program program;
    Person person;
    std::unique_ptr<frmplejlist> window;
};

}  // namespace tunovka
