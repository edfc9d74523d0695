#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include "app/frm_prieskumnik.h"
#include "core/ansi.h"
#include "core/multimedialny.h"
#include "editor/frm_plejlist.h"
#include "pictures/album.h"
#include "support/person.h"
#include "support/scratch_folder.h"

namespace tunovka {

// The whole program over drive E:, and what a person does with it from outside.
class Stage : public testing::Test {
  protected:
    Stage() {
        SetCursorPos(0, 0);  // no tip, no marked entry
        explorer.load();
        person.before = [this](const Form& form) {
            if (expected_.empty()) return;
            hold(expected_.front(), form.name());
            expected_.pop_front();
        };
    }
    void SetUp() override {
        if (!Album::drawsItsLetters()) GTEST_SKIP() << "letters look different here";
    }
    ~Stage() override {
        EXPECT_TRUE(expected_.empty() || IsSkipped()) << expected_.front() << " was not taken";
        explorer.unload();
        Forms::unloadAll();
        runLoop();
    }

    // A control of an open window; both are waited for.
    static HWND control(const std::wstring& form, const std::wstring& name) {
        Window* found = nullptr;
        runUntil([&] {
            const Form* const open = openForm(form);
            return open && (found = controlNamed(*open, name));
        });
        return existing(found, name).handle();
    }
    HWND control(const std::wstring& name) { return control(L"frmPrieskumnik", name); }

    // What a window shows, once it is open; the caret's blinking is left out.
    static Picture picture(const std::wstring& form) {
        const Form* const found = openForm(form);
        if (!found) return {};
        HideCaret(GetFocus());
        return Picture::of({found->handle()});
    }
    static void hold(const std::wstring& name, const std::wstring& form = L"frmPrieskumnik") {
        Album::hold(name, [&] { return picture(form); });
    }

    // One picture with each button held down by the mouse, one with each control in focus.
    static void holdControls(const std::wstring& name,
                             const std::wstring& form = L"frmPrieskumnik") {
        Album::hold(name + L"-pressed", [&] {
            return pictureOfEach(form, [](HWND control) {
                if (dynamic_cast<Image*>(windowOf(control)))
                    SendMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, 0);
            });
        });
        Album::hold(name + L"-focused", [&] {
            return pictureOfEach(form, [](HWND control) {
                if (GetWindowLongW(control, GWL_STYLE) & WS_TABSTOP) SetFocus(control);
            });
        });
    }

    static void press(HWND window, WPARAM key) {
        SendMessageW(window, WM_KEYDOWN, key, 1);
        SendMessageW(window, WM_KEYUP, key, 1);
        letTimersTick();
    }
    static void press(HWND button) {
        pressAndRelease(*windowOf(button));
        letTimersTick();
    }
    // Chooses a node by its key.
    static void choose(TreeView& tree, const std::wstring& key) {
        tree.focus();
        tree.select(key);
        tree.onSelectionByKey();
        letTimersTick();
    }
    void open(const std::wstring& folder, const std::wstring& file) {
        choose(explorer.folders.strom, folder);
        choose(explorer.contents.Tview, file);
    }

    // The next windows that open are pictured and then answered by these buttons; other windows
    // than boxes are closed.
    void expect(std::deque<std::wstring> pictures, std::deque<int> answers = {}) {
        expected_ = std::move(pictures);
        person.answer(std::move(answers));
    }
    // Runs what opens a window of that name, which is pictured and closed.
    void expectForm(const std::wstring& form, const std::wstring& picture,
                    const std::function<void()>& opens) {
        expect({picture});
        person.closeForms(form);
        opens();
    }

    // A menu that a window opens by the menu key, after some keys; `below` lies behind it.
    static void holdMenu(const std::wstring& name, HWND window, std::vector<WPARAM> keys,
                         std::vector<HWND> below = {}) {
        Timer person;
        bool waited = false;
        person.onTick = [&] {
            const std::vector<HWND> menus = shown(L"#32768");
            if (menus.empty()) return;
            std::vector<HWND> windows = below;
            windows.insert(windows.end(), menus.rbegin(), menus.rend());
            const HWND form = GetAncestor(window, GA_ROOT);
            for (const WPARAM key : std::exchange(keys, {})) PostMessageW(form, WM_KEYDOWN, key, 1);
            // The keys are taken before the next tick comes.
            if (!std::exchange(waited, true)) return;
            person.setInterval(0);
            Album::hold(name, [&] { return Picture::of(windows); });
            EndMenu();
        };
        person.setInterval(10);
        SendMessageW(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), -1);
    }

    // Opens an editor on a list of that many lines, made for it in drive E:.
    frmplejlist& edit(const std::wstring& name, int lines) {
        std::string content;
        for (int i = 1; i <= lines; ++i)
            content += i % 3 ? toAnsi(L"\\Čerešňový sad.mp3\r\n") : std::to_string(i) + ".mp3\r\n";
        ScratchFolder::write(L"E:\\" + name, content);
        explorer.contents.ListFolderContents(L"E:\\");
        choose(explorer.contents.Tview, name);
        explorer.prehrat.choose(L"editovat_playlist");
        DeleteFileW((L"E:\\" + name).c_str());
        return dynamic_cast<frmplejlist&>(existing(openForm(L"frmplejlist"), L"frmplejlist"));
    }

    Person person;
    frmPrieskumnik& explorer = start();

  private:
    static frmPrieskumnik& start() { return Forms::load<frmPrieskumnik>(); }
    // A window with every control as it looks while that is done to it alone.
    static Picture pictureOfEach(const std::wstring& form, const std::function<void(HWND)>& what) {
        Picture all = picture(form);
        const HWND focus = GetFocus();
        for (const HWND control : WindowList::below(existing(openForm(form), form).handle())) {
            if (!windowOf(control) || !IsWindowVisible(control)) continue;
            what(control);
            if (GetCapture() == control || (GetFocus() == control && control != focus))
                all.copy(picture(form), windowOf(control)->name());
            ReleaseCapture();
            SetFocus(focus);
        }
        return all;
    }

    // The windows of that class that are on the screen, the front one first.
    static std::vector<HWND> shown(const std::wstring& kind) {
        std::vector<HWND> windows = WindowList::ofThisThread();
        std::erase_if(windows, [&](HWND window) {
            return kindOf(window) != kind || !IsWindowVisible(window);
        });
        return windows;
    }

    std::deque<std::wstring> expected_;
};

}  // namespace tunovka
