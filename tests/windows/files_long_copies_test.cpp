// A copy that takes its time: its window, stopping it, and what the explorer does meanwhile.
#include <gtest/gtest.h>

#include <algorithm>

#include "support/disk_faults.h"
#include "support/file_menus.h"

namespace tunovka {
namespace {

class LongCopies : public FileMenus {
  protected:
    LongCopies() {
        song = folder.file(L"a.mp3", std::string(12 << 20, 's'));
        disk.become([](DiskCall call, const std::wstring&, DWORD&) {
            if (call == DiskCall::Copy) Sleep(30);  // a slow disk
            return DWORD{ERROR_SUCCESS};
        });
    }
    // What was stopped may take a moment to clear up.
    bool isAlone(const wchar_t* name) {
        return runUntil([&] { return folder.names() == std::vector<std::wstring>{name}; });
    }

    // Starts copying the file; `during` is called once when the window has come.
    void copy(std::function<void(Form& window)> during) {
        show(L"a.mp3");
        const auto window = [] { return openForm(L"frmkopirovanie"); };
        const When opened(window, [&] { during(*window()); });
        Tview().focus();
        person.saveAs({L"kopia.mp3"});
        choose(L"kopirovat_subor");
        choose(L"vlozit_subor");
        shown = opened.happened();
    }

    OddDisk disk;
    std::wstring song;
    bool shown = false;
};

TEST_F(LongCopies, ShowProgressAndRefuseOtherFileCommands) {
    folder.file(L"b.mp3");
    copy([&](Form& window) {
        EXPECT_EQ(control(window, L"lblsubor").text(), L"a.mp3");
        Window &percent = control(window, L"lblpercenta"), &strip = control(window, L"PicProgres");
        const std::wstring first = percent.text();
        EXPECT_TRUE(first.ends_with(L" %"));
        EXPECT_TRUE(runUntil([&] { return colorAt(strip, 0.4) != colorAt(strip, 0.98); }));
        EXPECT_NE(percent.text(), first);
        EXPECT_TRUE(explorer->isEnabled());
        EXPECT_FALSE(SendMessageW(explorer->handle(), WM_QUERYENDSESSION, 0, 0));
        select(L"b.mp3");
        EXPECT_FALSE(explorer->prehrat.isEnabled(L"operacie_so_suborom"));
        press(VK_DELETE);
        press(VK_F2);
        explorer->files.removeSelected();
        EXPECT_EQ(openForm(L"frmkopirovanie"), &window);
    });
    EXPECT_TRUE(shown);
    EXPECT_FALSE(openForm(L"frmkopirovanie"));
    EXPECT_TRUE(person.seen.empty());
    EXPECT_TRUE(contentOf(folder / L"kopia.mp3") == contentOf(song));
    EXPECT_TRUE(FileSystemObject::FileExists(folder / L"b.mp3"));
    EXPECT_TRUE(Tview().contains(L"kopia.mp3"));
}

TEST_F(LongCopies, ThatAreStoppedLeaveNoHalfFile) {
    const auto stopping = [&](std::function<void(Form&)> how) {
        if (HasFailure()) return;  // the dialog would ask about the copy that was not stopped
        copy(std::move(how));
        EXPECT_TRUE(shown);
        EXPECT_TRUE(isAlone(L"a.mp3"));
        EXPECT_EQ(clipboard(), L"copy:" + song);
        EXPECT_TRUE(person.seen.empty());
    };
    stopping([](Form& window) { pressAndRelease(control(window, L"Izastavit")); });
    stopping([this](Form&) {
        EXPECT_TRUE(Tview().hasFocus());  // which a copy leaves where it is
        PostMessageW(Tview().handle(), WM_KEYDOWN, VK_ESCAPE, 0);
    });
    stopping([](Form& window) { PostMessageW(window.handle(), WM_CLOSE, 0, 0); });
}

TEST_F(LongCopies, ToADiskThatDoesNotAnswerAreLeftToThemselves) {
    Silence silence(folder.path());
    disk.become([&](DiskCall call, const std::wstring& path, DWORD&) {
        if (call == DiskCall::Copy) silence.hold(path);
        return DWORD{ERROR_SUCCESS};
    });
    DWORD escaped = 0;
    const When held([&] { return silence.held() > 0; },
                    [&] {
                        escaped = GetTickCount();
                        PostMessageW(Tview().handle(), WM_KEYDOWN, VK_ESCAPE, 0);
                    });
    copy([](Form&) {});
    EXPECT_LT(GetTickCount() - escaped, 1000u);
    EXPECT_FALSE(explorer->isBusy());
    EXPECT_EQ(silence.held(), 1);
    silence.end();
    EXPECT_TRUE(isAlone(L"a.mp3"));
}

TEST_F(LongCopies, EndWithTheExplorer) {
    copy([&](Form&) { explorer->unload(); });
    EXPECT_TRUE(shown);
    EXPECT_TRUE(explorer->isClosing());
    EXPECT_FALSE(openForm(L"frmkopirovanie"));
    EXPECT_TRUE(isAlone(L"a.mp3"));
}

TEST_F(LongCopies, GoOnBehindAnOpenBoxAndCanBeStoppedThere) {
    for (const bool stops : {false, true}) {
        DeleteFileW((folder / L"kopia.mp3").c_str());
        copy([&](Form& window) {
            const ModalState box(nullptr);
            EXPECT_FALSE(explorer->isEnabled());
            EXPECT_TRUE(window.isEnabled());
            if (stops) pressAndRelease(control(window, L"Izastavit"));
            EXPECT_TRUE(runUntil([&] {
                const auto names = folder.names();
                return names.size() == (stops ? 1u : 2u) &&
                       std::ranges::count(names, stops ? L"a.mp3" : L"kopia.mp3") == 1;
            }));
        });
        EXPECT_TRUE(contentOf(folder / L"kopia.mp3") == (stops ? "" : contentOf(song)));
    }
}

}  // namespace
}  // namespace tunovka
