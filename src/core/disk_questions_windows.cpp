#include <windows.h>
// windows.h first: this one needs its types.
#include <objbase.h>

#include <atomic>
#include <map>
#include <mutex>

#include "core/disk_questions.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "core/late_function.h"
#include "core/paths.h"
#include "core/text.h"

namespace tunovka {

// Work that a worker and the one who waits for it share. All but `finished` is guarded by the lock
// of the workers.
class DiskTask {
  public:
    std::function<void()> work;
    std::atomic<bool> finished = false;
    KernelHandle done;  // set at the end; made when somebody waits
    std::optional<LoopSignal::Address> wake;
    DWORD worker = 0;  // the thread that is at it
};

namespace {

constexpr DWORD kMoment = 3;            // ms within which an answer lets nothing run
constexpr DWORD kHourglassAfter = 300;  // ms
constexpr DWORD kSilence = 10'000;      // ms
constexpr std::size_t kMostIdle = 8;    // workers that are kept
constexpr SIZE_T kStack = 256 * 1024;   // bytes

// The threads that do the work: as many as it takes, because each may hang in the system.
class Workers {
  public:
    // Never destroyed: threads may still be at work when the program ends.
    static Workers& get() {
        static Workers& only = *new Workers;
        return only;
    }

    void start(const std::shared_ptr<DiskTask>& task) {
        const std::scoped_lock lock(lock_);
        queue_.push_back(task);
        if (idle_ > 0) {
            --idle_;
            ReleaseSemaphore(calls_.get(), 1, nullptr);
        } else if (!KernelHandle(CreateThread(nullptr, kStack, run, this,
                                              STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr))) {
            queue_.pop_back();
            throw RuntimeError(kOutOfMemory);
        }
    }

    // What is set when the task is done; nullptr when it is.
    HANDLE endOf(DiskTask& task) {
        const std::scoped_lock lock(lock_);
        if (task.finished) return nullptr;
        if (!task.done) task.done = KernelHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        return task.done.get();
    }

    // False when it is done already.
    bool wakeLoopAfter(DiskTask& task, const LoopSignal::Address& address) {
        const std::scoped_lock lock(lock_);
        task.wake = address;
        return !task.finished;
    }

    void giveUp(const std::shared_ptr<DiskTask>& task) {
        // Newer than the oldest system that the program starts on.
        static const LateFunction<BOOL WINAPI(HANDLE)> cancel(L"kernel32.dll",
                                                              "CancelSynchronousIo");
        const std::scoped_lock lock(lock_);
        task->wake.reset();
        std::erase(queue_, task);
        if (!task->worker || !cancel) return;
        const KernelHandle worker(OpenThread(THREAD_TERMINATE, FALSE, task->worker));
        if (worker) cancel(worker.get());
    }

  private:
    static DWORD WINAPI run(void* workers) {
        const HRESULT apartment = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);  // the shell's
        static_cast<Workers*>(workers)->work();
        if (SUCCEEDED(apartment)) CoUninitialize();
        return 0;
    }

    void work() {
        for (;;) {
            std::shared_ptr<DiskTask> task = next();
            if (task) {
                task->work();
                task->work = {};
            }
            const After after = finish(std::move(task));
            if (after == After::Leave) return;
            if (after == After::Wait) WaitForSingleObject(calls_.get(), INFINITE);
        }
    }

    std::shared_ptr<DiskTask> next() {
        const std::scoped_lock lock(lock_);
        if (queue_.empty()) return nullptr;
        std::shared_ptr<DiskTask> task = std::move(queue_.front());
        queue_.pop_front();
        task->worker = GetCurrentThreadId();
        return task;
    }

    enum class After { Next, Wait, Leave };

    // Ends the task, if there was one, and counts the worker as idle in one go: whoever is told of
    // the end finds it for the next task. An idle worker holds nothing of the task.
    After finish(std::shared_ptr<DiskTask> task) {
        const std::scoped_lock lock(lock_);
        if (task) {
            task->finished = true;
            task->worker = 0;
            if (task->done) SetEvent(task->done.get());
            if (task->wake) task->wake->raise();
        }
        if (!queue_.empty()) return After::Next;
        if (idle_ == kMostIdle) return After::Leave;
        ++idle_;
        return After::Wait;
    }

    std::mutex lock_;
    std::deque<std::shared_ptr<DiskTask>> queue_;
    std::size_t idle_ = 0;
    KernelHandle calls_{CreateSemaphoreW(nullptr, 0, MAXLONG, nullptr)};
};

// The pointer while a single question takes its time.
class Hourglass {
  public:
    Hourglass() : before_(GetCursor()), timer_(SetTimer(nullptr, 0, kHourglassAfter, show)) {}
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
    ~Hourglass() {
        KillTimer(nullptr, timer_);
        if (GetCursor() == LoadCursorW(nullptr, IDC_WAIT)) SetCursor(before_);
    }

  private:
    static void CALLBACK show(HWND, UINT, UINT_PTR, DWORD) {
        SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    }

    HCURSOR before_;
    UINT_PTR timer_;
};

// When single questions were given up, by drive or share.
std::map<std::wstring, DWORD>& silentRoots() {
    static std::map<std::wstring, DWORD> roots;
    return roots;
}

bool isDoneSoon(HANDLE end) {
    return !end || WaitForSingleObject(end, kMoment) == WAIT_OBJECT_0;
}

}  // namespace

namespace DiskWork {

std::shared_ptr<DiskTask> start(std::function<void()> work) {
    auto task = std::make_shared<DiskTask>();
    task->work = std::move(work);
    Workers::get().start(task);
    return task;
}

bool await(const std::shared_ptr<DiskTask>& task, const LoopHooks& command) {
    if (!command.letEventsRun) return await(task, std::wstring());
    if (task->finished || isDoneSoon(Workers::get().endOf(*task))) return true;
    static LoopSignal wake([](std::uintptr_t) {});  // a message, upon which the loop looks again
    if (Workers::get().wakeLoopAfter(*task, wake.address()))
        runLoopWhile(
            [&] { return !task->finished && !(command.cancelled && command.cancelled()); });
    if (task->finished) return true;
    giveUp(task);
    return false;
}

bool await(const std::shared_ptr<DiskTask>& task, const std::wstring& path) {
    const HANDLE end = Workers::get().endOf(*task);
    if (isDoneSoon(end)) return true;
    const Hourglass hourglass;
    if (waitForObject(end, Meanwhile::PaintingOnly)) return true;
    giveUp(task);
    silentRoots()[upperCased(driveName(path))] = GetTickCount();
    return false;
}

void giveUp(const std::shared_ptr<DiskTask>& task) {
    Workers::get().giveUp(task);
}

bool isSilent(const std::wstring& path) {
    const auto found = silentRoots().find(upperCased(driveName(path)));
    return found != silentRoots().end() && GetTickCount() - found->second < kSilence;
}

}  // namespace DiskWork

bool fileAnswers(const std::wstring& path) {
    return askDisk(path, [path] { return FileSystemObject::FileExists(path); }).value_or(false);
}

std::wstring fileOnDisk(const std::wstring& path) {
    const auto ask = [path] {
        return FileSystemObject::FileExists(path) ? FileSystemObject::asOnDisk(path)
                                                  : std::wstring();
    };
    return askDisk(path, ask).value_or(std::wstring());
}

}  // namespace tunovka
