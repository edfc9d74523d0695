#include "ui/boundary.h"

namespace tunovka {
namespace {

std::function<void(std::exception_ptr)>& reporter() {
    static std::function<void(std::exception_ptr)> current;
    return current;
}

}  // namespace

void setUnhandledReporter(std::function<void(std::exception_ptr)> replacement) {
    reporter() = std::move(replacement);
}

void reportUnhandled(std::exception_ptr failure) {
    try {
        if (reporter()) reporter()(std::move(failure));
    } catch (...) {
        // A report that fails has nobody left to tell.
    }
}

}  // namespace tunovka
