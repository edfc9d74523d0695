#include <windows.h>
// windows.h first: this one needs its types.
#include <chrono>
#include <map>
#include <mutex>
#include <vector>

#include "core/disk_questions.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "core/late_function.h"
#include "core/ole_windows.h"
#include "core/paths.h"
#include "core/text.h"

namespace tunovka {
namespace DiskWork {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kFewWorkers = 2;  // for a crew whose tasks are quick

// Guarded by the lock of the workers; `givenUp` is the asker's alone.
struct Crew::State {
    std::deque<std::shared_ptr<Task>> waiting;
    std::size_t most = kFewWorkers;  // workers that may be at it
    std::size_t called = 0;          // workers that are at it or on their way
    unsigned quick = 0;              // tasks in a row that took no time
    std::vector<DWORD> threads;      // those of the tasks under way
    Clock::time_point begun;         // the last of these
    bool givenUp = false;
};

namespace {

constexpr DWORD kQuickAnswer = 3;         // ms within which an answer lets nothing run
constexpr DWORD kHourglassAfter = 300;    // ms
constexpr DWORD kSilence = 10'000;        // ms
constexpr DWORD kIdle = 300;              // ms after which more than a few workers are too many
constexpr std::size_t kMostWorkers = 10;  // for one crew
constexpr unsigned kQuickInARow = 16;     // tasks after which a few workers are enough
constexpr SIZE_T kStack = 256 * 1024;     // bytes

// The threads that do the work: as many as it takes, because each may hang in the system.
class Workers {
  public:
    // Never destroyed: threads may still be at work when the program ends.
    static Workers& get() {
        static Workers& only = *new Workers;
        return only;
    }

    void put(const std::shared_ptr<Crew::State>& crew, std::shared_ptr<Task> task) {
        const std::scoped_lock lock(lock_);
        crew->waiting.push_back(std::move(task));
        if (!crew->threads.empty() && !isQuick(crew->begun)) crew->most = kMostWorkers;
        call(crew);
    }

    void reinforce(const std::shared_ptr<Crew::State>& crew) {
        const std::scoped_lock lock(lock_);
        crew->most = kMostWorkers;
        call(crew);
    }

    // False when the task is done already.
    bool tellEnd(Task& task, HANDLE event) {
        const std::scoped_lock lock(lock_);
        task.ended = event;
        return !task.done;
    }

    void giveUp(Crew::State& crew) {
        // Newer than the oldest system that the program starts on.
        static const LateFunction<BOOL WINAPI(HANDLE)> cancel(L"kernel32.dll",
                                                              "CancelSynchronousIo");
        const std::scoped_lock lock(lock_);
        crew.waiting.clear();
        crew.givenUp = true;
        if (!cancel) return;
        for (const DWORD thread : crew.threads) {
            const KernelHandle worker(OpenThread(THREAD_TERMINATE, FALSE, thread));
            if (worker) cancel(worker.get());
        }
    }

  private:
    struct Job {
        std::shared_ptr<Crew::State> crew;
        std::shared_ptr<Task> task;
        bool isQuick = false;
    };

    static bool isQuick(Clock::time_point begun) {
        return Clock::now() - begun < std::chrono::milliseconds(kQuickAnswer);
    }

    // Calls workers to the crew, as many as may be at its tasks.
    void call(const std::shared_ptr<Crew::State>& crew) {
        const std::size_t tasks = crew->threads.size() + crew->waiting.size();
        while (crew->called < std::min(crew->most, tasks)) {
            if (idle_ > 0) {
                --idle_;
                ReleaseSemaphore(calls_.get(), 1, nullptr);
            } else if (!KernelHandle(CreateThread(nullptr, kStack, run, this,
                                                  STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr))) {
                if (crew->called > 0) return;
                crew->waiting.clear();
                throw RuntimeError(kOutOfMemory);
            }
            ++crew->called;
            crews_.push_back(crew);
        }
    }

    static DWORD WINAPI run(void* workers) {
        const HRESULT apartment = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);  // the shell's
        static_cast<Workers*>(workers)->work();
        if (SUCCEEDED(apartment)) CoUninitialize();
        return 0;
    }

    void work() {
        for (Job job; next(job);) {
            const auto start = Clock::now();
            job.task->run();
            job.isQuick = isQuick(start);
        }
    }

    // Ends the job's task and waits for the next one; false when the worker is not needed any more.
    // It counts as idle in the same go, so that whoever is told of the end finds it.
    bool next(Job& job) {
        for (DWORD patience = 0;;) {
            {
                const std::scoped_lock lock(lock_);
                if (job.task) finish(job);
                if (take(job)) return true;
                patience = ++idle_ > kFewWorkers ? kIdle : INFINITE;
            }
            if (WaitForSingleObject(calls_.get(), patience) == WAIT_OBJECT_0) continue;
            const std::scoped_lock lock(lock_);
            if (WaitForSingleObject(calls_.get(), 0) == WAIT_OBJECT_0) continue;  // just in time
            --idle_;
            return false;
        }
    }

    static void finish(Job& job) {
        Crew::State& crew = *job.crew;
        std::erase(crew.threads, GetCurrentThreadId());
        crew.quick = job.isQuick ? crew.quick + 1 : 0;
        if (crew.quick >= kQuickInARow) crew.most = kFewWorkers;
        Task& task = *job.task;
        task.done = true;
        if (task.ended) SetEvent(task.ended);
        job.task.reset();
    }

    // Stays with its crew as long as that has work for it.
    bool take(Job& job) {
        for (;;) {
            if (job.crew) {
                Crew::State& crew = *job.crew;
                if (!crew.waiting.empty() && crew.called <= crew.most) {
                    job.task = std::move(crew.waiting.front());
                    crew.waiting.pop_front();
                    crew.threads.push_back(GetCurrentThreadId());
                    crew.begun = Clock::now();
                    return true;
                }
                --crew.called;
                job.crew.reset();
            }
            if (crews_.empty()) return false;
            job.crew = std::move(crews_.front());
            crews_.pop_front();
        }
    }

    std::mutex lock_;
    std::deque<std::shared_ptr<Crew::State>> crews_;  // once for each worker that is called
    std::size_t idle_ = 0;
    KernelHandle calls_{CreateSemaphoreW(nullptr, 0, MAXLONG, nullptr)};
};

// Learns of a task's end for as long as it lives.
class EndOf : NonCopyable {
  public:
    explicit EndOf(Task& task) : task_(task) {
        if (!Workers::get().tellEnd(task, event_.get())) SetEvent(event_.get());
    }
    ~EndOf() { Workers::get().tellEnd(task_, nullptr); }
    HANDLE event() const { return event_.get(); }

  private:
    Task& task_;
    KernelHandle event_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

// The pointer while a single question takes its time.
class Hourglass : NonCopyable {
  public:
    Hourglass() : before_(GetCursor()), timer_(SetTimer(nullptr, 0, kHourglassAfter, show)) {}
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
std::map<std::wstring, DWORD> silentRoots;

}  // namespace

Crew::Crew() : state_(std::make_shared<State>()) {}

void Crew::put(std::shared_ptr<Task> task) {
    Workers::get().put(state_, std::move(task));
}

void Crew::giveUp() {
    Workers::get().giveUp(*state_);
}

// True when nothing has to run: the task is done, or given up with another.
bool Crew::awaitQuickAnswer(const Task& task, Task& later) {
    if (state_->givenUp) return true;
    if (!task.done) WaitForSingleObject(EndOf(later).event(), kQuickAnswer);
    if (!task.done) Workers::get().reinforce(state_);
    return task.done;
}

bool Crew::await(Task& task, Task& later, const LoopHooks& command) {
    if (!command.letEventsRun) return await(task, later, std::wstring());
    if (awaitQuickAnswer(task, later)) return task.done;
    const EndOf end(task);
    if (waitForObject(end.event(), Meanwhile::AllEvents, command.cancelled)) return true;
    giveUp();
    return false;
}

bool Crew::await(Task& task, Task& later, const std::wstring& path) {
    if (awaitQuickAnswer(task, later)) return task.done;
    const Hourglass hourglass;
    const EndOf end(task);
    if (waitForObject(end.event(), Meanwhile::PaintingOnly)) return true;
    giveUp();
    silentRoots[upperCased(driveName(path))] = GetTickCount();
    return false;
}

bool isSilent(const std::wstring& path) {
    const auto found = silentRoots.find(upperCased(driveName(path)));
    return found != silentRoots.end() && GetTickCount() - found->second < kSilence;
}

}  // namespace DiskWork

bool fileAnswers(const std::wstring& path) {
    return askDisk(path, [path] { return FileSystemObject::FileExists(path); }).value_or(false);
}

std::wstring whyNoFile(const std::wstring& path, std::wstring_view missing) {
    using FileSystemObject::Presence;
    const auto presence = askDisk(path, [path] { return FileSystemObject::presence(path); });
    if (!presence) return errorDescription(kDeviceUnavailable);
    return presence == Presence::Denied ? errorDescription(kPermissionDenied)
                                        : std::wstring(missing);
}

std::wstring fileOnDisk(const std::wstring& path) {
    const auto ask = [path] {
        return FileSystemObject::FileExists(path) ? FileSystemObject::asOnDisk(path)
                                                  : std::wstring();
    };
    return askDisk(path, ask).value_or(std::wstring());
}

}  // namespace tunovka
