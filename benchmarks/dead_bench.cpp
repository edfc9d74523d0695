#include "app/frm_prieskumnik.h"
#include "benchmarks/bench.h"
#include "editor/frm_plejlist.h"
#include "files/frm_kopirovanie.h"
#include "search/frm_hladanie.h"
#include "support/person.h"

// What a person meets when drive E: answers nothing any more. Each step has a process of its own:
// after a question is given up the drive is left alone for a while.
namespace tunovka::bench {
namespace {

const std::wstring kHome = L"E:\\bench\\", kList = kHome + L"zoznam.m3u";

std::atomic<int> held = 0;

DWORD silence(DiskCall, const std::wstring& path, DWORD&) {
    if (path.starts_with(L"E:") || path.starts_with(L"e:")) ++held, Sleep(INFINITE);
    return ERROR_SUCCESS;
}

// Gives up what is pending for half a second, by Escape and the stop flag or by closing, and
// reports how long the step goes on after the last time.
using Step = std::function<void(frmPrieskumnik&)>;
void step(const std::string& name, const Step& prepare, const Step& action,
          UINT giveUp = WM_KEYDOWN) {
    makeFolder(kHome, 3, [](int song) { return std::to_wstring(song) + L".mp3"; });
    makeFolder(kHome + L"album\\", 0, {});
    ScratchFolder::write(kList, "0.mp3\r\n1.mp3\r\n");
    ScratchFolder::write(L"T:\\0.mp3", "");
    auto& explorer = Forms::load<frmPrieskumnik>();
    if (prepare) prepare(explorer);
    new OddDisk(silence);  // its calls never end

    int met = 0;
    double since = 0, gaveUp = 0;
    Timer timer;
    timer.onTick = [&] {
        if (std::exchange(met, held) != held) since = now();
        if (held == 0 || now() - since < 500) return;
        StopRequested = -1;
        since = gaveUp = now();
        const HWND target = giveUp == WM_CLOSE || !GetFocus() ? explorer.handle() : GetFocus();
        PostMessageW(target, giveUp, VK_ESCAPE, 0);
    };
    timer.setInterval(10);
    const double answer = longestAnswer([&] { action(explorer); });
    report(name, {now() - gaveUp}, "ms", {}, giveUp == WM_CLOSE ? 1000 : 100);
    report(name + "_answer", {answer}, "ms", {}, kLongestAnswer);
}

void showHome(frmPrieskumnik& explorer) {
    explorer.load();
    explorer.folders.strom.expand(kHome);
    explorer.contents.ListFolderContents(kHome);
}

void openEditor(frmPrieskumnik&) {
    static Program program;
    frmplejlist::open(program, kList);
}

void openList(frmPrieskumnik& explorer) {
    showHome(explorer);
    openEditor(explorer);
}

frmplejlist& editor() {
    return dynamic_cast<frmplejlist&>(*Forms::loaded().back());
}

void closeWhileListing(frmPrieskumnik& explorer) {
    postToLoop([&] { explorer.contents.ListFolderContents(kHome); });
    runLoop();
}

}  // namespace

#define DEAD(name, ...)                   \
    BENCH(dead_##name) {                  \
        step("dead_" #name, __VA_ARGS__); \
    }

DEAD(start, {}, [](auto& it) { it.load(); })
DEAD(drives, showHome, [](auto& it) { it.folders.Drive1.refresh(); })
DEAD(expand, showHome, [](auto& it) { it.folders.ExpandFolder(kHome + L"album\\"); })
DEAD(listing, showHome, [](auto& it) { it.contents.ListFolderContents(kHome); })
DEAD(arrows, showHome, [](auto& it) {
    for (int i = 0; i < 3; ++i) pressKey(it.contents.Tview, VK_DOWN);
})
DEAD(editor_open, showHome, openEditor)
DEAD(editor_click, openList, [](auto&) { editor().select(1); })
DEAD(editor_save, openList, [](auto&) {
    const Form::Busy busy(editor());
    editor().editor.write(kHome + L"novy.m3u", true);
})
DEAD(search, showHome, [](auto& it) {
    it.folders.strom.select(kHome);
    it.menuprestrom.choose(L"prehladaj_adresar");
    const Form& window = *Forms::find(L"frmhladanie");
    SendMessageW(window.handle(), WM_ACTIVATE, WA_ACTIVE, 0);
    runLoopWhile([&] { return held == 0 || window.isBusy(); });
})
DEAD(paste, showHome, [](auto& it) {
    const Form::Busy busy(it);
    CopyWatch(it, L"T:\\0.mp3", {}).run([](const TransferHooks& hooks) {
        return FileSystemObject::copyFile(L"T:\\0.mp3", kHome + L"4.mp3", hooks);
    });
})
DEAD(close, showHome, closeWhileListing, WM_CLOSE)

}  // namespace tunovka::bench
