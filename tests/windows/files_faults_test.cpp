// Every file operation that meets each fault at each of its steps: a whole copy of every file
// stays, nothing half made is left behind, and the person is told; in the explorer it can be tried
// again.
#include <gtest/gtest.h>

#include "support/disk_faults.h"
#include "support/file_menus.h"
#include "support/file_stage.h"

namespace tunovka {
namespace {

const std::string kNew(600000, 'n');
const std::string kOld(3000, 'o');
constexpr wchar_t kFailure[] = L"Došlo k neočakávanej chybe (č. ";

struct Case {
    const char* name;
    int operation;
    bool cut;          // what the clipboard says
    bool otherVolume;  // where the destination lies
    bool readOnly;     // both files
    int leastSteps;
};

class Faults : public testing::TestWithParam<Case> {};

class Scene : public FileStage {
  public:
    explicit Scene(const Case& test) : to(test.otherVolume ? otherVolume() : L"") {
        chosenFolder = to.path();
        clipboard = (test.cut ? L"cut:" : L"copy:") + source;
        txtsubor.setText(clipboard);
        if (!test.readOnly) return;
        makeReadOnly(source);
        makeReadOnly(target);
    }

    const ScratchFolder from, to;
    const std::wstring source = from.file(L"a.mp3", kNew), target = to.file(L"a.mp3", kOld);
    std::wstring clipboard;
};

bool deletes(const Case& test) {
    return test.operation == kDelete;
}
bool moves(const Case& test) {
    return test.operation == kMoveIntoFolder || (test.operation == kTransfer && test.cut);
}

// What is done is done whole. Otherwise everything stands as before, but for a copy on another
// volume whose source could not be deleted.
void expectWhole(bool done, const Scene& scene, const Case& test) {
    const std::string source = contentOf(scene.source), target = contentOf(scene.target);
    EXPECT_EQ(source, done && (deletes(test) || moves(test)) ? "" : kNew);
    const bool copied = done || (target == kNew && moves(test) && test.otherVolume);
    EXPECT_EQ(target, copied && !deletes(test) ? kNew : kOld);
    EXPECT_LE(namesIn(scene.from).size(), 1u);
    EXPECT_EQ(namesIn(scene.to).size(), 1u);
}

void expectTold(const Fault& fault, bool done, const Scene& scene, const Case& test) {
    const bool shows = done || contentOf(scene.target) == kNew;  // a copy without its source's end
    EXPECT_EQ(scene.command(), shows ? L"obnoviť" : FileStage::kBefore);
    EXPECT_EQ(scene.txtsubor.text(), done ? L"" : scene.clipboard);
    ASSERT_EQ(scene.person.seen.size(), std::size_t{deletes(test)} + !done);
    if (done) return;
    const std::wstring& text = scene.person.seen.back().text;
    EXPECT_TRUE(text.starts_with(kFailure) && text.ends_with(sentenceOf(fault.error)));
}

TEST_P(Faults, LoseNothing) {
    const Case& test = GetParam();
    if (test.otherVolume && otherVolume().empty()) GTEST_SKIP() << "no second volume here";
    meetEachFault(test.leastSteps, [&](const Fault& fault) {
        Scene scene(test);
        scene.person.answer({1, 1});  // the delete question, the notice
        const FaultAt at(fault);
        scene.run(test.operation, scene.source, scene.target);
        const bool done = !at.wasMet();
        expectTold(fault, done, scene, test);
        expectWhole(done, scene, test);
        // The full disk here takes no bit either.
        if (!done && test.readOnly && fault.error != ERROR_DISK_FULL) {
            EXPECT_TRUE(isReadOnly(scene.source) && isReadOnly(scene.target));
        }
        return at.wasMet();
    });
}

INSTANTIATE_TEST_SUITE_P(
    Operations, Faults,
    testing::Values(Case{"CopyTo", kCopyIntoFolder, false, false, false, 6},
                    Case{"MoveTo", kMoveIntoFolder, false, false, false, 1},
                    Case{"MoveToReadOnly", kMoveIntoFolder, false, false, true, 1},
                    Case{"MoveToOtherVolumeReadOnly", kMoveIntoFolder, false, true, true, 8},
                    Case{"PasteCopied", kTransfer, false, false, false, 6},
                    Case{"PasteCopiedReadOnly", kTransfer, false, false, true, 7},
                    Case{"PasteCut", kTransfer, true, false, false, 1},
                    Case{"PasteCutOtherVolume", kTransfer, true, true, false, 7},
                    Case{"Delete", kDelete, false, false, false, 1},
                    Case{"DeleteReadOnly", kDelete, false, false, true, 2}),
    [](const auto& test) { return test.param.name; });

// Renaming is the explorer's own: one that fails says why and leaves the file.
class ExplorerFaults : public FileMenus {};

TEST_F(ExplorerFaults, OfRenamingLeaveTheFile) {
    const std::wstring source = folder / L"a.mp3", target = folder / L"b.mp3";
    meetEachFault(1, [&](const Fault& fault) {
        DeleteFileW(target.c_str());
        ScratchFolder::write(source, "song");
        show(L"a.mp3");
        person.seen.clear();
        person.type({L"b"});
        const FaultAt at(fault);
        press(VK_F2);
        const bool failed = at.wasMet();
        EXPECT_EQ(person.seen.size(), std::size_t{failed});
        EXPECT_TRUE(!failed || person.seen[0].text.ends_with(sentenceOf(fault.error)));
        EXPECT_EQ(contentOf(source), failed ? "song" : "");
        EXPECT_EQ(contentOf(target), failed ? "" : "song");
        return failed;
    });
}

}  // namespace
}  // namespace tunovka
