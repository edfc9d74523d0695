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

bool underWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

// Calls a function for each pin of a filter that has the direction.
template <typename Visit>
void eachPin(IBaseFilter* filter, PIN_DIRECTION wanted, Visit visit) {
    ComPtr<IEnumPins> pins;
    if (FAILED(filter->EnumPins(pins.receive()))) return;
    ComPtr<IPin> pin;
    while (pins->Next(1, pin.receive(), nullptr) == S_OK) {
        PIN_DIRECTION direction = wanted;
        if (SUCCEEDED(pin->QueryDirection(&direction)) && direction == wanted) visit(pin.get());
    }
}

// A filter that reads the file and feeds the others from a thread of its own; all pins that are
// behind it let their data fall from here on.
ComPtr<IBaseFilter> flushBehindFeeder(IGraphBuilder* graph) {
    ComPtr<IBaseFilter> filter, feeder;
    ComPtr<IEnumFilters> filters;
    if (FAILED(graph->EnumFilters(filters.receive()))) return feeder;
    while (filters->Next(1, filter.receive(), nullptr) == S_OK) {
        eachPin(filter.get(), PINDIR_INPUT, [&](IPin* pin) {
            ComPtr<IPin> source;
            ComPtr<IAsyncReader> reader;
            if (FAILED(pin->ConnectedTo(source.receive()))) return;
            source->QueryInterface(IID_IAsyncReader, reader.receiveVoid());
            if (reader)
                feeder = ComPtr<IBaseFilter>::shared(filter.get());
            else
                pin->BeginFlush();
        });
    }
    return feeder;
}

DWORD WINAPI stopFilter(void* filter) {
    static_cast<IBaseFilter*>(filter)->Stop();
    return 0;
}

// Wine stops a decoder while the thread that feeds it still runs, and that thread then works in
// freed memory. So the feeder is stopped first and its thread joined, with nothing behind it that
// could hold it up. When that thread comes to the file's end at this very moment it misses being
// woken; a seek wakes it again.
void stopFeederFirst(IGraphBuilder* graph) {
    constexpr DWORD kPatience = 100;  // ms; stopping takes less than one
    const ComPtr<IBaseFilter> feeder = flushBehindFeeder(graph);
    if (!feeder) return;
    ComPtr<IMediaSeeking> output;
    eachPin(feeder.get(), PINDIR_OUTPUT, [&](IPin* pin) {
        if (!output) pin->QueryInterface(IID_IMediaSeeking, output.receiveVoid());
    });
    const KernelHandle thread(CreateThread(nullptr, 0, stopFilter, feeder.get(), 0, nullptr));
    while (thread && output && WaitForSingleObject(thread.get(), kPatience) == WAIT_TIMEOUT) {
        LONGLONG start = 0;
        output->SetPositions(&start, AM_SEEKING_AbsolutePositioning, nullptr,
                             AM_SEEKING_NoPositioning);
    }
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
    ended_ = std::exchange(other.ended_, false);
    return *this;
}

SoundGraph::~SoundGraph() {
    close();
}

// A graph must stand still before it goes; its reference goes last.
void SoundGraph::close() {
    if (events_) events_->SetNotifyWindow(0, 0, 0);
    if (graph_ && underWine()) stopFeederFirst(graph_.get());
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

void SoundGraph::notify(const LoopSignal& signal) {
    const LoopSignal::Address& address = signal.address();
    events_->SetNotifyWindow(reinterpret_cast<OAHWND>(address.window),
                             static_cast<long>(address.message), address.number);
}

std::optional<SoundGraph::Event> SoundGraph::takeEvent() {
    long code = 0;
    LONG_PTR first = 0, second = 0;
    while (events_ && events_->GetEvent(&code, &first, &second, 0) == S_OK) {
        events_->FreeEventParams(code, first, second);
        if (code == EC_COMPLETE) {
            ended_ = true;
            return Event{Event::Kind::Ended};
        }
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

// Held at its start rather than stopped: a stopped graph does not reliably move again from where
// it is sent meanwhile. Only a real stop makes it forget an end that it reached.
void SoundGraph::stop() {
    if (ended_) control_->Stop();
    ended_ = false;
    control_->Pause();
    seek(0);
}

double SoundGraph::duration() const {
    LONGLONG length = 0;
    return SUCCEEDED(seeking_->GetDuration(&length)) ? static_cast<double>(length) / kUnitsPerSecond
                                                     : 0;
}

double SoundGraph::position() const {
    LONGLONG position = 0;
    return SUCCEEDED(seeking_->GetCurrentPosition(&position))
               ? static_cast<double>(position) / kUnitsPerSecond
               : 0;
}

void SoundGraph::seek(double seconds) {
    // An end that was reached before does not count behind the seek.
    while (takeEvent()) {
    }
    ended_ = false;
    auto target = static_cast<LONGLONG>(std::clamp(seconds, 0.0, duration()) * kUnitsPerSecond);
    seeking_->SetPositions(&target, AM_SEEKING_AbsolutePositioning, nullptr,
                           AM_SEEKING_NoPositioning);
}

void SoundGraph::setVolume(int hundredthsOfDecibel) {
    audio_->put_Volume(hundredthsOfDecibel);
}

}  // namespace tunovka
