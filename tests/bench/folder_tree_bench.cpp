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

// 1,000 sub-folders in one folder: the shell is asked about each, and the window goes on answering.
BENCH(expand_folder) {
    const std::wstring root = data(L"expand", [](const std::wstring& folder) {
        for (int number = 0; number < 1000; ++number)
            CreateDirectoryW((folder + L"album " + std::to_wstring(number)).c_str(), nullptr);
    });
    std::vector<double> times, answers;
    for (int run = 0; run < 5; ++run) {
        Nodes nodes;
        nodes.add({}, root, {});
        AnsweringWindow window;
        times.push_back(timed([&] { RozneApi::AddSubfolderNodes(nodes, root); }));
        answers.push_back(window.longestAnswer());
    }
    report({"expand_folder", median(times), "ms"});
    report({"expand_folder_answer", median(answers), "ms", {}, 50});
}

}  // namespace tunovka::bench
