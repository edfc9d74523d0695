#include "app/contents_tree.h"
#include "benchmarks/bench.h"
#include "core/rozneapi.h"
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
            writeFile(folder + name + L".m3u", std::to_string(i) + "\\a.mp3\r\n");
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

}  // namespace tunovka::bench
