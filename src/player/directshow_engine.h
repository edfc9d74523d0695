#pragma once

#include <windows.h>
// windows.h first: this one needs its types.
#include <dshow.h>

#include <deque>
#include <optional>
#include <string>

#include "core/handle.h"
#include "player/media_engine.h"
#include "player/sound_file.h"
#include "player/wine_faults.h"

namespace tunovka {

// One sound file in a filter graph of the system, or none.
class SoundGraph {
  public:
    SoundGraph() = default;
    ~SoundGraph();
    SoundGraph(const SoundGraph&) = delete;
    SoundGraph& operator=(const SoundGraph&) = delete;

    // Builds the graph of a file. Sound that no device can play is a failure.
    HRESULT build(const std::wstring& file);

    ComPtr<IGraphBuilder> builder;
    ComPtr<IMediaControl> control;
    ComPtr<IMediaSeeking> seeking;
    ComPtr<IBasicAudio> audio;
    ComPtr<IMediaEvent> events;

  private:
    WineFeeder feeder_;
};

// Plays through the system's filter graphs.
class DirectShowEngine final : public MediaEngine {
  public:
    std::optional<PlaybackTrouble> open(const std::wstring& file) override;
    bool isOpen() const override { return graph_ != nullptr; }
    void close() override;
    void play() override;
    void pause() override;
    void hold() override { graph_->control->Pause(); }
    double duration() const override;
    double position() const override;
    void seek(double seconds) override;
    void setVolume(int hundredthsOfDecibel) override;
    ClipDetails details() const override { return file_.details; }
    std::optional<EngineEvent> takeEvent() override;
    void* eventHandle() const override;

  private:
    double graphLength() const;
    double graphPosition() const;

    std::unique_ptr<SoundGraph> graph_;  // of the open file
    SoundFile file_;
    double shift_ = 0;  // seconds by which the position is ahead of the graph's own
    int volume_ = kVolumeDefault;
    std::deque<EngineEvent> observed_;
};

}  // namespace tunovka
