#pragma once

#include <windows.h>
// windows.h first: this one needs its types.
#include <dshow.h>

#include <optional>
#include <string>

#include "core/handle.h"
#include "core/loop.h"

namespace tunovka {

// One sound file in a filter graph of the system, or none.
class SoundGraph {
  public:
    SoundGraph() = default;
    SoundGraph(SoundGraph&&) = default;
    SoundGraph& operator=(SoundGraph&& other) noexcept;
    ~SoundGraph();

    // Builds the graph of a file, which may take long. A file without sound, and sound that no
    // device can play, are failures. Any thread on which COM is ready.
    static HRESULT open(const std::wstring& file, SoundGraph& graph);

    explicit operator bool() const { return static_cast<bool>(graph_); }

    // From now on the signal is raised whenever takeEvent() has something.
    void notify(const LoopSignal& signal);

    struct Event {
        enum class Kind { Ended, Failed } kind{};
        HRESULT error = S_OK;
    };
    // The next thing that happened, nullopt when nothing did.
    std::optional<Event> takeEvent();

    bool run();
    void pause();
    void stop();  // and back to the start

    double duration() const;  // seconds, 0 when it is not known
    double position() const;  // seconds
    void seek(double seconds);
    void setVolume(int hundredthsOfDecibel);

  private:
    template <typename Interface>
    ComPtr<Interface> query(REFIID iid) const;
    void close();

    ComPtr<IGraphBuilder> graph_;
    ComPtr<IMediaControl> control_;
    ComPtr<IMediaSeeking> seeking_;
    ComPtr<IBasicAudio> audio_;
    ComPtr<IMediaEventEx> events_;
    bool ended_ = false;  // played to its end since the last seek
};

}  // namespace tunovka
