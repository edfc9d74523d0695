// Every file operation cut short at each of its steps, once with a fault that passes and once with
// one that lasts: a whole copy of every file stays, nothing half made is left behind.
#include <gtest/gtest.h>

#include "core/paths.h"
#include "support/disk_faults.h"
#include "support/file_stage.h"

namespace tunovka {
namespace {

const std::string kNew(600000, 'n');
const std::string kOld(300000, 'o');

struct Case {
    const char* name;
    int operation;
    bool cut;          // what the clipboard says
    bool otherVolume;  // where the destination lies
    bool readOnly;     // the file that is replaced or deleted
    int leastSteps;
};

class Faults : public testing::TestWithParam<Case> {};

class Scene : public FileStage {
  public:
    explicit Scene(const Case& test)
        : to(test.otherVolume ? std::make_unique<ScratchFolder>(otherVolume())
                              : std::make_unique<ScratchFolder>()) {
        chosenFolder = to->path();
        clipboard = (test.cut ? L"cut:" : L"copy:") + source;
        txtsubor.setText(clipboard);
        if (test.readOnly) makeReadOnly(test.operation == kDelete ? source : target);
    }

    ScratchFolder from;
    std::unique_ptr<ScratchFolder> to;
    const std::wstring source = from.file(L"a.mp3", kNew);
    const std::wstring target = to->file(L"a.mp3", kOld);
    std::wstring clipboard;
};

// The delete question is answered by its first button, the notice of the fault as well.
void runCut(Scene& scene, const Case& test, int step, bool lasts, bool& met) {
    scene.person.answer(test.operation == kDelete ? std::deque<int>{1, 1} : std::deque<int>{1});
    FaultAt fault(step, lasts);
    scene.run(test.operation, scene.source, scene.target);
    met = fault.wasMet();
}

void expectWhole(const Scene& scene, const Case& test, bool met) {
    const std::string source = contentOf(scene.source), target = contentOf(scene.target);
    const bool deleting = test.operation == kDelete;
    EXPECT_TRUE(source == kNew || target == kNew || (deleting && !met));
    EXPECT_TRUE(source == kNew || source.empty());
    EXPECT_TRUE(target == kOld || (target == kNew && !deleting));
    if (test.operation == kCopyIntoFolder || (test.operation == kTransfer && !test.cut)) {
        EXPECT_EQ(source, kNew);
    }
    EXPECT_LE(scene.from.names().size(), 1u);
    EXPECT_EQ(scene.to->names().size(), 1u);
    EXPECT_EQ(scene.command(), met ? FileStage::kBefore : L"obnoviť");
    EXPECT_EQ(scene.txtsubor.text(), met ? scene.clipboard : L"");
}

void expectReadOnly(const Scene& scene, const Case& test) {
    const bool deleting = test.operation == kDelete;
    if (!deleting && contentOf(scene.target) != kOld) return;  // it is the new file
    EXPECT_TRUE(isReadOnly(deleting ? scene.source : scene.target));
}

TEST_P(Faults, LoseNothing) {
    const Case& test = GetParam();
    if (test.otherVolume && otherVolume().empty()) GTEST_SKIP() << "no second volume here";
    int faults = 0;
    for (const bool lasts : {false, true}) {
        bool met = true;
        int step = 0;
        for (; met && step < 100; ++step) {
            SCOPED_TRACE("step " + std::to_string(step) + (lasts ? " and all after" : ""));
            Scene scene(test);
            runCut(scene, test, step, lasts, met);
            expectWhole(scene, test, met);
            if (met) ++faults;
            if (met && !lasts && test.readOnly) expectReadOnly(scene, test);
        }
        EXPECT_GE(step - 1, test.leastSteps);
    }
    RecordProperty("faults", faults);
}

INSTANTIATE_TEST_SUITE_P(
    Operations, Faults,
    testing::Values(Case{"CopyTo", kCopyIntoFolder, false, false, false, 6},
                    Case{"CopyToOtherVolume", kCopyIntoFolder, false, true, false, 6},
                    Case{"MoveTo", kMoveIntoFolder, false, false, false, 2},
                    Case{"MoveToReadOnly", kMoveIntoFolder, false, false, true, 3},
                    Case{"MoveToOtherVolume", kMoveIntoFolder, false, true, false, 8},
                    Case{"MoveToOtherVolumeReadOnly", kMoveIntoFolder, false, true, true, 9},
                    Case{"PasteCopied", kTransfer, false, false, false, 7},
                    Case{"PasteCopiedReadOnly", kTransfer, false, false, true, 8},
                    Case{"PasteCopiedOtherVolume", kTransfer, false, true, false, 7},
                    Case{"PasteCut", kTransfer, true, false, false, 2},
                    Case{"PasteCutReadOnly", kTransfer, true, false, true, 3},
                    Case{"PasteCutOtherVolume", kTransfer, true, true, false, 8},
                    Case{"PasteCutOtherVolumeReadOnly", kTransfer, true, true, true, 9},
                    Case{"Delete", kDelete, false, false, false, 2},
                    Case{"DeleteReadOnly", kDelete, false, false, true, 3}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace tunovka
