#pragma once

namespace tunovka {

// The base of what is neither copied nor moved.
class NonCopyable {
  public:
    NonCopyable(const NonCopyable&) = delete;
    NonCopyable& operator=(const NonCopyable&) = delete;

  protected:
    NonCopyable() = default;
    ~NonCopyable() = default;
};

}  // namespace tunovka
