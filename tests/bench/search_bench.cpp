#include <windows.h>
// windows.h first: this needs its types.
#include <psapi.h>

#include "bench/bench.h"
#include "core/events.h"
#include "search/frm_hladanie.h"

namespace tunovka::bench {
namespace {

constexpr std::size_t kMusic = 30000;

// 100,000 files in 2,000 folders, 30,000 of them music.
std::wstring collection() {
    return data(L"search-deep", [](const std::wstring& root) {
        for (int outer = 0; outer < 40; ++outer) {
            const std::wstring folder = root + L"album " + std::to_wstring(outer) + L"\\";
            for (int inner = 0; inner < 50; ++inner) {
                const std::wstring below =
                    inner == 0 ? folder : folder + L"disk " + std::to_wstring(inner) + L"\\";
                CreateDirectoryW(below.c_str(), nullptr);
                for (int song = 0; song < 50; ++song)
                    writeFile(below + L"pieseň číslo " + std::to_wstring(song * 7919 % 50) +
                                  (song % 10 < 3 ? L".mp3" : L".jpg"),
                              "");
            }
        }
    });
}

// Stands for the explorer, without which nothing is searched.
class Explorer : public Form, public ProgramLinks {
  public:
    Explorer() : Form({.name = L"frmPrieskumnik", .caption = L"", .size = {100, 100}}) {}
    void tellExplorer(const std::wstring&) override {}
    std::wstring shownFolder() const override { return L""; }
    std::wstring folderToSearch() const override { return folder; }
    void openEditor(const std::wstring&) override {}
    void showInformation(const std::wstring&) override {}

    std::wstring folder;
};

class SearchStage {
  public:
    SearchStage() {
        MultiMedialny::InitSharedTables();
        explorer_ = &Forms::load<Explorer>();
        frmhladanie::open(*explorer_);
        window_ = static_cast<frmhladanie*>(Forms::find(L"frmhladanie"));
        yieldNow();
    }
    ~SearchStage() {
        Forms::unloadAll();
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    }

    frmhladanie& window() { return *window_; }

    // From the window's activation to the painted list.
    void search(const std::wstring& folder) {
        explorer_->folder = folder;
        SendMessageW(window_->handle(), WM_ACTIVATE, WA_ACTIVE, 0);
        MSG message;
        while (window_->lbladresar.text() != folder || window_->lblpočet.text().empty() ||
               window_->isBusy()) {
            if (GetMessageW(&message, nullptr, 0, 0) <= 0) return;
            DispatchMessageW(&message);
        }
        UpdateWindow(window_->Lview.handle());
    }

  private:
    Explorer* explorer_;
    frmhladanie* window_;
};

double usedBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.WorkingSetSize);
}

}  // namespace

BENCH(search_scan) {
    const std::wstring root = collection();
    SearchStage stage;
    // Each search needs another spelling of the folder than the last one.
    int turn = 0;
    const auto spelling = [&] { return ++turn % 2 ? root : root + L"\\"; };
    const Pair times = comparedInTurns(
        7, [&] { stage.search(spelling()); }, [&] { bareCollect(root); });
    report({"search_scan", times.own, "ms", times.bare, 1.3});
    report({"search_scan_rows", static_cast<double>(stage.window().Lview.count()), "rows",
            static_cast<double>(kMusic)});

    std::vector<double> answers;
    for (int run = 0; run < 5; ++run) {
        AnsweringWindow asked;
        stage.search(spelling());
        answers.push_back(asked.longestAnswer());
    }
    report({"search_scan_answer", median(answers), "ms", {}, 50});
}

BENCH(search_sort) {
    SearchStage stage;
    const std::wstring root = collection();
    std::vector<double> first, again;
    for (int run = 0; run < 5; ++run) {
        stage.window().Lview.sort(SortOrder::None);
        stage.search(run % 2 ? root : root + L"\\");
        first.push_back(timed([&] { stage.window().menu1.choose(L"vzostupne"); }));
        again.push_back(timed([&] { stage.window().menu1.choose(L"zostupne"); }));
    }
    report({"search_sort_first", median(first), "ms", {}, 100});
    report({"search_sort_again", median(again), "ms", {}, 100});
}

BENCH(search_memory) {
    SearchStage stage;
    std::vector<ListItem> rows;
    double paths = 0;
    const double before = usedBytes();
    for (std::size_t i = 0; i < kMusic; ++i) {
        const std::wstring name = L"pieseň číslo " + std::to_wstring(i) + L".mp3";
        rows.push_back({L"E:\\hudba\\interpret\\album\\" + name, name, L"winamp1"});
        paths += static_cast<double>((rows.back().key.size() + 1) * sizeof(wchar_t));
    }
    stage.window().Lview.addAll(std::move(rows));
    stage.window().Lview.sort(SortOrder::Ascending);
    report({"search_memory", (usedBytes() - before - paths) / kMusic, "bytes", {}, 400});
}

}  // namespace tunovka::bench
