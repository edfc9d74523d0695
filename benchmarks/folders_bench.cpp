#include "app/contents_tree.h"
#include "benchmarks/bench.h"
#include "core/rozneapi.h"
#include "support/search_stage.h"

namespace tunovka::bench {
namespace {

std::wstring flatFolder(int files) {
    return data(L"listing-music-" + std::to_wstring(files), [files](const std::wstring& folder) {
        makeFolder(folder, files,
                   [](int number) { return L"pieseň číslo " + std::to_wstring(number) + L".mp3"; });
    });
}

// Folders with 50 files each, three in ten of them music: 100,000 files in 2,000 folders.
std::wstring deepTree(const std::wstring& name = L"search-deep", int folders = 2'000) {
    return data(name, [folders](const std::wstring& root) {
        const auto name = [](int song) {
            return L"pieseň číslo " + std::to_wstring(song * 7919 % 50) +
                   (song % 10 < 3 ? L".mp3" : L".jpg");
        };
        for (int i = 0; i < folders; ++i) {
            const std::wstring disk = i % 50 ? L"disk " + std::to_wstring(i % 50) + L"\\" : L"";
            makeFolder(root + L"album " + std::to_wstring(i / 50) + L"\\" + disk, 50, name);
        }
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
    measure(name, {runs, 1}, limit, list);
}

// From the search window's activation to the painted list. Each search needs another spelling of
// the folder than the last one.
void search(SearchStage& stage, const std::wstring& root) {
    stage.choose(stage.explorer.searched == root ? root + L"\\" : root);
    runLoopWhile([&] { return !stage.isDone(); });
    UpdateWindow(stage.window->Lview.handle());
}

}  // namespace

BENCH(collect) {
    const std::wstring deep = deepTree(), flat = flatFolder(10'000);
    std::size_t own = 0, bare = 0;
    const auto collect = [&] { own = RozneApi::CollectFiles(deep).size(); };
    measure("collect_deep", {7}, 1.1, collect, [&] { bare = bareCollect(deep).size(); });
    report("collect_deep_files", {static_cast<double>(own)}, "files", {static_cast<double>(bare)});
    const auto collectFlat = [&] { RozneApi::CollectFiles(flat); };
    measure("collect_flat", {9, 9}, 1.1, collectFlat, [&] { bareCollect(flat); });
    const OddDisk disk(slowly);
    measure("slow_search", {3}, 3300, collect);
}

BENCH(listing) {
    const std::wstring scattered = data(L"listing-scattered", [](const std::wstring& folder) {
        for (int i = 0; i < 100; ++i) {
            const std::wstring name = std::to_wstring(i);
            ScratchFolder::write(folder + name + L".m3u", std::to_string(i) + "\\a.mp3\r\n");
            makeFolder(folder + name + L"\\", 1, [](int) { return L"a.mp3"; });
        }
    });
    listing("listing_music_1000", 9, flatFolder(1'000), 40);
    listing("listing_music_10000", 7, flatFolder(10'000), 400);
    listing("listing_playlist", 7, mixedCollection(), 500);
    const OddDisk disk(slowly);
    listing("slow_listing", 3, scattered, 330);
}

BENCH(largest) {
    listing("listing_music_100000", 3, flatFolder(100'000), 4000);
}

BENCH(search_scan) {
    const std::wstring root = deepTree();
    std::optional<SearchStage> stage(std::in_place);
    const auto scan = [&] { search(*stage, root); };
    measure("search_scan", {7, 5}, 1.3, scan, [&] { bareCollect(root); });
    const auto sort = [&] { stage->window->menu1.choose(L"vzostupne"); };
    const auto scanAnew = [&] { stage.reset(), stage.emplace(), scan(); };
    measure("search_sort_first", {5}, 100, sort, {}, scanAnew);
    const auto sortBack = [&] { stage->window->menu1.choose(L"zostupne"); };
    measure("search_sort_again", {5}, 100, sort, {}, sortBack);
}

// Only when it is asked for: 1,000,000 files in 20,000 folders.
BENCH(million) {
    const std::wstring root = deepTree(L"search-million", 20'000);
    SearchStage stage;
    const SIZE_T before = memoryOf(GetCurrentProcess()).PagefileUsage;
    const auto scan = [&] { search(stage, root); };
    scan();
    double taken = static_cast<double>(memoryOf(GetCurrentProcess()).PeakPagefileUsage - before);
    for (const std::wstring& path : bareCollect(root)) taken -= 2.0 * path.size();
    report("million_memory", {taken / 1e6}, "bytes", {}, 160);
    measure("million", {3}, 1.3, scan, [&] { bareCollect(root); });
}

}  // namespace tunovka::bench
