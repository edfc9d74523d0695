#pragma once

#include "core/errors.h"

namespace tunovka {

// The number of the run-time error that an action raises, 0 when it raises none.
template <class Action>
int errorOf(Action&& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.number;
    }
    return 0;
}

}  // namespace tunovka
