#include <windows.h>
// windows.h first: this one needs its types.
#include <dshow.h>
#include <vfwmsgs.h>

#include <algorithm>
#include <cmath>

#include "core/ansi.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "core/late_function.h"
#include "core/ole_windows.h"
#include "player/media_engine.h"
#include "player/sound_file.h"
#include "player/wine_faults.h"

namespace tunovka {
namespace {

constexpr double kUnitsPerSecond = 10'000'000;  // of a reference time

bool soundDeviceMissing() {
    static const LateFunction<UINT WINAPI()> count(L"winmm.dll", "waveOutGetNumDevs");
    return count && count() == 0;
}

// Plays through the system's filter graphs, one for each file.
class FilterGraph final : public MediaEngine {
  public:
    ~FilterGraph() override { FilterGraph::close(); }

    std::optional<PlaybackTrouble> open(const std::wstring& path) override {
        const auto read = [&path](std::uint64_t at, std::size_t count) {
            return FileSystemObject::readPart(path, at, count);
        };
        try {
            file_ = SoundFile::look(FileSystemObject::details(path).size, read, fromAnsi);
        } catch (const RuntimeError& error) {
            return playbackTrouble(error);
        }
        if (!file_.isSound) return playbackTrouble(VFW_E_INVALID_FILE_FORMAT);
        if (const HRESULT done = build(path); FAILED(done)) return playbackTrouble(done);
        // Where the system itself reckons with the variable rate there is nothing to put right.
        if (std::abs(file_.rate.seconds - graphLength()) < 1) file_.rate = {};
        FilterGraph::setVolume(volume_);
        observe({EngineEvent::Kind::Opened});
        return std::nullopt;
    }

    // A graph must stand still before it goes.
    void close() override {
        const WineTurn turn;
        if (graph_.control) {
            feeder_.stop(graph_.control.get());
            graph_.control->Stop();
        }
        feeder_ = {};  // no filter may outlive its graph
        graph_ = {};
        observed_.clear();
        shift_ = 0;
    }

    void play() override {
        if (SUCCEEDED(graph_.control->Run()))
            observe({EngineEvent::Kind::StateIs, PlayState::Playing});
        else
            observeFailure(playbackTrouble(VFW_E_NO_AUDIO_HARDWARE));
    }

    void pause() override {
        graph_.control->Pause();
        observe({EngineEvent::Kind::StateIs, PlayState::Paused});
    }

    double duration() const override {
        return file_.rate.seconds > 0 ? file_.rate.seconds : graphLength();
    }

    double position() const override {
        return std::clamp(asked(&IMediaSeeking::GetCurrentPosition) + shift_, 0.0,
                          std::max(duration(), 0.0));
    }

    // A graph that takes every second for as many bytes is sent to where that second's bytes are.
    // Where it has not come to run yet, its start and the seek could wait for each other.
    void seek(double seconds) override {
        seconds = std::clamp(seconds, 0.0, duration());
        double place = seconds;
        if (file_.rate.seconds > 0) place = file_.rate.shareAt(seconds) * graphLength();
        shift_ = seconds - place;
        auto target = static_cast<LONGLONG>(place * kUnitsPerSecond);
        OAFilterState state = State_Stopped;
        graph_.control->GetState(1000 /* ms */, &state);
        graph_.seeking->SetPositions(&target, AM_SEEKING_AbsolutePositioning, nullptr,
                                     AM_SEEKING_NoPositioning);
    }

    void setVolume(int hundredthsOfDecibel) override {
        volume_ = hundredthsOfDecibel;
        if (graph_.audio) graph_.audio->put_Volume(volume_);
    }

    ClipDetails details() const override { return file_.details; }

    void* eventHandle() const override {
        OAEVENT event = 0;
        if (graph_.events) graph_.events->GetEventHandle(&event);
        return reinterpret_cast<void*>(event);
    }

  protected:
    void look() override {
        long code = 0;
        LONG_PTR first = 0, second = 0;
        while (graph_.events && graph_.events->GetEvent(&code, &first, &second, 0) == S_OK) {
            graph_.events->FreeEventParams(code, first, second);
            if (code == EC_COMPLETE) observe({EngineEvent::Kind::Ended});
            if (code == EC_ERRORABORT || code == EC_STREAM_ERROR_STOPPED)
                observeFailure(playbackTrouble(static_cast<HRESULT>(first)));
        }
    }

  private:
    // Builds the graph of a file. Sound that no device can play is a failure.
    HRESULT build(const std::wstring& file) {
        const WineTurn turn;
        ComPtr<IGraphBuilder> builder;
        HRESULT done = CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER,
                                        IID_IGraphBuilder, builder.receiveVoid());
        if (FAILED(done)) return done;
        done = builder->RenderFile(file.c_str(), nullptr);
        if (FAILED(done))
            return done == VFW_E_CANNOT_RENDER && soundDeviceMissing() ? VFW_E_NO_AUDIO_HARDWARE
                                                                       : done;
        feeder_.remember(builder.get());
        graph_.control = builder.as<IMediaControl>();
        graph_.seeking = builder.as<IMediaSeeking>();
        builder->QueryInterface(IID_IBasicAudio, graph_.audio.receiveVoid());
        builder->QueryInterface(IID_IMediaEvent, graph_.events.receiveVoid());
        if (!graph_.control || !graph_.seeking || !graph_.audio || !graph_.events)
            return E_NOINTERFACE;
        // Without a sound renderer in it the graph knows no volume.
        long volume = 0;
        if (FAILED(graph_.audio->get_Volume(&volume)))
            return done == VFW_S_AUDIO_NOT_RENDERED ? VFW_E_NO_AUDIO_HARDWARE
                                                    : VFW_E_UNSUPPORTED_AUDIO;
        // A picture track must not open a window of its own.
        ComPtr<IVideoWindow> video;
        builder->QueryInterface(IID_IVideoWindow, video.receiveVoid());
        if (video) video->put_AutoShow(OAFALSE);
        return S_OK;
    }

    // A time that the graph knows, in seconds, or 0.
    double asked(HRESULT (STDMETHODCALLTYPE IMediaSeeking::*question)(LONGLONG*)) const {
        LONGLONG units = 0;
        if (!graph_.seeking || FAILED((graph_.seeking.get()->*question)(&units))) return 0;
        return static_cast<double>(units) / kUnitsPerSecond;
    }
    double graphLength() const { return asked(&IMediaSeeking::GetDuration); }

    struct Graph {
        ComPtr<IMediaControl> control;
        ComPtr<IMediaSeeking> seeking;
        ComPtr<IBasicAudio> audio;
        ComPtr<IMediaEvent> events;
    };
    Graph graph_;  // of the open file
    WineFeeder feeder_;
    SoundFile file_;
    double shift_ = 0;  // seconds by which the position is ahead of the graph's own
    int volume_ = kVolumeDefault;
};

}  // namespace

std::unique_ptr<MediaEngine> createFilterGraph() {
    return std::make_unique<FilterGraph>();
}

}  // namespace tunovka
