#include <gtest/gtest.h>
#include <windows.h>

#include <memory>

#include "core/errors.h"
#include "core/file_system.h"
#include "support/disk_faults.h"
#include "support/error_of.h"
#include "support/scratch_folder.h"

// Writing a file that meets each trouble at each of its steps, and what a move or a copy may meet
// besides.

namespace tunovka {
namespace {

namespace fso = FileSystemObject;

const std::string kNew(700000, 'n');
const std::string kOld(500000, 'o');

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

TEST(DiskFaults, WritingKeepsTheOldFile) {
    meetEachTrouble(6, [](const Fault& fault) {
        const Scene scene;
        TroubleAt at(fault, {scene.target(), scene.to->path(), scene.target()});
        const int error = errorOf([&] { fso::writeWhole(scene.target(), kNew); });
        at.makeGood();
        const bool met = at.wasMet();
        EXPECT_EQ(error != 0, met && fault.trouble != Trouble::SourceGone);
        if (met && fault.raises()) {
            EXPECT_EQ(error, fault.number());
        }
        EXPECT_EQ(contentOf(scene.target()), error ? kOld : kNew);
        if (fault.trouble != Trouble::FolderGone) {  // what was begun there is out of reach
            EXPECT_EQ(scene.to->names(), std::vector<std::wstring>{L"b.mp3"});
        }
        return met;
    });
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
