#pragma once

#include <algorithm>
#include <atomic>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "core/loop.h"

// Questions to disks are asked on workers, so that the thread of the windows makes no call that can
// wait for a disk. A question is a function that holds values of its own, knows neither windows nor
// anything that others change, and gives a value back; what it raises is raised to the asker. One
// that is given up may go on for as long as the system lets it; nobody waits for it. "Not answered"
// is an empty optional; it never means that something is missing.

namespace tunovka {

// What the questions below are made of.
namespace DiskWork {

// Work for one worker.
class Task {
  public:
    virtual ~Task() = default;
    virtual void run() noexcept = 0;

    std::atomic<bool> done = false;
    void* ended = nullptr;  // an event to set at the end; guarded by the lock of the workers
};

// The tasks of one asker, begun in their order: by two workers while they are quick, because
// systems list folders little faster by more, by ten when the asker has to wait.
class Crew : NonCopyable {
  public:
    struct State;

    Crew();
    ~Crew() { giveUp(); }

    void put(std::shared_ptr<Task> task);

    // Wait until a task is done; false when it was given up, and with it all others. Events run as
    // waitForObject() lets them, unless `later`, a task put in later, is done within milliseconds
    // as well: to be woken for each one takes longer than its work.
    bool await(Task& task, Task& later, const LoopHooks& command);
    bool await(Task& task, Task& later, const std::wstring& path);

  private:
    void giveUp();
    bool awaitQuickAnswer(const Task& task, Task& later);

    std::shared_ptr<State> state_;
};

// True for 10 seconds after a single question to the path's drive or share was given up.
bool isSilent(const std::wstring& path);

}  // namespace DiskWork

// Questions of one asker, several at a time, answered in their order. Given up with the object.
template <typename Answer>
class DiskQuestions {
  public:
    // As many are under way as is of use: an answer is to be taken before the next question.
    bool full() const { return asked_.size() == 64; }

    void put(std::function<Answer()> question) {
        asked_.push_back(std::make_shared<Question>(std::move(question)));
        crew_.put(asked_.back());
    }

    // The answer to the oldest question; when it is given up, so are all others.
    template <typename Whose>
    std::optional<Answer> next(const Whose& whose) {
        const std::shared_ptr<Question> first = asked_.front();
        const auto later = asked_[std::min<std::size_t>(asked_.size() - 1, 15)];
        asked_.pop_front();
        if (!crew_.await(*first, *later, whose)) return std::nullopt;
        if (first->failure) std::rethrow_exception(first->failure);
        return std::move(first->answer);
    }

  private:
    struct Question : DiskWork::Task {
        explicit Question(std::function<Answer()> question) : ask(std::move(question)) {}
        void run() noexcept override {
            try {
                answer = ask();
            } catch (...) {
                failure = std::current_exception();
            }
            ask = {};
        }

        std::function<Answer()> ask;
        std::optional<Answer> answer;
        std::exception_ptr failure;
    };

    DiskWork::Crew crew_;
    std::deque<std::shared_ptr<Question>> asked_;
};

// Asks as part of a long command (LoopHooks), or a single question about a path.
template <typename Whose, typename Question>
auto askDisk(const Whose& whose, Question question) {
    using Answer = std::invoke_result_t<Question>;
    if constexpr (!std::is_convertible_v<Whose, LoopHooks>)
        if (DiskWork::isSilent(whose)) return std::optional<Answer>();
    DiskQuestions<Answer> only;
    only.put(std::move(question));
    return only.next(whose);
}

// Asks the questions `question(i)` of one long command and hands their answers to `take(i, answer)`
// in their order, letting events run between them. False when the command was given up.
template <typename MakeQuestion, typename Take>
bool askDiskMany(const LoopHooks& command, std::size_t count, const MakeQuestion& question,
                 const Take& take) {
    DiskQuestions<std::invoke_result_t<std::invoke_result_t<MakeQuestion, std::size_t>>> questions;
    for (std::size_t i = 0, ahead = 0; i < count; ++i) {
        for (; ahead < count && !questions.full(); ++ahead) questions.put(question(ahead));
        auto answer = questions.next(command);
        if (!answer) return false;
        take(i, std::move(*answer));
        if (!command.next()) return false;
    }
    return true;
}

// The commonest single question: is a file there? Not answered is no.
bool fileAnswers(const std::wstring& path);
// Why a file did not answer: `missing` when it is not there, else what stands against looking.
std::wstring whyNoFile(const std::wstring& path, std::wstring_view missing);
// The path of a file as the disk spells its name: "" when none is there, or not answered.
std::wstring fileOnDisk(const std::wstring& path);

}  // namespace tunovka
