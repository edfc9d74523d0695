#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "support/disk_faults.h"
#include "support/error_of.h"

// What reading, writing, copying and moving make of a disk that does not answer as it should.

namespace tunovka {
namespace {

namespace fso = FileSystemObject;

const std::string kNew(700000, 'n');
const std::string kOld(500000, 'o');

struct Scene {
    explicit Scene(const std::wstring& below = {}) : to(below) {}

    const ScratchFolder from, to;
    const std::wstring source = from.file(L"a.mp3", kNew), target = to.file(L"b.mp3", kOld);
};

TEST(DiskFaults, WritingKeepsTheOldFile) {
    meetEachFault(6, [](const Fault& fault) {
        const Scene scene;
        const FaultAt at(fault);
        const int error = errorOf([&] { fso::writeWhole(scene.target, kNew); });
        const bool full = fault.error == ERROR_DISK_FULL;
        EXPECT_EQ(error, !at.wasMet() ? 0 : full ? kDiskFull : kPermissionDenied);
        EXPECT_TRUE(contentOf(scene.target) == (error ? kOld : kNew));
        EXPECT_EQ(namesIn(scene.to), std::vector<std::wstring>{L"b.mp3"});
        return at.wasMet();
    });
}

enum Operation { kWrite, kCopy, kMoveAway };  // the last one to another volume

// An answer of the system, given so many times, and the number of the error that it makes of the
// operation: 0 when the operation is to succeed all the same.
struct Answer {
    Operation operation;
    DiskCall call;
    DWORD error;  // 0: a write that ends short and says that it went well
    int times;
    int raised;
};

constexpr int kAlways = 1000;
constexpr DWORD kFileSystemLimitation = 665;  // not in every header set
constexpr Answer kAnswers[] = {
    {kWrite, DiskCall::Create, ERROR_WRITE_PROTECT, 1, kPermissionDenied},
    {kWrite, DiskCall::Write, 0, 1, kDiskFull},
    {kWrite, DiskCall::Write, ERROR_IO_DEVICE, 1, kPathFileAccess},
    {kWrite, DiskCall::Flush, ERROR_IO_DEVICE, 1, kPathFileAccess},
    {kWrite, DiskCall::SetTimes, ERROR_ACCESS_DENIED, kAlways, 0},
    {kWrite, DiskCall::List, ERROR_ACCESS_DENIED, kAlways, 0},
    {kWrite, DiskCall::Replace, ERROR_NOT_SUPPORTED, kAlways, 0},
    {kWrite, DiskCall::Replace, ERROR_SHARING_VIOLATION, 2, 0},
    {kWrite, DiskCall::Replace, ERROR_IO_DEVICE, 1, 0},
    {kCopy, DiskCall::Copy, kFileSystemLimitation, 1, kDiskFull},
    {kCopy, DiskCall::Copy, ERROR_NETNAME_DELETED, 1, kPathNotFound},
    {kCopy, DiskCall::Replace, ERROR_NOT_SUPPORTED, kAlways, 0},
    {kMoveAway, DiskCall::Flush, ERROR_IO_DEVICE, 1, kPathFileAccess},
    {kMoveAway, DiskCall::SetTimes, ERROR_ACCESS_DENIED, kAlways, 0},  // it keeps its creation time
};

void carryOut(Operation operation, const Scene& scene) {
    if (operation == kWrite)
        fso::writeWhole(scene.target, kNew);
    else if (operation == kCopy)
        fso::copyFile(scene.source, scene.target);
    else
        fso::moveFile(scene.source, scene.target, true);
}

TEST(DiskFaults, NoAnswerIsTakenForAnother) {
    for (const Answer& answer : kAnswers) {
        if (answer.operation == kMoveAway && otherVolume().empty()) continue;
        SCOPED_TRACE(&answer - kAnswers);
        const Scene scene(answer.operation == kMoveAway ? otherVolume() : L"");
        int left = answer.times;
        OddDisk disk([&](DiskCall call, const std::wstring&, DWORD& bytes) {
            // A refused replacing is followed by a renaming, which is refused as often.
            const bool same = call == answer.call || (answer.error == ERROR_SHARING_VIOLATION &&
                                                      call == DiskCall::Move && left >= 0);
            if (!same || left-- <= 0) return DWORD{ERROR_SUCCESS};
            if (!answer.error) --bytes;
            return answer.error;
        });
        EXPECT_EQ(errorOf([&] { carryOut(answer.operation, scene); }), answer.raised);
        disk.become({});
        EXPECT_LT(left, answer.times);
        const bool moved = answer.operation == kMoveAway && !answer.raised;
        EXPECT_TRUE(contentOf(scene.target) == (answer.raised ? kOld : kNew));
        EXPECT_TRUE(contentOf(scene.source) == (moved ? "" : kNew));
        EXPECT_EQ(scene.to.names(), std::vector<std::wstring>{L"b.mp3"});
    }
}

TEST(DiskFaults, ReadingTakesPiecesForPiecesAndACutFileForAFailure) {
    const Scene scene;
    OddDisk disk([](DiskCall call, const std::wstring&, DWORD& bytes) {
        if (call == DiskCall::Read) bytes = std::min<DWORD>(bytes, 99999);
        return DWORD{ERROR_SUCCESS};
    });
    EXPECT_TRUE(fso::readAll(scene.source) == kNew);
    int reads = 0;
    disk.become([&](DiskCall call, const std::wstring&, DWORD& bytes) {
        if (call == DiskCall::Read) bytes = ++reads == 1 ? 99999 : 0;
        return DWORD{ERROR_SUCCESS};
    });
    EXPECT_EQ(errorOf([&] { fso::readAll(scene.source); }), kPathFileAccess);
    disk.become([](DiskCall call, const std::wstring&, DWORD&) {
        return call == DiskCall::Read ? DWORD{ERROR_CRC} : DWORD{ERROR_SUCCESS};
    });
    EXPECT_EQ(errorOf([&] { fso::readAll(scene.source); }), kPathFileAccess);
    EXPECT_EQ(errorOf([&] { fso::readPart(scene.source, 0, 128); }), kPathFileAccess);
}

// Windows may lose the target in a replacing that fails: then what was made is the only copy.
TEST(DiskFaults, WhatIsLeftOfALostTargetStays) {
    const Scene scene;
    {
        const OddDisk disk([&](DiskCall call, const std::wstring&, DWORD&) {
            if (call == DiskCall::Replace) DeleteFileW(scene.target.c_str());
            if (call == DiskCall::Replace) return DWORD{ERROR_UNABLE_TO_MOVE_REPLACEMENT_2};
            return call == DiskCall::Move ? DWORD{ERROR_IO_DEVICE} : DWORD{ERROR_SUCCESS};
        });
        EXPECT_EQ(errorOf([&] { fso::writeWhole(scene.target, kNew); }), kPathFileAccess);
    }
    ASSERT_EQ(scene.to.names().size(), 1u);
    EXPECT_TRUE(contentOf(scene.to / scene.to.names()[0]) == kNew);
}

TEST(DiskFaults, AMoveThatCannotDeleteItsSourceReplacesNothing) {
    if (otherVolume().empty()) GTEST_SKIP() << "no second volume here";
    Scene scene(otherVolume());
    const OddDisk disk([](DiskCall call, const std::wstring&, DWORD&) {
        return call == DiskCall::TryAgain ? DWORD{ERROR_TIMEOUT} : DWORD{ERROR_SUCCESS};
    });
    const FileHandle lock = locked(scene.source, FILE_SHARE_READ);
    EXPECT_THROW(fso::moveFile(scene.source, scene.target, true), RuntimeError);
    EXPECT_TRUE(contentOf(scene.source) == kNew);
    EXPECT_TRUE(contentOf(scene.target) == kOld);
}

TEST(DiskFaults, ASourceThatShrinksMeanwhileIsNoWholeCopy) {
    Scene scene;
    const OddDisk disk;
    const auto shrink = [&](std::uint64_t, std::uint64_t) {
        const FileHandle file = opened(scene.source, GENERIC_WRITE,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
        SetFilePointer(file.get(), 300000, nullptr, FILE_BEGIN);
        SetEndOfFile(file.get());
        return true;
    };
    EXPECT_THROW(fso::copyFile(scene.source, scene.target, {shrink}), RuntimeError);
    EXPECT_TRUE(contentOf(scene.target) == kOld);
}

// Whoever plays a file keeps it until nothing but that stands against the operation.
TEST(DiskFaults, AFileInUseIsClosedOnlyWhenItsTurnHasCome) {
    for (const bool refused : {true, false}) {
        for (const bool copies : {true, false}) {
            SCOPED_TRACE(copies);
            const Scene scene;
            const std::wstring used = copies ? scene.target : scene.source;
            FileHandle player = locked(used, FILE_SHARE_READ);
            const OddDisk disk([&](DiskCall call, const std::wstring&, DWORD&) {
                const bool writes = call == DiskCall::Copy || call == DiskCall::Move;
                return refused && writes ? DWORD{ERROR_DISK_FULL} : DWORD{ERROR_SUCCESS};
            });
            int freed = 0;
            const TransferHooks hooks{.closeFile = [&](const std::wstring& path) {
                if (!fso::FileExists(used) || fso::sameFile(path, used)) ++freed, player.reset();
            }};
            EXPECT_EQ(errorOf([&] {
                          copies ? fso::copyFile(scene.source, scene.target, hooks)
                                 : fso::moveFile(scene.source, scene.target, true, hooks);
                      }),
                      refused ? kDiskFull : 0);
            EXPECT_EQ(freed > 0, !refused);
            EXPECT_EQ(static_cast<bool>(player), refused);
            EXPECT_TRUE(contentOf(scene.target) == (refused ? kOld : kNew));
        }
    }
}

TEST(DiskFaults, OldLeftoversThatNobodyHoldsAreTakenAway) {
    const Scene scene;
    const auto leftover = [&](const wchar_t* name, bool old) {
        const std::wstring path = scene.to.file(name);
        FILETIME time;
        GetSystemTimeAsFileTime(&time);
        time.dwHighDateTime -= old ? 250 : 100;  // 7 minutes each: 29 hours, 12 hours
        setTimes(path, &time, nullptr, &time);
        return path;
    };
    leftover(L"~tunovka-00000001-0001.tmp", true);
    const FileHandle held =
        locked(leftover(L"~tunovka-00000002-0001.tmp", true), FILE_SHARE_READ | FILE_SHARE_DELETE);
    leftover(L"~tunovka-00000003-0001.tmp", false);
    leftover(L"~tunovka-moje.tmp", true);
    fso::copyFile(scene.source, scene.target);
    auto names = scene.to.names();
    std::ranges::sort(names);
    EXPECT_EQ(names,
              (std::vector<std::wstring>{L"b.mp3", L"~tunovka-00000002-0001.tmp",
                                         L"~tunovka-00000003-0001.tmp", L"~tunovka-moje.tmp"}));
}

}  // namespace
}  // namespace tunovka
