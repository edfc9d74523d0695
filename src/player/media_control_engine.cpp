#include "player/media_control_engine.h"

#include <algorithm>
#include <utility>

#include "player/playback_errors.h"

namespace tunovka {
namespace {

constexpr wchar_t kClassName[] = L"MediaPlayer.MediaPlayer.1";

// States as the control counts them.
enum ControlPlayState : long { kStopped = 0, kPaused = 1, kPlaying = 2, kClosed = 8 };
constexpr long kOpenStateOpen = 6;

}  // namespace

std::unique_ptr<MediaEngine> MediaControlEngine::create(MediaListener listener) {
    std::unique_ptr<MediaControlEngine> engine(new MediaControlEngine(std::move(listener)));
    if (!engine->attach()) return nullptr;
    return engine;
}

MediaControlEngine::MediaControlEngine(MediaListener listener) : reporter_(std::move(listener)) {}

bool MediaControlEngine::attach() {
    CLSID kind;
    if (FAILED(CLSIDFromProgID(kClassName, &kind)) || !host_.create(kind)) return false;
    ComPtr<IDispatch> members;
    host_.object()->QueryInterface(IID_IDispatch, members.receiveVoid());
    control_ = LateBound(std::move(members));
    if (!control_.has(L"FileName") || !control_.has(L"Play")) return false;
    control_.put(L"AutoStart", Variant(true));
    return events_.connect(host_.object(), kind, [this](const auto& name, const auto& arguments) {
        handleEvent(name, arguments);
    });
}

void MediaControlEngine::handleEvent(const std::wstring& name, const std::vector<long>& arguments) {
    const auto argument = [&](std::size_t at) { return at < arguments.size() ? arguments[at] : 0; };
    if (name == L"NewStream") {
        reporter_.clipOpened();
    } else if (name == L"OpenStateChange") {
        if (argument(1) == kOpenStateOpen)
            reporter_.clipOpened();
        else
            reporter_.clipLeft();
    } else if (name == L"PlayStateChange") {
        playStateIs(argument(1));
    } else if (name == L"EndOfStream") {
        reporter_.ended(static_cast<int>(argument(0)));
    } else if (name == L"Error") {
        fail(control_.get(L"ErrorDescription").toText());
    }
}

// Waiting for data and skipping are no states of their own.
void MediaControlEngine::playStateIs(long state) {
    if (state == kPlaying) {
        opening_ = false;
        if (stopped_)
            control_.call(L"Stop");  // asked while the file was opening
        else
            reporter_.stateIs(PlayState::Playing);
    } else if (state == kPaused) {
        reporter_.stateIs(PlayState::Paused);
    } else if (state == kStopped || state == kClosed) {
        reporter_.stateIs(PlayState::Stopped);
    }
}

void MediaControlEngine::fail(std::wstring description) {
    opening_ = false;
    failed_ = true;
    if (description.empty())
        description = playbackErrorText(static_cast<HRESULT>(control_.get(L"ErrorCode").toLong()));
    error_ = std::move(description);
    reporter_.failed();
}

void MediaControlEngine::forget() {
    reporter_.reset();
    file_.clear();
    error_.clear();
    opening_ = failed_ = stopped_ = false;
}

void MediaControlEngine::open(const std::wstring& file) {
    forget();
    file_ = file;
    opening_ = true;
    if (FAILED(control_.put(L"FileName", Variant(file)))) fail(control_.failure());
}

void MediaControlEngine::close() {
    forget();
    control_.call(L"Stop");
    control_.put(L"FileName", Variant(std::wstring()));
}

void MediaControlEngine::play() {
    if (file_.empty()) return;
    stopped_ = false;
    if (failed_) return open(std::wstring(file_));
    if (FAILED(control_.call(L"Play")) && !opening_) fail(control_.failure());
}

void MediaControlEngine::pause() {
    if (opening_ || reporter_.state() == PlayState::Playing) control_.call(L"Pause");
}

void MediaControlEngine::stop() {
    stopped_ = true;
    if (!file_.empty()) control_.call(L"Stop");
}

void MediaControlEngine::previous() {
    if (!file_.empty()) control_.call(L"Previous");
}

void MediaControlEngine::next() {
    if (!file_.empty()) control_.call(L"Next");
}

// The control says -1 when it does not know.
double MediaControlEngine::duration() const {
    return file_.empty() ? 0 : std::max(control_.get(L"Duration").toDouble(), 0.0);
}

double MediaControlEngine::position() const {
    return file_.empty() ? 0 : std::max(control_.get(L"CurrentPosition").toDouble(), 0.0);
}

void MediaControlEngine::setPosition(double seconds) {
    if (!file_.empty()) control_.put(L"CurrentPosition", Variant(seconds));
}

void MediaControlEngine::setVolume(int hundredthsOfDecibel) {
    control_.put(L"Volume", Variant(static_cast<long>(hundredthsOfDecibel)));
}

std::wstring MediaControlEngine::mediaInfo(int kind) const {
    if (file_.empty()) return {};
    return control_.call(L"GetMediaInfoString", Variant(static_cast<long>(kind))).toText();
}

}  // namespace tunovka
