#include "player/directshow_engine.h"

#include <vfwmsgs.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/errors.h"
#include "core/file_system.h"
#include "player/playback_errors.h"

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

HRESULT SoundGraph::build(const std::wstring& file) {
    const WineTurn turn;
    HRESULT done = CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER,
                                    IID_IGraphBuilder, builder.receiveVoid());
    if (FAILED(done)) return done;
    done = builder->RenderFile(file.c_str(), nullptr);
    if (FAILED(done))
        return done == VFW_E_CANNOT_RENDER && soundDeviceMissing() ? VFW_E_NO_AUDIO_HARDWARE : done;
    feeder_.remember(builder.get());

    control = builder.as<IMediaControl>();
    seeking = builder.as<IMediaSeeking>();
    builder->QueryInterface(IID_IBasicAudio, audio.receiveVoid());
    builder->QueryInterface(IID_IMediaEvent, events.receiveVoid());
    if (!control || !seeking || !audio || !events) return E_NOINTERFACE;

    // Without a sound renderer in it the graph knows no volume.
    long volume = 0;
    if (FAILED(audio->get_Volume(&volume)))
        return done == VFW_S_AUDIO_NOT_RENDERED ? VFW_E_NO_AUDIO_HARDWARE : VFW_E_CANNOT_RENDER;
    // A picture track must not open a window of its own.
    ComPtr<IVideoWindow> video;
    builder->QueryInterface(IID_IVideoWindow, video.receiveVoid());
    if (video) video->put_AutoShow(OAFALSE);
    return S_OK;
}

// A graph must stand still before it goes; its own reference goes last.
SoundGraph::~SoundGraph() {
    const WineTurn turn;
    if (control) {
        feeder_.stop(control.get());
        control->Stop();
    }
    feeder_ = {};  // no filter may outlive its graph
    events.reset();
    audio.reset();
    seeking.reset();
    control.reset();
    builder.reset();
}

std::optional<PlaybackTrouble> DirectShowEngine::open(const std::wstring& path) {
    SoundFile file;
    try {
        if (!FileSystemObject::FileExists(path)) throw RuntimeError(kFileNotFound);
        file = SoundFile::look(path);
    } catch (const RuntimeError& error) {
        return playbackTrouble(error);
    }
    if (!file.isSound) return playbackTrouble(VFW_E_INVALID_FILE_FORMAT);
    auto graph = std::make_unique<SoundGraph>();
    if (const HRESULT done = graph->build(path); FAILED(done)) return playbackTrouble(done);

    close();
    graph_ = std::move(graph);
    file_ = std::move(file);
    // Where the system itself reckons with the variable rate there is nothing to put right.
    if (std::abs(file_.rate.seconds - graphLength()) < 1) file_.rate = {};
    setVolume(volume_);
    observed_.push_back({EngineEvent::Kind::Opened});
    return std::nullopt;
}

void DirectShowEngine::close() {
    graph_.reset();
    observed_.clear();
    shift_ = 0;
}

void DirectShowEngine::play() {
    if (SUCCEEDED(graph_->control->Run()))
        observed_.push_back({EngineEvent::Kind::StateIs, PlayState::Playing});
    else
        observed_.push_back({.kind = EngineEvent::Kind::Failed,
                             .trouble = playbackTrouble(VFW_E_NO_AUDIO_HARDWARE)});
}

void DirectShowEngine::pause() {
    graph_->control->Pause();
    observed_.push_back({EngineEvent::Kind::StateIs, PlayState::Paused});
}

double DirectShowEngine::graphLength() const {
    LONGLONG length = 0;
    if (!graph_ || FAILED(graph_->seeking->GetDuration(&length))) return 0;
    return static_cast<double>(length) / kUnitsPerSecond;
}

double DirectShowEngine::graphPosition() const {
    LONGLONG position = 0;
    if (!graph_ || FAILED(graph_->seeking->GetCurrentPosition(&position))) return 0;
    return static_cast<double>(position) / kUnitsPerSecond;
}

double DirectShowEngine::duration() const {
    return graph_ && file_.rate.seconds > 0 ? file_.rate.seconds : graphLength();
}

double DirectShowEngine::position() const {
    return std::clamp(graphPosition() + shift_, 0.0, std::max(duration(), 0.0));
}

// A graph that takes every second for as many bytes is sent to where the bytes of that second are.
void DirectShowEngine::seek(double seconds) {
    seconds = std::clamp(seconds, 0.0, duration());
    double place = seconds;
    if (file_.rate.seconds > 0) place = file_.rate.shareAt(seconds) * graphLength();
    shift_ = seconds - place;
    auto target = static_cast<LONGLONG>(place * kUnitsPerSecond);
    graph_->seeking->SetPositions(&target, AM_SEEKING_AbsolutePositioning, nullptr,
                                  AM_SEEKING_NoPositioning);
}

void DirectShowEngine::setVolume(int hundredthsOfDecibel) {
    volume_ = hundredthsOfDecibel;
    if (graph_) graph_->audio->put_Volume(volume_);
}

std::optional<EngineEvent> DirectShowEngine::takeEvent() {
    if (!observed_.empty()) {
        EngineEvent event = std::move(observed_.front());
        observed_.pop_front();
        return event;
    }
    long code = 0;
    LONG_PTR first = 0, second = 0;
    while (graph_ && graph_->events->GetEvent(&code, &first, &second, 0) == S_OK) {
        graph_->events->FreeEventParams(code, first, second);
        if (code == EC_COMPLETE) return EngineEvent{EngineEvent::Kind::Ended};
        if (code == EC_ERRORABORT || code == EC_STREAM_ERROR_STOPPED)
            return EngineEvent{.kind = EngineEvent::Kind::Failed,
                               .trouble = playbackTrouble(static_cast<HRESULT>(first))};
    }
    return std::nullopt;
}

void* DirectShowEngine::eventHandle() const {
    OAEVENT event = 0;
    if (graph_) graph_->events->GetEventHandle(&event);
    return reinterpret_cast<void*>(event);
}

}  // namespace tunovka
