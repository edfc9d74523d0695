#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <memory>

#include "core/disk_windows.h"
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
    ~OddDisk() override {
        setDiskStandIn(nullptr);
        while (calls_ > 0) Sleep(1);
    }

    // Answers in this way from now on; on any thread.
    void become(OnCall call) { onCall_ = std::make_shared<const OnCall>(std::move(call)); }

    DWORD asked(DiskCall call, const std::wstring& path, DWORD& bytes) override {
        ++calls_;
        const std::shared_ptr<const OnCall> now = onCall_;
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
        const FileHandle source =
            locked(from, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
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

    std::atomic<std::shared_ptr<const OnCall>> onCall_;
    std::atomic<int> calls_ = 0;  // under way
};

// Holds calls up that are made below a folder, until its end: a server that does not answer.
class Silence {
  public:
    explicit Silence(const std::wstring& folder) : folder_(folder) {}
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

// What goes wrong at a step of an operation; the first is 0. Steps are the calls without which it
// cannot be done.
struct Fault {
    DWORD error;  // ERROR_ACCESS_DENIED here alone, ERROR_DISK_FULL whenever something is written
    int step;
};

// Makes the fault happen for as long as it lives.
class FaultAt {
  public:
    explicit FaultAt(const Fault& fault)
        : fault_(fault),
          left_(fault.step),
          disk_([this](DiskCall call, const std::wstring&, DWORD&) { return answer(call); }) {}
    bool wasMet() const { return left_ < 0; }

  private:
    bool isFull() const { return fault_.error == ERROR_DISK_FULL; }
    bool isStep(DiskCall call) const {
        const bool writes = call == DiskCall::Create || call == DiskCall::Write ||
                            call == DiskCall::Flush || call == DiskCall::Copy ||
                            call == DiskCall::Move || call == DiskCall::Replace;
        const bool others =
            call == DiskCall::Read || call == DiskCall::SetAttributes || call == DiskCall::Delete;
        return writes || (others && !isFull());
    }
    DWORD answer(DiskCall call) {
        if (call == DiskCall::TryAgain) return ERROR_TIMEOUT;
        // A replacing that is refused is tried in another way: that is refused as well.
        if (std::exchange(refuseMove_, false) && call == DiskCall::Move) return ERROR_ACCESS_DENIED;
        if (!isStep(call)) return ERROR_SUCCESS;
        const bool now = --left_ == -1;
        refuseMove_ = now && !isFull() && call == DiskCall::Replace;
        return now || (wasMet() && isFull()) ? fault_.error : ERROR_SUCCESS;
    }

    const Fault fault_;
    int left_;
    bool refuseMove_ = false;
    OddDisk disk_;
};

// Lets an operation meet each fault at each of its steps in turn, at least so many of a refusal.
// `meets` runs the operation anew with that fault, checks what has come of it, and returns whether
// the operation got as far as its step.
template <class Meets>
void meetEachFault(int least, Meets meets) {
    for (const DWORD error : {ERROR_ACCESS_DENIED, ERROR_DISK_FULL}) {
        int step = 0;
        for (bool met = true; met && step < 100; step += met) {
            SCOPED_TRACE("error " + std::to_string(error) + " at step " + std::to_string(step));
            met = meets(Fault{error, step});
        }
        EXPECT_LT(step, 100);
        if (error == ERROR_ACCESS_DENIED) {
            EXPECT_GE(step, least);
        }
    }
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
