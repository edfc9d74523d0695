#pragma once

#include <windows.h>

#include "core/non_copyable.h"

namespace tunovka {

// Lets one thread go on at a time: held by one of them as long as the object lives.
class Turn : NonCopyable {
  public:
    // Waits for the turn, but no longer than so many milliseconds or until the event is set: then
    // the thread goes on without it. Without a semaphore (of one) there is nothing to wait for.
    Turn(HANDLE semaphore, DWORD milliseconds, HANDLE givenUp = nullptr) : semaphore_(semaphore) {
        const HANDLE handles[] = {semaphore, givenUp};
        if (semaphore &&
            WaitForMultipleObjects(givenUp ? 2 : 1, handles, FALSE, milliseconds) != WAIT_OBJECT_0)
            semaphore_ = nullptr;
    }
    ~Turn() {
        if (semaphore_) ReleaseSemaphore(semaphore_, 1, nullptr);
    }

  private:
    HANDLE semaphore_;
};

}  // namespace tunovka
