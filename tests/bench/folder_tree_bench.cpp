#include <windows.h>
// windows.h first: this needs its types.
#include <shellapi.h>

#include <unordered_set>

#include "bench/bench.h"
#include "core/rozneapi.h"

namespace tunovka::bench {
namespace {

class Nodes : public RozneApi::FolderNodes {
  public:
    void add(const std::wstring&, const std::wstring& key, const std::wstring&) override {
        keys_.insert(key);
    }
    bool hasNode(const std::wstring& key) const override { return keys_.contains(key); }

  private:
    std::unordered_set<std::wstring> keys_;
};

}  // namespace

// 1,000 sub-folders in one folder: the shell is asked about each, which is the bare work too, and
// the window goes on answering.
BENCH(expand_folder) {
    const std::wstring root = data(L"expand", [](const std::wstring& folder) {
        for (int number = 0; number < 1000; ++number)
            CreateDirectoryW((folder + L"album " + std::to_wstring(number)).c_str(), nullptr);
    });
    const auto expand = [&] {
        Nodes nodes;
        nodes.add({}, root, {});
        RozneApi::AddSubfolderNodes(nodes, root);
    };
    const Pair times = comparedInTurns(5, expand, [&] {
        for (int number = 0; number < 1000; ++number) {
            SHFILEINFOW information{};
            SHGetFileInfoW((root + L"album " + std::to_wstring(number) + L"\\").c_str(), 0,
                           &information, sizeof information, SHGFI_ATTRIBUTES);
        }
    });
    report({"expand_folder", times.own, "ms", times.bare, 1.15});
    std::vector<double> answers;
    for (int run = 0; run < 3; ++run) {
        AnsweringWindow window;
        expand();
        answers.push_back(window.longestAnswer());
    }
    report({"expand_folder_answer", median(answers), "ms", {}, 50});
}

}  // namespace tunovka::bench
