#include "player/media_player.h"

#include <windows.h>
// windows.h first: this one needs its types.
#include <algorithm>
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
#include "core/ole_windows.h"
#include "core/text.h"
#include "player/turn.h"
#include "playlist/line_grammar.h"

namespace tunovka {
namespace {

constexpr DWORD kLook = 100;          // ms between two looks at the position while it moves
constexpr DWORD kLongestWait = 1000;  // ms for a thread that is busy with a file

// Of many files that are set in quick succession only the last one is worth the work: they are
// opened in turn. One that takes all too long does not hold the others up.
HANDLE opening() {
    static const KernelHandle only(CreateSemaphoreW(nullptr, 1, 1, nullptr));
    return only.get();
}

}  // namespace

std::vector<ListedFile> filesOf(const std::wstring& file) {
    if (!MultiMedialny::isPlaylistName(lowerCased(file))) return {{file, {}}};
    return listedFiles(fromAnsi(FileSystemObject::readAll(file)), playlistFolder(file));
}

std::unique_ptr<MediaEngine> createMediaEngine() {
    auto control = createMediaControl();
    return control ? std::move(control) : createFilterGraph();
}

// The thread of one file, with its engine and its message loop. It is given orders.
class MediaPlayer::PlayingThread : public std::enable_shared_from_this<PlayingThread> {
  public:
    using Order = std::function<void(Playback&)>;

    PlayingThread(std::shared_ptr<MediaPlayer*> player, std::wstring file)
        : player_(std::move(player)),
          createEngine_((*player_)->createEngine_),
          file_(std::move(file)) {
        setVolume((*player_)->volume_);
    }

    void start() {
        auto self = std::make_unique<std::shared_ptr<PlayingThread>>(shared_from_this());
        thread_ = KernelHandle(CreateThread(nullptr, 0, run, self.get(), 0, nullptr));
        if (!thread_) throw RuntimeError(kOutOfMemory);
        static_cast<void>(self.release());  // it is the thread's now
    }

    void give(Order order) {
        const std::scoped_lock lock(lock_);
        orders_.push_back(std::move(order));
        SetEvent(news_.get());
    }
    void setVolume(int volume) {
        give([volume](Playback& playback) { playback.setVolume(volume); });
    }
    void seek(double seconds) {
        give([seconds](Playback& playback) { playback.seek(seconds); });
        const std::scoped_lock lock(lock_);
        shown_.position = std::clamp(seconds, 0.0, shown_.duration);  // known at once
    }
    Shown shown() const {
        const std::scoped_lock lock(lock_);
        return shown_;
    }

    // Nobody wants anything of it any more: it closes its file and ends by itself.
    void leave() { SetEvent(left_.get()); }
    bool ended(DWORD milliseconds) const { return isSet(thread_.get(), milliseconds); }

  private:
    static bool isSet(HANDLE object, DWORD milliseconds = 0) {
        return WaitForSingleObject(object, milliseconds) == WAIT_OBJECT_0;
    }

    static DWORD WINAPI run(void* parameter) {
        const std::unique_ptr<std::shared_ptr<PlayingThread>> self(
            static_cast<std::shared_ptr<PlayingThread>*>(parameter));
        const HRESULT apartment = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        try {
            (*self)->work();
        } catch (const std::exception&) {
            (*self)->tell({MediaNotification::Kind::Error});
        }
        if (SUCCEEDED(apartment)) CoUninitialize();
        return 0;
    }

    void work() {
        std::optional<Turn> turn(std::in_place, opening(), kLongestWait, left_.get());
        if (isSet(left_.get())) return;
        const std::unique_ptr<MediaEngine> engine = createEngine_();
        Playback playback(
            *engine, file_, [this] { return filesOf(file_); },
            [&](const MediaNotification& what) {
                show(playback);  // whoever is told asks at once
                tell(what);
            });
        while (!isSet(left_.get())) {
            const Order order = takeOrder();
            if (order) order(playback);
            const bool busy = playback.proceed() || order;
            show(playback);
            if (busy) continue;
            turn.reset();
            awaitNews(engine->eventHandle(), playback.sounds() ? kLook : INFINITE);
        }
    }

    Order takeOrder() {
        const std::scoped_lock lock(lock_);
        if (orders_.empty()) return {};
        Order order = std::move(orders_.front());
        orders_.pop_front();
        return order;
    }
    void show(const Playback& playback) {
        const std::scoped_lock lock(lock_);
        // An order that waits may be a seek, whose place is what is shown.
        const double position = orders_.empty() ? playback.position() : shown_.position;
        shown_ = {playback.duration(), position, playback.details(), playback.error()};
    }
    // A notification for which there is no memory any more is dropped.
    void tell(const MediaNotification& what) {
        try {
            postToLoop([player = player_, self = shared_from_this(), what] {
                if (!*player || (*player)->thread_ != self) return;
                // Copied before it runs: it may destroy the player and itself with it.
                if (const auto handler = (*player)->onNotification) handler(what);
            });
        } catch (const std::exception&) {
        }
    }
    void awaitNews(HANDLE engineEvent, DWORD milliseconds) const {
        const HANDLE handles[] = {left_.get(), news_.get(), engineEvent};
        MsgWaitForMultipleObjectsEx(engineEvent ? 3 : 2, handles, milliseconds, QS_ALLINPUT,
                                    MWMO_INPUTAVAILABLE);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }

    const std::shared_ptr<MediaPlayer*> player_;  // followed on the thread of the windows alone
    const MediaEngineFactory createEngine_;
    const std::wstring file_;
    KernelHandle news_{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    KernelHandle left_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    KernelHandle thread_;

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

void MediaPlayer::setFileName(std::wstring path) {
    std::erase_if(left_, [](const auto& thread) { return thread->ended(0); });
    if (thread_) {
        thread_->leave();
        left_.push_back(std::exchange(thread_, nullptr));
    }
    fileName_.clear();
    if (path.empty()) return;
    auto thread = std::make_shared<PlayingThread>(self_, path);
    thread->start();
    thread_ = std::move(thread);
    fileName_ = std::move(path);
}

std::function<void()> MediaPlayer::startRelease() {
    setFileName(L"");
    return [threads = std::exchange(left_, {}), start = GetTickCount()] {
        for (const auto& thread : threads) {
            const DWORD waited = GetTickCount() - start;
            thread->ended(waited < kLongestWait ? kLongestWait - waited : 0);
        }
    };
}

void MediaPlayer::want(PlayState state) {
    if (thread_) thread_->give([state](Playback& playback) { playback.want(state); });
}
void MediaPlayer::step(int way) {
    if (thread_) thread_->give([way](Playback& playback) { playback.step(way); });
}
void MediaPlayer::setCurrentPosition(double seconds) {
    if (thread_) thread_->seek(seconds);
}
void MediaPlayer::setVolume(int hundredthsOfDecibel) {
    volume_ = std::clamp(hundredthsOfDecibel, kVolumeSilent, kVolumeFull);
    if (thread_) thread_->setVolume(volume_);
}

MediaPlayer::Shown MediaPlayer::shown() const {
    return thread_ ? thread_->shown() : Shown();
}

}  // namespace tunovka
