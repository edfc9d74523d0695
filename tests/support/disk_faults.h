#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <string>
#include <utility>

#include "core/errors.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "support/scratch_folder.h"

// Operations on the disk that are cut short.

namespace tunovka {

// What goes wrong at a step.
enum class Trouble {
    Denied,      // this step alone is refused
    DiskFull,    // from now on there is no room
    SourceGone,  // somebody deletes the file that is read or moved
    FolderGone,  // the target's folder goes away, as a network drive does
    Locked,      // another program opens the target for itself
};

struct Fault {
    Trouble trouble;
    int step;  // the first is 0

    // What the program itself is told; its notice must say so.
    int number() const { return trouble == Trouble::DiskFull ? kDiskFull : kPermissionDenied; }
    bool raises() const { return trouble == Trouble::Denied || trouble == Trouble::DiskFull; }
};

inline int faultsInjected = 0;  // that had an effect, by all tests so far

// What the troubles befall.
struct Victims {
    std::wstring source;
    std::wstring folder;  // ends in "\"
    std::wstring locked;
};

// A step meets the trouble until makeGood() or the end: then the folder comes back, the lock goes.
class TroubleAt {
  public:
    TroubleAt(const Fault& fault, Victims victims)
        : trouble_(fault.trouble), left_(fault.step), victims_(std::move(victims)) {
        victims_.folder.pop_back();
        FileSystemObject::setFault([this](DiskStep, const std::wstring&) {
            if (--left_ == -1) meet();
            if (left_ < 0 && trouble_ == Trouble::DiskFull) throw RuntimeError(kDiskFull);
        });
    }
    TroubleAt(const TroubleAt&) = delete;
    TroubleAt& operator=(const TroubleAt&) = delete;
    ~TroubleAt() { makeGood(); }
    void makeGood() {
        FileSystemObject::setFault({});
        lock_.reset();
        if (std::exchange(away_, false)) MoveFileW(awayName().c_str(), victims_.folder.c_str());
    }
    bool wasMet() const { return left_ < 0; }

  private:
    std::wstring awayName() const { return victims_.folder + L".away"; }

    void meet() {
        switch (trouble_) {
            case Trouble::Denied:
                ++faultsInjected;
                throw RuntimeError(kPermissionDenied);
            case Trouble::DiskFull:
                ++faultsInjected;
                break;
            case Trouble::SourceGone:
                SetFileAttributesW(victims_.source.c_str(), FILE_ATTRIBUTE_NORMAL);
                faultsInjected += DeleteFileW(victims_.source.c_str()) != FALSE;
                break;
            case Trouble::FolderGone:
                away_ = MoveFileW(victims_.folder.c_str(), awayName().c_str()) != FALSE;
                faultsInjected += away_;
                break;
            case Trouble::Locked:
                lock_ = FileHandle(CreateFileW(victims_.locked.c_str(), GENERIC_READ, 0, nullptr,
                                               OPEN_EXISTING, 0, nullptr));
                faultsInjected += static_cast<bool>(lock_);
                break;
        }
    }

    Trouble trouble_;
    int left_;
    Victims victims_;
    bool away_ = false;
    FileHandle lock_;
};

// Lets an operation meet each trouble at each of its steps in turn, and tells how many faults those
// were; each trouble must have struck `least` times. `meets` runs the operation anew with that
// fault, checks what has come of it, and returns whether the operation got as far as its step.
template <class Meets>
void meetEachTrouble(int least, Meets meets) {
    const int start = faultsInjected;
    for (const Trouble trouble : {Trouble::Denied, Trouble::DiskFull, Trouble::SourceGone,
                                  Trouble::FolderGone, Trouble::Locked}) {
        const int before = faultsInjected;
        int step = 0;
        for (bool met = true; met && step < 100; step += met) {
            SCOPED_TRACE("trouble " + std::to_string(static_cast<int>(trouble)) + " at step " +
                         std::to_string(step));
            met = meets(Fault{trouble, step});
        }
        EXPECT_GE(faultsInjected - before, least) << "trouble " << static_cast<int>(trouble);
        EXPECT_LT(step, 100);
    }
    testing::Test::RecordProperty("faults", faultsInjected - start);
    std::printf("%d faults injected here, %d so far\n", faultsInjected - start, faultsInjected);
}

// A folder on another volume than the temporary one, "" when there is none to be had.
inline std::wstring otherVolume() {
    const std::wstring folder = L"Z:\\dev\\shm\\";
    return FileSystemObject::FolderExists(folder) ? folder : L"";
}

}  // namespace tunovka
