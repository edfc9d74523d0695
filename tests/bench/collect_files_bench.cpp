#include "bench/bench.h"
#include "core/rozneapi.h"

namespace tunovka::bench {
namespace {

void makeFiles(const std::wstring& folder, int count) {
    for (int number = 0; number < count; ++number)
        writeFile(folder + L"pieseň číslo " + std::to_wstring(number) + L".mp3", "");
}

// 100,000 files in 2,000 folders, three levels deep.
std::wstring deepTree() {
    return data(L"collect-deep", [](const std::wstring& root) {
        for (int outer = 0; outer < 40; ++outer) {
            const std::wstring folder = root + L"album " + std::to_wstring(outer) + L"\\";
            CreateDirectoryW(folder.c_str(), nullptr);
            makeFiles(folder, 50);
            for (int inner = 0; inner < 49; ++inner) {
                const std::wstring below = folder + L"disk " + std::to_wstring(inner) + L"\\";
                CreateDirectoryW(below.c_str(), nullptr);
                makeFiles(below, 50);
            }
        }
    });
}

std::wstring flatFolder() {
    return data(L"collect-flat", [](const std::wstring& root) { makeFiles(root, 30000); });
}

}  // namespace

BENCH(collect_deep) {
    const std::wstring root = deepTree();
    std::size_t own = 0, bare = 0;
    const Pair times = comparedInTurns(
        7, [&] { own = RozneApi::CollectFiles(root).size(); },
        [&] { bare = bareCollect(root).size(); });
    report({"collect_deep", times.own, "ms", times.bare, 1.15});
    report({"collect_deep_files", static_cast<double>(own), "files", static_cast<double>(bare)});
}

BENCH(collect_flat) {
    const std::wstring root = flatFolder();
    const Pair times = comparedInTurns(
        9, [&] { RozneApi::CollectFiles(root); }, [&] { bareCollect(root); });
    report({"collect_flat", times.own, "ms", times.bare, 1.15});

    std::vector<double> answers;
    for (int run = 0; run < 9; ++run) {
        AnsweringWindow window;
        RozneApi::CollectFiles(root);
        answers.push_back(window.longestAnswer());
    }
    report({"collect_flat_answer", median(answers), "ms", {}, 50});
}

}  // namespace tunovka::bench
