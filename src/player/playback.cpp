#include "player/playback.h"

#include <utility>

#include "core/errors.h"
#include "core/multimedialny.h"
#include "core/text.h"

namespace tunovka {
namespace {

using Kind = MediaNotification::Kind;

const PlaybackTrouble kNothingToPlay{
    L" Playlist neodkazuje na žiaden súbor, ktorý sa dá prehrať. "};

class BusyMark {
  public:
    explicit BusyMark(std::atomic<int>& busy) : busy_(busy) { ++busy_; }
    BusyMark(const BusyMark&) = delete;
    BusyMark& operator=(const BusyMark&) = delete;
    ~BusyMark() { --busy_; }

  private:
    std::atomic<int>& busy_;
};

}  // namespace

Playback::Playback(MediaEngine& engine, PlaybackSwitches& switches, Outside outside)
    : engine_(engine), switches_(switches), outside_(std::move(outside)) {}

void Playback::open(const std::wstring& file) {
    const BusyMark busy(switches_.busy);
    engine_.close();
    file_ = file;
    files_.clear();
    current_.reset();
    duration_ = 0;
    details_ = {};
    told_ = PlayState::Stopped;
    started_ = false;
    reopen();
}

void Playback::reopen() {
    error_.clear();
    failed_ = announced_ = opened_ = clipEnded_ = false;
    if (!files_.empty()) return openEntry(Step::Again);
    const bool isList = MultiMedialny::isPlaylistName(lowerCased(file_));
    whole_ = isList && engine_.takesLists() && !engine_.open(file_);
    if (whole_)
        entryOpened();
    else
        openFirst();
}

void Playback::openFirst() {
    try {
        files_ = outside_.filesOf(file_);
    } catch (const RuntimeError& error) {
        return fail(outside_.troubleOf(error));
    }
    openEntry(Step::First);
}

bool Playback::canStep(Step step) const {
    if (whole_) return true;
    if (!current_) return false;
    return step == Step::Next ? *current_ + 1 < files_.size() : *current_ > 0;
}

void Playback::openEntry(Step step) {
    const BusyMark busy(switches_.busy);
    // What goes on sounding while the next one takes its time could not be silenced.
    if (opened_ && !clipEnded_) engine_.hold();
    lastStep_ = step;
    const std::optional<PlaybackTrouble> trouble = openFirstThat(step);
    if (switches_.left) return;
    if (trouble)
        noEntryOpened(step, *trouble);
    else
        entryOpened();
}

// Tries the entries in the direction of the step, each at most once and not round the ends.
std::optional<PlaybackTrouble> Playback::openFirstThat(Step step) {
    const bool back = step == Step::Previous;
    const bool single = files_.size() == 1 && files_.front().path == file_;
    std::size_t at = step == Step::First ? 0 : current_.value_or(0);
    if (step == Step::Next) ++at;
    for (; !switches_.left && (back ? at-- > 0 : at < files_.size()); at += back ? 0 : 1) {
        std::optional<PlaybackTrouble> trouble = engine_.open(files_[at].path);
        if (!trouble) {
            current_ = at;
            return std::nullopt;
        }
        if (single || trouble->withEveryFile) return trouble;
    }
    return kNothingToPlay;
}

// Stopped waits for the details, which are still told.
void Playback::entryOpened() {
    opened_ = clipEnded_ = announced_ = false;
    if (switches_.wanted != PlayState::Stopped) applyWanted();
}

void Playback::noEntryOpened(Step step, const PlaybackTrouble& trouble) {
    const bool stepped = step == Step::Next || step == Step::Previous;
    if (stepped && switches_.wanted == PlayState::Stopped) return;
    if (!stepped || !opened_) return fail(trouble);
    if (!engine_.isOpen()) return openEntry(Step::Again);  // the former one is gone
    if (!clipEnded_) return applyWanted();
    if (step == Step::Previous && canStep(Step::Next)) return openEntry(Step::Next);
    ended();
}

void Playback::applyWanted() {
    switch (switches_.wanted) {
        case PlayState::Playing:
            if (engine_.isOpen())
                engine_.play();
            else if (!file_.empty())
                reopen();
            break;
        case PlayState::Paused:
            if (engine_.isOpen()) engine_.pause();
            break;
        case PlayState::Stopped:
            close();
            tellState(PlayState::Stopped);
            break;
    }
}

void Playback::close() {
    const BusyMark busy(switches_.busy);
    engine_.close();
    opened_ = clipEnded_ = false;
}

void Playback::step(Step step) {
    if (whole_ && engine_.isOpen()) {
        if (step == Step::Next)
            engine_.next();
        else
            engine_.previous();
    } else if (!whole_ && canStep(step)) {
        openEntry(step);
    }
}

void Playback::seek(double seconds) {
    if (engine_.isOpen()) engine_.seek(seconds);
}

void Playback::takeEvents() {
    while (const std::optional<EngineEvent> event = engine_.takeEvent()) handle(*event);
    if (opened_ && engine_.isOpen()) duration_ = engine_.duration();
}

void Playback::handle(const EngineEvent& event) {
    switch (event.kind) {
        case EngineEvent::Kind::Opened:
            opened_ = true;
            duration_ = engine_.duration();
            details_ = engine_.details();
            if (current_) details_ = details_.orElse(files_[*current_].listed);
            tellDetails();
            if (switches_.wanted == PlayState::Stopped) applyWanted();
            break;
        case EngineEvent::Kind::StateIs:
            if (event.state == PlayState::Playing && switches_.wanted != PlayState::Playing)
                applyWanted();  // asked while the file was opening
            else
                tellState(event.state);
            break;
        case EngineEvent::Kind::Ended:
            if (started_ && opened_) clipEnded();  // else it is late, of the file before
            break;
        case EngineEvent::Kind::Failed:
            clipFailed(event.trouble);
            break;
    }
}

void Playback::clipFailed(const PlaybackTrouble& trouble) {
    if (whole_ && !opened_) {  // the list was refused
        whole_ = false;
        engine_.close();
        openFirst();
    } else if (files_.size() < 2 || trouble.withEveryFile) {
        fail(trouble);
    } else if (!opened_) {
        openEntry(lastStep_ == Step::Previous ? Step::Previous : Step::Next);
    } else {
        clipEnded();
    }
}

void Playback::clipEnded() {
    clipEnded_ = true;
    if (!whole_ && canStep(Step::Next))
        openEntry(Step::Next);
    else
        ended();
}

void Playback::ended() {
    outside_.stopWanting();
    close();
    current_.reset();  // playing starts the list again
    if (std::exchange(started_, false)) {
        tellState(PlayState::Stopped);
        outside_.tell({Kind::EndOfStream, kPlayedToEnd});
    }
}

void Playback::fail(const PlaybackTrouble& trouble) {
    outside_.stopWanting();
    close();
    if (std::exchange(failed_, true)) return;
    error_ = trouble.text;
    tellState(PlayState::Stopped);
    started_ = false;
    outside_.tell({Kind::Error});
}

// Told once for a clip that has not started to play; while one plays it means that another began.
void Playback::tellDetails() {
    if (announced_ && !started_) return;
    announced_ = true;
    outside_.tell({Kind::NewStream});
}

void Playback::tellState(PlayState state) {
    if (state == told_) return;
    if (state != PlayState::Stopped && !announced_) tellDetails();
    const PlayState old = std::exchange(told_, state);
    if (state == PlayState::Playing) started_ = true;
    outside_.tell({Kind::PlayStateChange, static_cast<int>(old), static_cast<int>(state)});
}

}  // namespace tunovka
