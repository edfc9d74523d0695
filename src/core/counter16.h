#pragma once

#include <cstdint>
#include <limits>

#include "core/errors.h"

namespace tunovka {

// The 16-bit flag value of a true boolean (StopRequested, BoxAnswer's relatives).
inline constexpr std::int16_t kTrue16 = -1;
inline constexpr std::int16_t kFalse16 = 0;

// A counter that the program defines as a 16-bit signed integer. A value outside its range raises
// kOverflow and leaves the old value standing.
class Counter16 {
  public:
    constexpr Counter16() = default;
    explicit Counter16(std::int64_t value) { *this = value; }

    Counter16& operator=(std::int64_t value) {
        if (value < std::numeric_limits<std::int16_t>::min() ||
            value > std::numeric_limits<std::int16_t>::max())
            throw RuntimeError(kOverflow);
        value_ = static_cast<std::int16_t>(value);
        return *this;
    }
    Counter16& operator++() { return *this = std::int64_t{value_} + 1; }
    Counter16& operator--() { return *this = std::int64_t{value_} - 1; }
    // NOLINTNEXTLINE(google-explicit-constructor): it stands for its number everywhere
    constexpr operator std::int16_t() const { return value_; }

  private:
    std::int16_t value_ = 0;
};

}  // namespace tunovka
