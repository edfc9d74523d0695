#include "player/clip_opener.h"

#include <exception>
#include <utility>

#include "core/errors.h"
#include "core/file_system.h"
#include "player/com_apartment.h"
#include "player/media_file.h"
#include "player/playback_errors.h"

namespace tunovka {
namespace {

constexpr DWORD kLongestWait = 1000;  // ms

// What a thread gets: the opening, shared with whoever waits for it, and whom to tell.
struct Work {
    std::shared_ptr<Opening> opening;
    LoopSignal::Address ended;
};

HRESULT openClip(Opening& opening, const PlaylistClip& clip) {
    if (!FileSystemObject::FileExists(clip.path)) return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    const HRESULT result = SoundGraph::open(clip.path, opening.graph);
    if (SUCCEEDED(result)) opening.details = tagDetails(clip.path).orElse(clip.listed);
    return result;
}

void openEntry(Opening& opening) {
    ClipList& list = opening.list;
    if (!list.clips) {
        list.clips = std::make_shared<const std::vector<PlaylistClip>>(clipsOf(opening.file));
        list.stepper = PlaylistStepper(list.clips->size());
    }
    const bool single = list.clips->size() == 1 && list.clips->front().path == opening.file;
    HRESULT error = kNothingToPlay;
    const auto opens = [&](std::size_t entry) {
        if (opening.cancelled || error == VFW_E_NO_AUDIO_HARDWARE) return false;
        const HRESULT result = openClip(opening, (*list.clips)[entry]);
        if (single || result == VFW_E_NO_AUDIO_HARDWARE) error = result;
        return SUCCEEDED(result);
    };
    if (!list.stepper.step(opening.step, opens)) opening.error = playbackErrorText(error);
}

void openNoThrow(Opening& opening) noexcept {
    try {
        openEntry(opening);
    } catch (const RuntimeError& error) {
        opening.error = playbackErrorText(error);
    } catch (const std::exception&) {
        opening.error = playbackErrorText(E_OUTOFMEMORY);
    }
}

DWORD WINAPI workOnThread(void* parameter) {
    const std::unique_ptr<Work> work(static_cast<Work*>(parameter));
    const ComApartment apartment(COINIT_MULTITHREADED);
    openNoThrow(*work->opening);
    // Nobody takes a cancelled one: its file is let go here.
    if (work->opening->cancelled) work->opening->graph = SoundGraph();
    work->ended.raise(work->opening->number);
    work->opening.reset();  // while COM is still there
    return 0;
}

}  // namespace

ClipOpener::~ClipOpener() {
    cancel();
}

void ClipOpener::start(std::wstring file, const ClipList& list, PlaylistStepper::Step step) {
    cancel();
    current_ = std::make_shared<Opening>();
    current_->file = std::move(file);
    current_->list = list;
    current_->step = step;
    current_->number = ++lastNumber_;
    auto work = std::make_unique<Work>(Work{current_, ended_});
    current_->thread = KernelHandle(CreateThread(nullptr, 0, workOnThread, work.get(), 0, nullptr));
    if (current_->thread) {
        static_cast<void>(work.release());  // it is the thread's now
    } else {
        current_->error = playbackErrorText(HRESULT_FROM_WIN32(GetLastError()));
        ended_.raise(current_->number);
    }
}

std::shared_ptr<Opening> ClipOpener::take(std::uintptr_t number) {
    if (current_ && current_->number == number) return std::exchange(current_, nullptr);
    // It was cancelled when it had opened its file already.
    std::erase_if(cancelled_, [number](const auto& opening) {
        if (opening->number == number) opening->graph = SoundGraph();
        return opening->number == number;
    });
    return nullptr;
}

void ClipOpener::cancel() {
    if (!current_) return;
    current_->cancelled = true;
    cancelled_.push_back(std::exchange(current_, nullptr));
}

// A plain wait: letting messages run here would let commands in that change what the caller is at.
void ClipOpener::awaitCancelled() {
    for (const auto& opening : std::exchange(cancelled_, {}))
        WaitForSingleObject(opening->thread.get(), kLongestWait);
}

}  // namespace tunovka
