#include "player/sound_graph.h"

#include <vfwmsgs.h>

#include <algorithm>
#include <utility>

namespace tunovka {
namespace {

constexpr double kUnitsPerSecond = 10'000'000;  // of a reference time

// Asked only after a failure, so that the program does not load the component at its start.
bool soundDeviceMissing() {
    const Library winmm(LoadLibraryW(L"winmm.dll"));
    using Count = UINT(WINAPI*)();
    const auto count = reinterpret_cast<Count>(
        reinterpret_cast<void*>(GetProcAddress(winmm.get(), "waveOutGetNumDevs")));
    return count && count() == 0;
}

}  // namespace

template <typename Interface>
ComPtr<Interface> SoundGraph::query(REFIID iid) const {
    ComPtr<Interface> found;
    graph_->QueryInterface(iid, found.receiveVoid());
    return found;
}

SoundGraph& SoundGraph::operator=(SoundGraph&& other) noexcept {
    if (this == &other) return *this;
    close();
    graph_ = std::move(other.graph_);
    control_ = std::move(other.control_);
    seeking_ = std::move(other.seeking_);
    audio_ = std::move(other.audio_);
    events_ = std::move(other.events_);
    return *this;
}

SoundGraph::~SoundGraph() {
    close();
}

// A graph must stand still before it goes; its reference goes last.
void SoundGraph::close() {
    if (events_) events_->SetNotifyWindow(0, 0, 0);
    if (control_) control_->Stop();
    events_.reset();
    audio_.reset();
    seeking_.reset();
    control_.reset();
    graph_.reset();
}

HRESULT SoundGraph::open(const std::wstring& file, SoundGraph& result) {
    SoundGraph made;
    HRESULT done = CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER,
                                    IID_IGraphBuilder, made.graph_.receiveVoid());
    if (FAILED(done)) return done;
    done = made.graph_->RenderFile(file.c_str(), nullptr);
    if (FAILED(done))
        return done == VFW_E_CANNOT_RENDER && soundDeviceMissing() ? VFW_E_NO_AUDIO_HARDWARE : done;

    made.control_ = made.query<IMediaControl>(IID_IMediaControl);
    made.seeking_ = made.query<IMediaSeeking>(IID_IMediaSeeking);
    made.audio_ = made.query<IBasicAudio>(IID_IBasicAudio);
    made.events_ = made.query<IMediaEventEx>(IID_IMediaEventEx);
    if (!made.control_ || !made.seeking_ || !made.audio_ || !made.events_) return E_NOINTERFACE;

    // Without a sound renderer in it the graph knows no volume.
    long volume = 0;
    if (FAILED(made.audio_->get_Volume(&volume)))
        return done == VFW_S_AUDIO_NOT_RENDERED ? VFW_E_NO_AUDIO_HARDWARE : VFW_E_CANNOT_RENDER;
    // A picture track must not open a window of its own.
    if (const auto video = made.query<IVideoWindow>(IID_IVideoWindow)) video->put_AutoShow(OAFALSE);
    result = std::move(made);
    return S_OK;
}

void SoundGraph::notify(HWND window, UINT message) {
    events_->SetNotifyWindow(reinterpret_cast<OAHWND>(window), static_cast<long>(message), 0);
}

std::optional<SoundGraph::Event> SoundGraph::takeEvent() {
    long code = 0;
    LONG_PTR first = 0, second = 0;
    while (events_ && events_->GetEvent(&code, &first, &second, 0) == S_OK) {
        events_->FreeEventParams(code, first, second);
        if (code == EC_COMPLETE) return Event{Event::Kind::Ended};
        if (code == EC_ERRORABORT || code == EC_STREAM_ERROR_STOPPED)
            return Event{Event::Kind::Failed, static_cast<HRESULT>(first)};
    }
    return std::nullopt;
}

bool SoundGraph::run() {
    return SUCCEEDED(control_->Run());
}

void SoundGraph::pause() {
    control_->Pause();
}

// Held at its start rather than left stopped: a stopped graph does not reliably move again from
// where it is sent meanwhile. Stopping it first makes it forget an end that it reached.
void SoundGraph::stop() {
    control_->Stop();
    control_->Pause();
    seek(0);
}

double SoundGraph::duration() const {
    LONGLONG length = 0;
    return SUCCEEDED(seeking_->GetDuration(&length)) ? length / kUnitsPerSecond : 0;
}

double SoundGraph::position() const {
    LONGLONG position = 0;
    return SUCCEEDED(seeking_->GetCurrentPosition(&position)) ? position / kUnitsPerSecond : 0;
}

void SoundGraph::seek(double seconds) {
    // An end that was reached before does not count behind the seek.
    while (takeEvent()) {
    }
    auto target = static_cast<LONGLONG>(std::clamp(seconds, 0.0, duration()) * kUnitsPerSecond);
    seeking_->SetPositions(&target, AM_SEEKING_AbsolutePositioning, nullptr,
                           AM_SEEKING_NoPositioning);
}

void SoundGraph::setVolume(int hundredthsOfDecibel) {
    audio_->put_Volume(hundredthsOfDecibel);
}

}  // namespace tunovka
