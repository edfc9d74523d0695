#pragma once

#include <chrono>
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
// anything that others change, and gives a value back; what it raises is raised to the asker.
//
// A question that is given up may go on for as long as the system lets it: nobody waits for it, not
// even the program's end, and what it gives back is thrown away. "Not answered" is an empty
// optional; it never means that something is missing.

namespace tunovka {

class DiskTask;

// What the questions below are made of.
namespace DiskWork {

std::shared_ptr<DiskTask> start(std::function<void()> work);

// Wait until the work is done; false when it was given up. In a long command all events run, and
// the command's hooks say when it is given up; else only painting and timers run and Escape does.
// Work that is done within a few milliseconds lets nothing run.
bool await(const std::shared_ptr<DiskTask>& task, const LoopHooks& command);
bool await(const std::shared_ptr<DiskTask>& task, const std::wstring& path);

// The work counts no more. The system is asked to break it off, where it can.
void giveUp(const std::shared_ptr<DiskTask>& task);

// True for 10 seconds after a single question to the path's drive or share was given up.
bool isSilent(const std::wstring& path);

}  // namespace DiskWork

// A question under way; given up with its object.
template <typename Answer>
class DiskQuestion {
  public:
    explicit DiskQuestion(std::function<Answer()> question)
        : result_(std::make_shared<Result>()),
          task_(DiskWork::start([result = result_, question = std::move(question)] {
              try {
                  result->answer = question();
              } catch (...) {
                  result->failure = std::current_exception();
              }
          })) {}
    DiskQuestion(DiskQuestion&&) noexcept = default;
    DiskQuestion& operator=(DiskQuestion&&) = delete;
    ~DiskQuestion() {
        if (task_) DiskWork::giveUp(task_);
    }

    // Waits as a long command (LoopHooks) or for a single question to a path.
    template <typename Whose>
    std::optional<Answer> answer(const Whose& whose) {
        if (!DiskWork::await(task_, whose)) return std::nullopt;
        task_.reset();
        if (result_->failure) std::rethrow_exception(result_->failure);
        return std::move(result_->answer);
    }

  private:
    struct Result {
        std::optional<Answer> answer;
        std::exception_ptr failure;
    };
    std::shared_ptr<Result> result_;
    std::shared_ptr<DiskTask> task_;
};

// Asks as part of a long command.
template <typename Question>
auto askDisk(const LoopHooks& command, Question question) {
    return DiskQuestion<std::invoke_result_t<Question>>(std::move(question)).answer(command);
}

// Asks a single question about a path.
template <typename Question>
auto askDisk(const std::wstring& path, Question question) {
    using Answer = std::invoke_result_t<Question>;
    if (DiskWork::isSilent(path)) return std::optional<Answer>();
    return DiskQuestion<Answer>(std::move(question)).answer(path);
}

// The commonest single question: is a file there? Not answered is no.
bool fileAnswers(const std::wstring& path);
// The path of a file as the disk spells its name: "" when none is there, or not answered.
std::wstring fileOnDisk(const std::wstring& path);

// Asks many questions of one long command, several at a time, and gives their answers in the order
// of the questions.
template <typename Answer>
class DiskQuestions {
  public:
    // As many as help are under way: an answer is to be taken before the next question. A disk that
    // answers at once is asked by two workers, any other by eight.
    bool full() const { return running_.size() >= atOnce_; }
    bool empty() const { return running_.empty(); }
    void put(std::function<Answer()> question) { running_.emplace_back(std::move(question)); }

    // The answer to the oldest question. When it is given up, so are all others.
    std::optional<Answer> next(const LoopHooks& command) {
        const auto start = std::chrono::steady_clock::now();
        std::optional<Answer> answer = running_.front().answer(command);
        running_.pop_front();
        if (std::chrono::steady_clock::now() - start > kAtOnce) atOnce_ = 8;
        if (!answer) running_.clear();
        return answer;
    }

  private:
    static constexpr std::chrono::milliseconds kAtOnce{5};
    std::size_t atOnce_ = 2;
    std::deque<DiskQuestion<Answer>> running_;
};

}  // namespace tunovka
