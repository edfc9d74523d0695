#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/loop.h"

namespace tunovka {

// Whether files are there, asked for all that a command needs and answered together.
class FileQuestions {
  public:
    virtual ~FileQuestions() = default;

    // Asks whether there is a file (not a folder) of that path; "" and paths with wildcards are
    // none.
    virtual void ask(const std::wstring& path) = 0;

    // Waits, while events run, until all that was asked in this operation is answered, and gives
    // the answers in the order of the questions. nullopt when the command was given up.
    virtual std::optional<std::vector<bool>> answers(const LoopHooks& command) = 0;
};

}  // namespace tunovka
