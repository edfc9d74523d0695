#pragma once

#include <cstddef>
#include <functional>
#include <optional>

namespace tunovka {

// Which entry of a list plays next. Knows how many entries there are and at which it stands, and
// nothing of files.
class PlaylistStepper {
  public:
    enum class Step { First, Next, Previous };
    using Opens = std::function<bool(std::size_t entry)>;

    PlaylistStepper() = default;
    explicit PlaylistStepper(std::size_t count) : count_(count) {}

    std::size_t count() const { return count_; }

    // The entry that plays; nullopt before the first one was opened.
    std::optional<std::size_t> current() const { return current_; }

    // Whether there is an entry to try in that direction.
    bool canStep(Step step) const;

    // Tries the entries in the direction of the step, one after another, until one opens, and
    // stands there. False when none opens: it then stands where it stood. Each entry is tried at
    // most once; there is no way round the ends.
    bool step(Step step, const Opens& opens);

  private:
    std::size_t count_ = 0;
    std::optional<std::size_t> current_;
};

}  // namespace tunovka
