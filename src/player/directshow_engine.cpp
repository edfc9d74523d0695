#include "player/directshow_engine.h"

#include <utility>

#include "player/playback_errors.h"

namespace tunovka {

DirectShowEngine::DirectShowEngine(MediaListener listener)
    : reporter_(std::move(listener)),
      opened_([this](std::uintptr_t number) { takeOpening(number); }),
      graphEvent_([this](std::uintptr_t) { takeGraphEvents(); }),
      opener_(opened_) {}

void DirectShowEngine::takeOpening(std::uintptr_t number) {
    const auto opening = opener_.take(number);
    if (!opening) return;
    if (opening->graph)
        entryOpened(*opening);
    else
        entryNotOpened(*opening);
}

void DirectShowEngine::open(const std::wstring& file) {
    forget();
    file_ = file;
    wanted_ = PlayState::Playing;
    openEntry(Step::First);
}

void DirectShowEngine::close() {
    forget();
    opener_.awaitCancelled();
}

void DirectShowEngine::forget() {
    opener_.cancel();
    reporter_.reset();
    graph_ = SoundGraph();
    file_.clear();
    list_ = {};
    details_ = {};
    error_.clear();
    wanted_ = PlayState::Stopped;
    waiting_.clear();
    clipEnded_ = listEnded_ = false;
}

void DirectShowEngine::openEntry(Step step) {
    opener_.start(file_, list_, step);
}

// The former clip stays until the next one is there: when none can be opened, it is still the one.
void DirectShowEngine::entryOpened(Opening& opening) {
    graph_ = std::move(opening.graph);
    graph_.notify(graphEvent_);
    graph_.setVolume(volume_);
    list_ = opening.list;
    details_ = std::move(opening.details);
    clipEnded_ = listEnded_ = false;
    reporter_.clipLeft();
    reporter_.clipOpened();
    applyWanted();
    if (!waiting_.empty()) {
        const Step next = waiting_.front();
        waiting_.pop_front();
        step(next);
    }
}

void DirectShowEngine::entryNotOpened(const Opening& opening) {
    waiting_.clear();
    if (!graph_) return fail(opening.error);
    if (!clipEnded_) return applyWanted();
    if (opening.step == Step::Previous && list_.stepper.canStep(Step::Next))
        return openEntry(Step::Next);
    listEnded();
}

void DirectShowEngine::takeGraphEvents() {
    while (const auto event = graph_.takeEvent()) {
        if (event->kind == SoundGraph::Event::Kind::Failed && list_.stepper.count() < 2)
            return fail(playbackErrorText(event->error));
        clipEnded();
    }
}

void DirectShowEngine::clipEnded() {
    clipEnded_ = true;
    if (opener_.busy()) return;  // a step is under way already
    if (list_.stepper.canStep(Step::Next))
        openEntry(Step::Next);
    else
        listEnded();
}

void DirectShowEngine::listEnded() {
    graph_.stop();
    wanted_ = PlayState::Stopped;
    clipEnded_ = false;
    listEnded_ = true;
    reporter_.ended(kPlayedToEnd);
}

void DirectShowEngine::applyWanted() {
    switch (wanted_) {
        case PlayState::Playing:
            if (!graph_.run()) return fail(playbackErrorText(VFW_E_NO_AUDIO_HARDWARE));
            break;
        case PlayState::Paused:
            graph_.pause();
            break;
        case PlayState::Stopped:
            graph_.stop();
            break;
    }
    reporter_.stateIs(wanted_);
}

void DirectShowEngine::fail(const std::wstring& error) {
    graph_ = SoundGraph();
    wanted_ = PlayState::Stopped;
    error_ = error;
    reporter_.failed();
}

void DirectShowEngine::play() {
    if (file_.empty()) return;
    wanted_ = PlayState::Playing;
    if (opener_.busy()) return;
    if (!graph_) {
        open(std::wstring(file_));
    } else if (listEnded_ && list_.stepper.count() > 1) {
        openEntry(Step::First);
    } else {
        listEnded_ = false;
        applyWanted();
    }
}

// Only what plays, or is about to, can be paused.
void DirectShowEngine::pause() {
    if (wanted_ != PlayState::Playing) return;
    wanted_ = PlayState::Paused;
    if (graph_) applyWanted();
}

void DirectShowEngine::stop() {
    wanted_ = PlayState::Stopped;
    waiting_.clear();
    opener_.cancel();
    clipEnded_ = false;
    if (graph_) applyWanted();
}

void DirectShowEngine::previous() {
    step(Step::Previous);
}

void DirectShowEngine::next() {
    step(Step::Next);
}

void DirectShowEngine::step(Step step) {
    if (opener_.busy())
        waiting_.push_back(step);
    else if (graph_ && list_.stepper.canStep(step))
        openEntry(step);
}

double DirectShowEngine::duration() const {
    return graph_ ? graph_.duration() : 0;
}

double DirectShowEngine::position() const {
    return graph_ ? graph_.position() : 0;
}

void DirectShowEngine::setPosition(double seconds) {
    if (!graph_) return;
    clipEnded_ = listEnded_ = false;
    graph_.seek(seconds);
}

void DirectShowEngine::setVolume(int hundredthsOfDecibel) {
    volume_ = hundredthsOfDecibel;
    if (graph_) graph_.setVolume(hundredthsOfDecibel);
}

std::wstring DirectShowEngine::mediaInfo(int kind) const {
    if (!graph_) return {};
    return kind == kClipTitle ? details_.title : kind == kClipAuthor ? details_.author : L"";
}

}  // namespace tunovka
