#include "benchmarks/bench.h"
#include "core/file_system.h"
#include "core/loop.h"
#include "editor/frm_plejlist.h"

namespace tunovka::bench {
namespace {

struct Window {
    explicit Window(const std::wstring& playlist = {}) {
        form.show();
        if (!playlist.empty()) form.txtodkaz.setText(playlist);
    }
    void painted() { UpdateWindow(form.Lview.handle()); }

    Program program;
    frmplejlist form{program};
};

// A command on a fresh window with the list.
void reportCommand(const std::string& name, const std::function<void(Editor&)>& command) {
    std::optional<Window> window;
    const auto prepare = [&] { window.emplace(mixedCollection() + L"mixed.m3u"); };
    const auto run = [&] {
        const Form::Busy busy(window->form);
        command(window->form.editor);
        window->painted();
    };
    measure(name, {7, 5}, 200, run, {}, prepare);
}

}  // namespace

BENCH(editor_open) {
    const std::wstring root = mixedCollection(), list = root + L"mixed.m3u";
    std::optional<Window> window;
    const auto prepare = [&] { window.emplace(), yieldNow(); };  // it is painted
    const auto open = [&] { window->form.txtodkaz.setText(list), window->painted(); };
    const auto bare = [&] { FileSystemObject::readAll(list), bareCollect(root); };
    measure("editor_open", {21, 5}, 1.2, open, bare, prepare);
    // What a person waits for: the window is made as well.
    measure("editor_open_window", {9}, {}, [&] { Window(list).painted(); });
    const OddDisk disk(slowly);
    measure("slow_editor_open", {3}, 490, open, {}, prepare);
}

BENCH(editor_commands) {
    const std::wstring root = mixedCollection(), saved = root + L"saved.txt";
    reportCommand("editor_duplicates", [](Editor& it) {
        it.document.duplicates(std::vector<bool>(it.document.count(), true));
    });
    reportCommand("editor_remove_invalid", [](Editor& it) { it.dropInvalidLinks(); });
    reportCommand("editor_sort", [](Editor& it) { it.sort(SortOrder::Ascending); });
    reportCommand("editor_restore", &Editor::restoreLoadOrder);
    reportCommand("editor_save", [&](Editor& it) { it.write(saved, true); });
}

}  // namespace tunovka::bench
