#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <memory>

#include "core/errors.h"
#include "core/file_system.h"
#include "support/disk_faults.h"
#include "support/scratch_folder.h"

// Every operation that changes files is cut short at each of its steps; afterwards a whole copy of
// every content must be there and nothing half made.

namespace tunovka {
namespace {

namespace fso = FileSystemObject;

const std::string kNew(700000, 'n');
const std::string kOld(500000, 'o');

bool anyHolds(const std::vector<std::wstring>& paths, const std::string& content) {
    return std::any_of(paths.begin(), paths.end(),
                       [&](const std::wstring& path) { return contentOf(path) == content; });
}

void expectNothingHalfMade(const ScratchFolder& folder) {
    for (const std::wstring& name : folder.names())
        EXPECT_TRUE(name == L"a.mp3" || name == L"b.mp3") << std::string(name.begin(), name.end());
}

struct Scene {
    explicit Scene(const std::wstring& below = {})
        : to(below.empty() ? std::make_unique<ScratchFolder>()
                           : std::make_unique<ScratchFolder>(below)) {
        from.file(L"a.mp3", kNew);
        to->file(L"b.mp3", kOld);
    }
    std::wstring source() const { return from / L"a.mp3"; }
    std::wstring target() const { return *to / L"b.mp3"; }

    ScratchFolder from;
    std::unique_ptr<ScratchFolder> to;
};

// Runs the operation with a fault at each of its steps in turn; returns how many steps it has.
template <class Operation, class Check>
int cutAtEachStep(const std::wstring& below, Operation operation, Check check) {
    for (int step = 0;; ++step) {
        Scene scene(below);
        int error = 0;
        bool met = false;
        {
            FaultAt fault(step);
            try {
                operation(scene);
            } catch (const RuntimeError& failure) {
                error = failure.number;
            }
            met = fault.wasMet();
        }
        expectNothingHalfMade(scene.from);
        expectNothingHalfMade(*scene.to);
        EXPECT_EQ(error, met ? kDiskFull : 0) << "step " << step;
        check(scene, met);
        if (!met || step > 100) return step;
    }
}

const auto oldStaysUntilNewIsThere = [](const Scene& scene, bool cut) {
    EXPECT_EQ(contentOf(scene.source()), kNew);
    EXPECT_EQ(contentOf(scene.target()), cut ? kOld : kNew);
};

const auto bothStayUntilMoved = [](const Scene& scene, bool cut) {
    EXPECT_TRUE(anyHolds({scene.source(), scene.target()}, kNew));
    const std::string target = contentOf(scene.target());
    EXPECT_TRUE(target == kNew || target == kOld);
    EXPECT_TRUE(cut || !fso::FileExists(scene.source()));
};

TEST(DiskFaults, WritingKeepsTheOldFile) {
    const int steps = cutAtEachStep(
        {}, [](Scene& scene) { fso::writeWhole(scene.target(), kNew); }, oldStaysUntilNewIsThere);
    EXPECT_GE(steps, 6);
}

TEST(DiskFaults, CopyingKeepsTheOldFile) {
    const int steps = cutAtEachStep(
        {}, [](Scene& scene) { fso::copyFile(scene.source(), scene.target()); },
        oldStaysUntilNewIsThere);
    EXPECT_GE(steps, 6);
}

TEST(DiskFaults, MovingKeepsBothFiles) {
    const auto move = [](Scene& scene) { fso::moveFile(scene.source(), scene.target(), true); };
    EXPECT_GE(cutAtEachStep({}, move, bothStayUntilMoved), 1);
    if (otherVolume().empty()) GTEST_SKIP() << "no second volume here";
    EXPECT_GE(cutAtEachStep(otherVolume(), move, bothStayUntilMoved), 8);
}

TEST(DiskFaults, MovingAReadOnlyFileAcrossVolumesKeepsIt) {
    if (otherVolume().empty()) GTEST_SKIP() << "no second volume here";
    cutAtEachStep(
        otherVolume(),
        [](Scene& scene) {
            SetFileAttributesW(scene.source().c_str(), FILE_ATTRIBUTE_READONLY);
            fso::moveFile(scene.source(), scene.target(), true);
        },
        bothStayUntilMoved);
}

TEST(DiskFaults, AMoveThatCannotDeleteItsSourceReplacesNothing) {
    if (otherVolume().empty()) GTEST_SKIP() << "no second volume here";
    Scene scene(otherVolume());
    const FileHandle lock(CreateFileW(scene.source().c_str(), GENERIC_READ, FILE_SHARE_READ,
                                      nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_THROW(fso::moveFile(scene.source(), scene.target(), true), RuntimeError);
    EXPECT_EQ(contentOf(scene.source()), kNew);
    EXPECT_EQ(contentOf(scene.target()), kOld);
}

TEST(DiskFaults, DeletingDoesAllOrNothing) {
    const int steps = cutAtEachStep(
        {},
        [](Scene& scene) {
            SetFileAttributesW(scene.target().c_str(), FILE_ATTRIBUTE_READONLY);
            fso::deleteFile(scene.target(), true);
        },
        [](const Scene& scene, bool cut) {
            EXPECT_EQ(contentOf(scene.target()), cut ? kOld : "");
            EXPECT_TRUE(!cut || (fso::attributes(scene.target()) & FILE_ATTRIBUTE_READONLY));
        });
    EXPECT_EQ(steps, 2);
}

TEST(DiskFaults, ASourceThatShrinksMeanwhileIsNoWholeCopy) {
    Scene scene;
    const auto shrink = [&](std::uint64_t, std::uint64_t) {
        const FileHandle file(CreateFileW(scene.source().c_str(), GENERIC_WRITE,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                          nullptr, OPEN_EXISTING, 0, nullptr));
        SetFilePointer(file.get(), 300000, nullptr, FILE_BEGIN);
        SetEndOfFile(file.get());
        return true;
    };
    EXPECT_THROW(fso::copyFile(scene.source(), scene.target(), shrink), RuntimeError);
    EXPECT_EQ(contentOf(scene.target()), kOld);
}

}  // namespace
}  // namespace tunovka
