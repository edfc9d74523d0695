#include <windows.h>
// windows.h first: this needs its types.
#include <psapi.h>

#include "benchmarks/bench.h"
#include "core/loop.h"
#include "search/frm_hladanie.h"
#include "ui/form.h"

namespace tunovka::bench {
namespace {

// Stands for the explorer, without which nothing is searched.
struct Explorer : Form, Program {
    Explorer() : Form({.name = L"frmPrieskumnik", .title = L"", .size = {100, 100}}) {}
};

struct Stage {
    Stage() {
        explorer = &Forms::load<Explorer>();
        frmhladanie::open(*explorer);
        window = static_cast<frmhladanie*>(Forms::find(L"frmhladanie"));
        yieldNow();
    }
    ~Stage() {
        Forms::unloadAll();
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    }

    // From the window's activation to the painted list. Each search needs another spelling of the
    // folder than the last one.
    void search(const std::wstring& root) {
        std::wstring& folder = explorer->folder;
        folder = folder == root ? root + L"\\" : root;
        SendMessageW(window->handle(), WM_ACTIVATE, WA_ACTIVE, 0);
        MSG message;
        while (window->lbladresar.text() != folder || window->lblpočet.text().empty() ||
               window->isBusy()) {
            if (GetMessageW(&message, nullptr, 0, 0) <= 0) return;
            DispatchMessageW(&message);
        }
        UpdateWindow(window->Lview.handle());
    }

    Explorer* explorer;
    frmhladanie* window;
};

}  // namespace

BENCH(search_scan) {
    const std::wstring root = deepTree();
    std::optional<Stage> stage(std::in_place);
    const auto search = [&] { stage->search(root); };
    reportCompared("search_scan", 7, 1.3, search, [&] { bareCollect(root); });
    reportAnswer("search_scan", 5, search);
    const auto sort = [&] { stage->window->menu1.choose(L"vzostupne"); };
    reportTime("search_sort_first", 5, 100, sort,
               [&] { stage.reset(), stage.emplace(), search(); });
    reportTime("search_sort_again", 5, 100, sort,
               [&] { stage->window->menu1.choose(L"zostupne"); });
}

// Only when it is asked for: 1,000,000 files in 20,000 folders.
BENCH(million) {
    const std::wstring root = deepTree(L"search-million", 400);
    PROCESS_MEMORY_COUNTERS before{}, after{};
    Stage stage;
    GetProcessMemoryInfo(GetCurrentProcess(), &before, sizeof before);
    stage.search(root);
    GetProcessMemoryInfo(GetCurrentProcess(), &after, sizeof after);
    double bytes = 0;  // of the paths alone
    for (const std::wstring& path : bareCollect(root)) bytes += 2.0 * path.size();
    const double taken = static_cast<double>(after.PeakPagefileUsage - before.PagefileUsage);
    report({"million_memory", (taken - bytes) / 1e6, "bytes", {}, 160});
    reportCompared(
        "million", 3, 1.3, [&] { stage.search(root); }, [&] { bareCollect(root); });
}

}  // namespace tunovka::bench
