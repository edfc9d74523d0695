#include "app/contents_tree.h"
#include "benchmarks/bench.h"
#include "core/rozneapi.h"
#include "ui/form.h"

namespace tunovka::bench {
namespace {

std::wstring flatFolder() {
    return data(L"listing-music", [](const std::wstring& folder) {
        makeFolder(folder, 10000,
                   [](int number) { return L"pieseň číslo " + std::to_wstring(number) + L".mp3"; });
    });
}

struct Stage : Form {
    Stage() : Form({.name = L"frmStage", .caption = L"bench", .size = {600, 600}}) {
        contents.Tview.setBounds({0, 0, 600, 600});
        show();
    }
    TextBox txtPath;
    ContentsTree contents{*this, txtPath};
};

void listing(const std::string& name, const std::wstring& folder, double limit) {
    MultiMedialny::InitSharedTables();
    Stage stage;
    reportTime(name, 7, limit, [&] {
        stage.contents.ListFolderContents(folder);
        UpdateWindow(stage.contents.Tview.handle());
    });
    report({name + "_nodes", static_cast<double>(stage.contents.Tview.count()), "nodes"});
}

}  // namespace

BENCH(collect) {
    const std::wstring deep = deepTree(), flat = flatFolder();
    std::size_t own = 0, bare = 0;
    reportCompared(
        "collect_deep", 7, 1.15, [&] { own = RozneApi::CollectFiles(deep).size(); },
        [&] { bare = bareCollect(deep).size(); });
    report({"collect_deep_files", static_cast<double>(own), "files", static_cast<double>(bare)});
    reportCompared(
        "collect_flat", 9, 1.15, [&] { RozneApi::CollectFiles(flat); }, [&] { bareCollect(flat); });
    reportAnswer("collect_flat", 9, [&] { RozneApi::CollectFiles(flat); });
    const SlowDisk disk;
    reportTime("slow_search", 3, 3300, [&] { RozneApi::CollectFiles(deep); });
}

BENCH(listing) {
    const std::wstring scattered = data(L"listing-scattered", [](const std::wstring& folder) {
        for (int i = 0; i < 100; ++i) {
            const std::wstring name = std::to_wstring(i);
            writeFile(folder + name + L".m3u", std::to_string(i) + "\\a.mp3\r\n");
            makeFolder(folder + name + L"\\", 1, [](int) { return L"a.mp3"; });
        }
    });
    {
        const SlowDisk disk;
        listing("slow_listing", scattered, 330);
    }
    listing("listing_music", flatFolder(), 400);
    listing("listing_playlist", mixedCollection(), 500);
}

}  // namespace tunovka::bench
