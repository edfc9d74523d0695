// Every file operation that meets each trouble at each of its steps: a whole copy of every file
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
    explicit Scene(const Case& test)
        : to(test.otherVolume ? std::make_unique<ScratchFolder>(otherVolume())
                              : std::make_unique<ScratchFolder>()) {
        chosenFolder = to->path();
        clipboard = (test.cut ? L"cut:" : L"copy:") + source;
        txtsubor.setText(clipboard);
        if (!test.readOnly) return;
        makeReadOnly(source);
        makeReadOnly(target);
    }

    ScratchFolder from;
    std::unique_ptr<ScratchFolder> to;
    const std::wstring source = from.file(L"a.mp3", kNew);
    const std::wstring target = to->file(L"a.mp3", kOld);
    std::wstring clipboard;
};

// Runs the operation; the delete question is answered by its first button, the notice as well.
bool runWith(const Fault& fault, Scene& scene, const Case& test) {
    const bool deleting = test.operation == kDelete;
    scene.person.answer(deleting ? std::deque<int>{1, 1} : std::deque<int>{1});
    const TroubleAt at(fault, {scene.source, deleting ? scene.from.path() : scene.to->path(),
                               deleting ? scene.source : scene.target});
    scene.run(test.operation, scene.source, scene.target);
    return at.wasMet();
}

// What is done is done whole: a source that goes once it is open is copied to its end, a target
// whose copy is in its place may do as it likes. Otherwise everything stands as before, but for a
// copy on another volume whose source could not be deleted.
void expectWhole(const Fault& fault, bool done, const Scene& scene, const Case& test) {
    const std::string source = contentOf(scene.source), target = contentOf(scene.target);
    const bool deleting = test.operation == kDelete;
    const bool moving =
        test.operation == kMoveIntoFolder || (test.operation == kTransfer && test.cut);
    const bool gone = fault.trouble == Trouble::SourceGone && source.empty();
    if (done) {
        EXPECT_EQ(target, deleting ? kOld : kNew);
        EXPECT_EQ(source, deleting || moving || gone ? "" : kNew);
    } else {
        EXPECT_TRUE(target == kOld || (target == kNew && moving && test.otherVolume));
        EXPECT_EQ(source, gone ? "" : kNew);
    }
    if (fault.trouble == Trouble::FolderGone) return;  // what was begun there is out of reach
    EXPECT_LE(namesIn(scene.from).size(), 1u);
    EXPECT_EQ(namesIn(*scene.to).size(), 1u);
}

void expectTold(const Fault& fault, bool done, const Scene& scene, const Case& test) {
    const bool shows = done || contentOf(scene.target) == kNew;  // a copy without its source's end
    EXPECT_EQ(scene.command(), shows ? L"obnoviť" : FileStage::kBefore);
    EXPECT_EQ(scene.txtsubor.text(), done ? L"" : scene.clipboard);
    const std::size_t questions = test.operation == kDelete;
    ASSERT_EQ(scene.person.seen.size(), questions + !done);
    if (done) return;
    const std::wstring& text = scene.person.seen.back().text;
    EXPECT_TRUE(text.starts_with(kFailure));
    if (fault.raises()) {
        EXPECT_TRUE(text.ends_with(fault.sentence()));
    }
}

void expectReadOnly(const Scene& scene) {
    if (contentOf(scene.source) == kNew) {
        EXPECT_TRUE(isReadOnly(scene.source));
    }
    if (contentOf(scene.target) == kOld) {
        EXPECT_TRUE(isReadOnly(scene.target));
    }
}

TEST_P(Faults, LoseNothing) {
    const Case& test = GetParam();
    if (test.otherVolume && otherVolume().empty()) GTEST_SKIP() << "no second volume here";
    meetEachTrouble(test.leastSteps, [&](const Fault& fault) {
        Scene scene(test);
        const bool met = runWith(fault, scene, test);
        const bool done = scene.txtsubor.text().empty();
        if (!met || fault.raises()) {
            EXPECT_NE(done, met);
        }
        expectTold(fault, done, scene, test);
        expectWhole(fault, done, scene, test);
        // A folder that is away cannot get the bit back, and the full disk here takes no bit
        // either.
        if (!done && test.readOnly && fault.trouble != Trouble::FolderGone &&
            fault.trouble != Trouble::DiskFull)
            expectReadOnly(scene);
        return met;
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
    meetEachTrouble(1, [&](const Fault& fault) {
        DeleteFileW(target.c_str());
        ScratchFolder::write(source, "song");
        show(L"a.mp3");
        person.seen.clear();
        TroubleAt at(fault, {source, folder.path(), source});
        person.type({L"b"});
        press(VK_F2);
        at.makeGood();
        const BoxRequest told = person.seen.empty() ? BoxRequest{} : person.seen[0];
        const bool failed = told.text.starts_with(kFailure);
        EXPECT_TRUE(at.wasMet() || !failed);
        EXPECT_TRUE(!failed || !fault.raises() || told.text.ends_with(fault.sentence()));
        const bool gone = at.wasMet() && fault.trouble == Trouble::SourceGone;
        EXPECT_EQ(contentOf(source), failed && !gone ? "song" : "");
        EXPECT_EQ(contentOf(target), failed ? "" : "song");
        return at.wasMet();
    });
}

}  // namespace
}  // namespace tunovka
