#include "player/wine_faults.h"

#include <utility>

#include "core/late_function.h"

namespace tunovka {
namespace {

// Calls a function for each pin of a filter that has the direction.
template <typename Visit>
void eachPin(IBaseFilter* filter, PIN_DIRECTION wanted, Visit visit) {
    ComPtr<IEnumPins> pins;
    if (FAILED(filter->EnumPins(pins.receive()))) return;
    ComPtr<IPin> pin;
    while (pins->Next(1, pin.receive(), nullptr) == S_OK) {
        PIN_DIRECTION direction = wanted;
        if (SUCCEEDED(pin->QueryDirection(&direction)) && direction == wanted) visit(pin);
    }
}

DWORD WINAPI stopFilter(void* filter) {
    static_cast<IBaseFilter*>(filter)->Stop();
    return 0;
}

// nullptr on Windows.
HANDLE soundDevice() {
    static const KernelHandle only(underWine() ? CreateSemaphoreW(nullptr, 1, 1, nullptr)
                                               : nullptr);
    return only.get();
}

}  // namespace

// A busy machine builds a graph in a few seconds; a file may never open.
WineTurn::WineTurn() : Turn(soundDevice(), 60'000) {}

void WineFeeder::remember(IGraphBuilder* graph) {
    ComPtr<IEnumFilters> filters;
    if (!underWine() || FAILED(graph->EnumFilters(filters.receive()))) return;
    ComPtr<IBaseFilter> filter;
    while (filters->Next(1, filter.receive(), nullptr) == S_OK) {
        eachPin(filter.get(), PINDIR_INPUT, [&](ComPtr<IPin>& pin) {
            ComPtr<IPin> source;
            if (FAILED(pin->ConnectedTo(source.receive()))) return;
            if (source.as<IAsyncReader>())
                feeder_ = ComPtr<IBaseFilter>::shared(filter.get());
            else
                behind_.push_back(std::move(pin));
        });
    }
    if (!feeder_) return;
    eachPin(feeder_.get(), PINDIR_OUTPUT, [&](ComPtr<IPin>& pin) {
        if (!output_) output_ = pin.as<IMediaSeeking>();
    });
}

void WineFeeder::stop(IMediaControl* graph) {
    constexpr DWORD kLongStop = 100;  // ms; it takes less than one
    OAFilterState state = State_Stopped;
    if (feeder_) graph->GetState(0, &state);
    if (state == State_Stopped) return;  // it was never set going
    // A start still under way would set the feeder going once more: pausing waits for its end.
    graph->Pause();
    // Nothing may hold the feeder's thread up: what it hands on is dropped from here on.
    for (const auto& pin : behind_) pin->BeginFlush();
    const KernelHandle thread(CreateThread(nullptr, 0, stopFilter, feeder_.get(), 0, nullptr));
    if (!thread) stopFilter(feeder_.get());
    // A thread that is just coming to the file's end misses being woken; a seek wakes it.
    while (thread && WaitForSingleObject(thread.get(), kLongStop) == WAIT_TIMEOUT) {
        LONGLONG start = 0;
        if (output_)
            output_->SetPositions(&start, AM_SEEKING_AbsolutePositioning, nullptr,
                                  AM_SEEKING_NoPositioning);
    }
}

}  // namespace tunovka
