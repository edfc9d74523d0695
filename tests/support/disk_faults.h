#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <cstdio>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "core/disk_windows.h"
#include "core/errors.h"
#include "support/scratch_folder.h"

// Disks that answer otherwise than they should.

namespace tunovka {

// Stands in for the system for as long as it lives: `onCall` says what comes of each call, and
// files are copied in pieces, as Windows does it and not every system.
class OddDisk : public DiskStandIn {
  public:
    using OnCall = std::function<DWORD(DiskCall call, const std::wstring& path, DWORD& bytes)>;

    explicit OddDisk(OnCall call = {}) {
        become(std::move(call));
        setDiskStandIn(this);
    }
    OddDisk(const OddDisk&) = delete;
    OddDisk& operator=(const OddDisk&) = delete;
    ~OddDisk() override {
        setDiskStandIn(nullptr);
        while (calls_ > 0) Sleep(1);
    }

    // Answers in this way from now on; on any thread.
    void become(OnCall call) {
        const std::scoped_lock lock(mutex_);
        onCall_ = std::make_shared<const OnCall>(std::move(call));
    }

    DWORD asked(DiskCall call, const std::wstring& path, DWORD& bytes) override {
        ++calls_;
        const std::shared_ptr<const OnCall> now = current();
        const DWORD error = *now ? (*now)(call, path, bytes) : ERROR_SUCCESS;
        --calls_;
        return error;
    }

    bool copies(const std::wstring& from, const std::wstring& to, const CopyProgress& progress,
                DWORD& error) override {
        ++calls_;
        error = copyInPieces(from, to, progress);
        --calls_;
        return true;
    }

  private:
    DWORD copyInPieces(const std::wstring& from, const std::wstring& to,
                       const CopyProgress& progress) {
        DWORD none = 0;
        const FileHandle source(CreateFileW(from.c_str(), GENERIC_READ,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                            nullptr, OPEN_EXISTING, 0, nullptr));
        const FileHandle target(
            CreateFileW(to.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
        BY_HANDLE_FILE_INFORMATION information;
        if (!source || !target || !GetFileInformationByHandle(source.get(), &information))
            return GetLastError();
        DWORD error = ERROR_SUCCESS;
        std::string piece(256 * 1024, '\0');
        const std::uint64_t total = information.nFileSizeLow;
        DWORD moved = 0;
        for (std::uint64_t done = 0; !error; done += moved) {
            if (progress && done && !progress(done, total)) error = ERROR_REQUEST_ABORTED;
            if (!error && done < total) error = asked(DiskCall::Copy, to, none);
            if (error) break;
            ReadFile(source.get(), piece.data(), static_cast<DWORD>(piece.size()), &moved, nullptr);
            if (moved == 0) break;
            WriteFile(target.get(), piece.data(), moved, &none, nullptr);
        }
        SetFileTime(target.get(), nullptr, nullptr, &information.ftLastWriteTime);
        SetFileAttributesW(to.c_str(), information.dwFileAttributes);
        return error;
    }

    std::shared_ptr<const OnCall> current() {
        const std::scoped_lock lock(mutex_);
        return onCall_;
    }

    std::mutex mutex_;
    std::shared_ptr<const OnCall> onCall_;
    std::atomic<int> calls_ = 0;  // under way
};

// Holds calls up that are made below a folder, until its end: a server that does not answer.
class Silence {
  public:
    explicit Silence(const std::wstring& folder) : folder_(folder) {}
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() {
        end();
        while (held_ > 0) Sleep(1);
    }
    void end() { SetEvent(over_.get()); }
    void hold(const std::wstring& path) {
        if (!path.starts_with(folder_)) return;
        ++held_;
        WaitForSingleObject(over_.get(), INFINITE);
        --held_;
    }
    int held() const { return held_; }

  private:
    std::wstring folder_;
    std::atomic<int> held_ = 0;
    KernelHandle over_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

// What a notice says of an error of the system.
inline std::wstring sentenceOf(DWORD error) {
    try {
        raiseSystemError(error);
    } catch (const RuntimeError& failure) {
        return failure.description;
    }
}

// What goes wrong at a step of an operation.
enum class Trouble {
    Denied,      // this step is refused
    DiskFull,    // from now on nothing can be written
    SourceGone,  // somebody deletes the file that is read or moved
    FolderGone,  // the target's folder goes away, as a network drive does
    Locked,      // another program opens the target for itself
};

struct Fault {
    Trouble trouble;
    int step;  // the first is 0

    // What the program itself is told; its notice must say so.
    int number() const { return trouble == Trouble::DiskFull ? kDiskFull : kPermissionDenied; }
    std::wstring sentence() const {
        return sentenceOf(trouble == Trouble::DiskFull ? ERROR_DISK_FULL : ERROR_ACCESS_DENIED);
    }
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
// Steps are the calls without which an operation cannot be done.
class TroubleAt {
  public:
    TroubleAt(const Fault& fault, Victims victims)
        : trouble_(fault.trouble),
          left_(fault.step),
          victims_(std::move(victims)),
          disk_([this](DiskCall call, const std::wstring&, DWORD&) { return answer(call); }) {
        victims_.folder.pop_back();
    }
    TroubleAt(const TroubleAt&) = delete;
    TroubleAt& operator=(const TroubleAt&) = delete;
    ~TroubleAt() { makeGood(); }
    void makeGood() {
        disk_.become({});
        lock_.reset();
        if (std::exchange(away_, false)) MoveFileW(awayName().c_str(), victims_.folder.c_str());
    }
    bool wasMet() const { return left_ < 0; }

  private:
    std::wstring awayName() const { return victims_.folder + L".away"; }

    static bool isWriting(DiskCall call) {
        return call == DiskCall::Create || call == DiskCall::Write || call == DiskCall::Flush ||
               call == DiskCall::Copy || call == DiskCall::Move || call == DiskCall::Replace;
    }
    bool isStep(DiskCall call) const {
        if (isWriting(call)) return true;
        return trouble_ != Trouble::DiskFull &&
               (call == DiskCall::Read || call == DiskCall::SetAttributes ||
                call == DiskCall::Delete);
    }

    DWORD answer(DiskCall call) {
        if (call == DiskCall::TryAgain) return ERROR_TIMEOUT;
        // A replacing that is refused is tried in another way: that is refused as well.
        if (std::exchange(refuseMove_, false) && call == DiskCall::Move) return ERROR_ACCESS_DENIED;
        if (!isStep(call)) return ERROR_SUCCESS;
        if (trouble_ == Trouble::DiskFull && left_ < 0) return ERROR_DISK_FULL;
        return --left_ == -1 ? meet(call) : DWORD{ERROR_SUCCESS};
    }

    DWORD meet(DiskCall call) {
        switch (trouble_) {
            case Trouble::Denied:
                ++faultsInjected;
                refuseMove_ = call == DiskCall::Replace;
                return ERROR_ACCESS_DENIED;
            case Trouble::DiskFull:
                ++faultsInjected;
                return ERROR_DISK_FULL;
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
        return ERROR_SUCCESS;
    }

    Trouble trouble_;
    int left_;
    Victims victims_;
    bool away_ = false, refuseMove_ = false;
    FileHandle lock_;
    OddDisk disk_;
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
        if (trouble != Trouble::DiskFull || step > 0) {  // deleting writes nothing
            EXPECT_GE(faultsInjected - before, least) << "trouble " << static_cast<int>(trouble);
        }
        EXPECT_LT(step, 100);
    }
    testing::Test::RecordProperty("faults", faultsInjected - start);
    std::printf("%d faults injected here, %d so far\n", faultsInjected - start, faultsInjected);
}

// What is in a folder, but for what Wine leaves of a replacing that fails midway.
inline std::vector<std::wstring> namesIn(const ScratchFolder& folder) {
    std::vector<std::wstring> names = folder.names();
    std::erase_if(names, [](const std::wstring& name) { return name.starts_with(L"rf"); });
    return names;
}

// A folder on another volume than the temporary one, "" when there is none to be had.
inline std::wstring otherVolume() {
    const std::wstring folder = L"Z:\\dev\\shm\\";
    return FileSystemObject::FolderExists(folder) ? folder : L"";
}

}  // namespace tunovka
