#include <windows.h>
// windows.h first: this needs its types.
#include <psapi.h>

#include "app/contents_tree.h"
#include "benchmarks/bench.h"
#include "core/loop.h"
#include "core/rozneapi.h"
#include "search/frm_hladanie.h"
#include "support/scratch_folder.h"
#include "ui/form.h"

namespace tunovka::bench {
namespace {

std::wstring flatFolder(int files = 10'000) {
    const std::wstring size = files == 10'000 ? L"" : L"-" + std::to_wstring(files);
    return data(L"listing-music" + size, [files](const std::wstring& folder) {
        makeFolder(folder, files,
                   [](int number) { return L"pieseň číslo " + std::to_wstring(number) + L".mp3"; });
    });
}

struct Stage : Form {
    Stage() : Form({.name = L"frmStage", .title = L"bench", .size = {600, 600}}) {
        contents.Tview.setBounds({0, 0, 600, 600});
        show();
    }
    TextBox txtPath;
    ContentsTree contents{*this, txtPath};
};

void listing(const std::string& name, int runs, const std::wstring& folder, double limit) {
    Stage stage;
    const auto list = [&] {
        stage.contents.ListFolderContents(folder);
        UpdateWindow(stage.contents.Tview.handle());
    };
    reportTime(name, runs, limit, list);
    reportAnswer(name, 1, list);
}

// Stands for the explorer, without which nothing is searched.
struct Explorer : Form, Program {
    Explorer() : Form({.name = L"frmPrieskumnik", .title = L"", .size = {100, 100}}) {}
};

struct SearchStage {
    SearchStage() {
        explorer = &Forms::load<Explorer>();
        frmhladanie::open(*explorer);
        window = static_cast<frmhladanie*>(Forms::find(L"frmhladanie"));
        yieldNow();
    }
    ~SearchStage() {
        Forms::unloadAll();
        runLoop();
    }

    // From the window's activation to the painted list. Each search needs another spelling of the
    // folder than the last one.
    void search(const std::wstring& root) {
        std::wstring& folder = explorer->searched;
        folder = folder == root ? root + L"\\" : root;
        SendMessageW(window->handle(), WM_ACTIVATE, WA_ACTIVE, 0);
        runLoopWhile([&] {
            return window->lbladresar.text() != folder || window->lblpočet.text().empty() ||
                   window->isBusy();
        });
        UpdateWindow(window->Lview.handle());
    }

    Explorer* explorer;
    frmhladanie* window;
};

}  // namespace

BENCH(collect) {
    const std::wstring deep = deepTree(), flat = flatFolder();
    std::size_t own = 0, bare = 0;
    reportCompared(
        "collect_deep", 7, 1.1, [&] { own = RozneApi::CollectFiles(deep).size(); },
        [&] { bare = bareCollect(deep).size(); });
    report({"collect_deep_files", static_cast<double>(own), "files", static_cast<double>(bare)});
    reportCompared(
        "collect_flat", 9, 1.1, [&] { RozneApi::CollectFiles(flat); }, [&] { bareCollect(flat); });
    reportAnswer("collect_flat", 9, [&] { RozneApi::CollectFiles(flat); });
    const SlowDisk disk;
    reportTime("slow_search", 3, 3300, [&] { RozneApi::CollectFiles(deep); });
}

BENCH(listing) {
    const std::wstring scattered = data(L"listing-scattered", [](const std::wstring& folder) {
        for (int i = 0; i < 100; ++i) {
            const std::wstring name = std::to_wstring(i);
            ScratchFolder::write(folder + name + L".m3u", std::to_string(i) + "\\a.mp3\r\n");
            makeFolder(folder + name + L"\\", 1, [](int) { return L"a.mp3"; });
        }
    });
    {
        const SlowDisk disk;
        listing("slow_listing", 3, scattered, 330);
    }
    listing("listing_music_1000", 9, flatFolder(1'000), 40);
    listing("listing_music_10000", 7, flatFolder(), 400);
    listing("listing_playlist", 7, mixedCollection(), 500);
}

BENCH(largest) {
    listing("listing_music_100000", 3, flatFolder(100'000), 4000);
}

BENCH(search_scan) {
    const std::wstring root = deepTree();
    std::optional<SearchStage> stage(std::in_place);
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
    SearchStage stage;
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
