#include "player/media_player.h"

#include <windows.h>
// windows.h first: this one needs its types.
#include <objbase.h>

#include <algorithm>
#include <atomic>
#include <deque>
#include <exception>
#include <mutex>
#include <utility>

#include "core/ansi.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "core/loop.h"
#include "core/multimedialny.h"
#include "core/text.h"
#include "player/directshow_engine.h"
#include "player/media_control.h"
#include "player/playback_errors.h"
#include "playlist/line_grammar.h"

namespace tunovka {
namespace {

constexpr DWORD kLook = 100;          // ms between two looks at the position while it moves
constexpr DWORD kLongestWait = 1000;  // ms for a thread that is busy with a file

std::vector<ListedFile> filesOf(const std::wstring& file) {
    if (!MultiMedialny::isPlaylistName(lowerCased(file))) return {{file, {}}};
    return listedFiles(fromAnsi(FileSystemObject::readAll(file)), playlistFolder(file));
}

// COM, made ready on this thread for as long as the object lives.
class Apartment {
  public:
    Apartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~Apartment() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

  private:
    HRESULT result_;
};

// Held while a thread opens its first file: of many files that are set in quick succession only the
// last one is worth the work. A file that takes all too long does not hold the others up.
class Turn {
  public:
    // Waits for the turn, or until the event is set.
    explicit Turn(HANDLE givenUp) {
        const HANDLE handles[] = {semaphore(), givenUp};
        held_ = WaitForMultipleObjects(2, handles, FALSE, kLongestWait) == WAIT_OBJECT_0;
    }
    ~Turn() {
        if (held_) ReleaseSemaphore(semaphore(), 1, nullptr);
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

  private:
    static HANDLE semaphore() {
        static const KernelHandle only(CreateSemaphoreW(nullptr, 1, 1, nullptr));
        return only.get();
    }
    bool held_ = false;
};

}  // namespace

std::unique_ptr<MediaEngine> createMediaEngine() {
    if (auto control = MediaControlEngine::create()) return control;
    return std::make_unique<DirectShowEngine>();
}

// What the owner may ask at any time.
struct MediaPlayer::Shown {
    double duration = 0, position = 0;  // seconds
    ClipDetails details;
    std::wstring error;
};

// The thread on which an engine lives from its making to its end, with its apartment and a message
// loop. The thread of the windows gives it orders and never waits for them.
class MediaPlayer::PlayingThread {
  public:
    using Order = std::function<void(Playback&)>;
    using Tell = std::function<void(unsigned opening, const MediaNotification&)>;

    // `createEngine` and `tell` are called on the new thread; `tell` must not throw.
    PlayingThread(MediaEngineFactory createEngine, int volume, Tell tell)
        : createEngine_(std::move(createEngine)), tell_(std::move(tell)), volume_(volume) {}

    static void start(const std::shared_ptr<PlayingThread>& made) {
        auto parameter = std::make_unique<std::shared_ptr<PlayingThread>>(made);
        made->thread_ = KernelHandle(CreateThread(nullptr, 0, run, parameter.get(), 0, nullptr));
        if (!made->thread_) throw RuntimeError(kOutOfMemory);
        static_cast<void>(parameter.release());  // it is the thread's now
    }

    PlayState wanted() const { return switches_.wanted; }
    bool busy() const { return switches_.busy > 0; }

    void open(const std::wstring& file, unsigned opening) {
        const std::scoped_lock lock(lock_);
        switches_.wanted = PlayState::Playing;
        shown_ = {};
        ++switches_.busy;
        give([this, file, opening](Playback& playback) {
            opening_ = opening;
            playback.open(file);
            --switches_.busy;
        });
    }
    void want(PlayState state) {
        const std::scoped_lock lock(lock_);
        switches_.wanted = state;
        give([](Playback& playback) { playback.applyWanted(); });
    }
    void step(Playback::Step step) {
        const std::scoped_lock lock(lock_);
        ++switches_.busy;
        give([this, step](Playback& playback) {
            playback.step(step);
            --switches_.busy;
        });
    }
    void seek(double seconds) {
        const std::scoped_lock lock(lock_);
        shown_.position = std::clamp(seconds, 0.0, shown_.duration);
        give([seconds](Playback& playback) { playback.seek(seconds); });
    }
    void setVolume(int hundredthsOfDecibel) {
        volume_ = hundredthsOfDecibel;
        SetEvent(news_.get());
    }

    Shown shown() const {
        const std::scoped_lock lock(lock_);
        return shown_;
    }

    // Nobody wants anything of it any more: it closes its file and ends by itself.
    void leave() {
        switches_.left = true;
        SetEvent(left_.get());
    }
    bool ended(DWORD milliseconds) const {
        return WaitForSingleObject(thread_.get(), milliseconds) == WAIT_OBJECT_0;
    }

  private:
    static DWORD WINAPI run(void* parameter) {
        const std::unique_ptr<std::shared_ptr<PlayingThread>> self(
            static_cast<std::shared_ptr<PlayingThread>*>(parameter));
        const Apartment apartment;
        try {
            (*self)->work();
        } catch (const std::exception&) {
            (*self)->tell_((*self)->opening_, {MediaNotification::Kind::Error});
        }
        return 0;
    }

    void work() {
        std::optional<Turn> turn(std::in_place, left_.get());
        if (switches_.left) return;
        const std::unique_ptr<MediaEngine> engine = createEngine_();
        Playback playback(*engine, switches_,
                          {.filesOf = filesOf,
                           .troubleOf = [](const RuntimeError& e) { return playbackTrouble(e); },
                           .tell =
                               [&](const MediaNotification& what) {
                                   show(playback);  // whoever is told asks at once
                                   tell_(opening_, what);
                               },
                           .stopWanting = [this] { stopWanting(); }});
        for (int volume = kVolumeDefault; !switches_.left;) {
            if (volume != volume_) engine->setVolume(volume = volume_);
            const Order order = takeOrder();
            if (order) order(playback);
            playback.takeEvents();
            show(playback);
            turn.reset();
            if (!order) awaitNews(engine->eventHandle(), playback.sounds() ? kLook : INFINITE);
        }
    }

    // Under the lock.
    void give(Order order) {
        orders_.push_back(std::move(order));
        SetEvent(news_.get());
    }
    Order takeOrder() {
        const std::scoped_lock lock(lock_);
        if (orders_.empty()) return {};
        Order order = std::move(orders_.front());
        orders_.pop_front();
        return order;
    }
    void stopWanting() {
        const std::scoped_lock lock(lock_);
        if (orders_.empty()) switches_.wanted = PlayState::Stopped;
    }
    void show(const Playback& playback) {
        const std::scoped_lock lock(lock_);
        // An order that waits may be a seek, whose place is shown already.
        const double position = orders_.empty() ? playback.position() : shown_.position;
        shown_ = {playback.duration(), position, playback.details(), playback.error()};
    }
    void awaitNews(HANDLE engineEvent, DWORD milliseconds) const {
        const HANDLE handles[] = {left_.get(), news_.get(), engineEvent};
        MsgWaitForMultipleObjectsEx(engineEvent ? 3 : 2, handles, milliseconds, QS_ALLINPUT,
                                    MWMO_INPUTAVAILABLE);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }

    MediaEngineFactory createEngine_;
    Tell tell_;
    std::atomic<int> volume_;
    PlaybackSwitches switches_;
    KernelHandle news_{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    KernelHandle left_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    KernelHandle thread_;
    unsigned opening_ = 0;  // which file the notifications are of; the thread's own

    mutable std::mutex lock_;
    std::deque<Order> orders_;
    Shown shown_;
};

MediaPlayer::MediaPlayer(MediaEngineFactory createEngine)
    : createEngine_(std::move(createEngine)), self_(std::make_shared<MediaPlayer*>(this)) {
    prepareLoop();
}

MediaPlayer::~MediaPlayer() {
    *self_ = nullptr;
    guarded([this] { release(); });
}

void MediaPlayer::setFileName(const std::wstring& path) {
    ++opening_;
    fileName_ = path;
    if (path.empty() || (thread_ && thread_->busy())) leave();
    if (path.empty()) return;
    if (!thread_) {
        // Runs on the other thread, where nothing may be thrown: a notification for which there is
        // no room any more is dropped.
        const auto tell = [self = self_](unsigned opening, const MediaNotification& what) {
            try {
                postToLoop([self, opening, what] {
                    if (*self) (*self)->deliver(opening, what);
                });
            } catch (const std::exception&) {
            }
        };
        thread_ = std::make_shared<PlayingThread>(createEngine_, volume_, tell);
        PlayingThread::start(thread_);
    }
    thread_->open(path, opening_);
}

void MediaPlayer::leave() {
    if (!thread_) return;
    thread_->leave();
    left_.push_back(std::move(thread_));
    std::erase_if(left_, [](const auto& thread) { return thread->ended(0); });
}

// A plain wait: letting messages run here would let commands in that change what the caller is at.
void MediaPlayer::release() {
    setFileName(L"");
    const DWORD start = GetTickCount();
    for (const auto& thread : std::exchange(left_, {})) {
        const DWORD waited = GetTickCount() - start;
        thread->ended(waited < kLongestWait ? kLongestWait - waited : 0);
    }
}

void MediaPlayer::Play() {
    if (thread_)
        thread_->want(PlayState::Playing);
    else if (!fileName_.empty())
        setFileName(std::wstring(fileName_));
}

// Only what plays, or is about to, can be paused.
void MediaPlayer::Pause() {
    if (thread_ && thread_->wanted() == PlayState::Playing) thread_->want(PlayState::Paused);
}

// What is still being opened is given up; playing opens it anew.
void MediaPlayer::Stop() {
    if (!thread_) return;
    if (thread_->busy()) {
        ++opening_;
        leave();
    } else {
        thread_->want(PlayState::Stopped);
    }
}

void MediaPlayer::Previous() {
    if (thread_) thread_->step(Playback::Step::Previous);
}
void MediaPlayer::Next() {
    if (thread_) thread_->step(Playback::Step::Next);
}

MediaPlayer::Shown MediaPlayer::shown() const {
    return thread_ ? thread_->shown() : Shown();
}
double MediaPlayer::Duration() const {
    return shown().duration;
}
double MediaPlayer::CurrentPosition() const {
    return shown().position;
}
void MediaPlayer::setCurrentPosition(double seconds) {
    if (thread_) thread_->seek(seconds);
}

void MediaPlayer::setVolume(int hundredthsOfDecibel) {
    volume_ = std::clamp(hundredthsOfDecibel, kVolumeSilent, kVolumeFull);
    if (thread_) thread_->setVolume(volume_);
}

std::wstring MediaPlayer::ErrorDescription() const {
    return shown().error;
}
std::wstring MediaPlayer::GetMediaInfoString(int kind) const {
    const ClipDetails details = shown().details;
    return kind == kClipTitle ? details.title : kind == kClipAuthor ? details.author : L"";
}

// The handler is copied before it runs: it may destroy the player and itself with it.
void MediaPlayer::deliver(unsigned opening, const MediaNotification& notification) {
    if (opening != opening_) return;
    const auto call = [](auto handler, auto... arguments) {
        if (handler) handler(arguments...);
    };
    switch (notification.kind) {
        case MediaNotification::Kind::EndOfStream:
            call(EndOfStream, notification.first);
            break;
        case MediaNotification::Kind::NewStream:
            call(NewStream);
            break;
        case MediaNotification::Kind::PlayStateChange:
            call(PlayStateChange, notification.first, notification.second);
            break;
        case MediaNotification::Kind::Error:
            call(Error);
            break;
    }
}

}  // namespace tunovka
