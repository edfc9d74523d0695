#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace tunovka {

// Numbers of the run-time errors that the program can meet.
enum ErrorNumber : int {
    kInvalidCall = 5,
    kOverflow = 6,
    kOutOfMemory = 7,
    kTypeMismatch = 13,
    kInternalError = 51,
    kBadFileName = 52,
    kFileNotFound = 53,
    kFileAlreadyExists = 58,
    kDiskFull = 61,
    kBadRecordNumber = 63,
    kDeviceUnavailable = 68,
    kPermissionDenied = 70,
    kPathFileAccess = 75,
    kPathNotFound = 76,
    kKeyNotUnique = 35602,
};

// The Slovak sentence of an error number, as it stands in notices.
std::wstring errorDescription(int number);

// The number of a run-time error for an error of the system (GetLastError).
int errorNumberOf(unsigned long systemError);

// The one exception for failures that the program can meet. It never reaches the system.
struct RuntimeError : std::exception {
    int number;
    std::wstring description;
    std::wstring source;  // the component that failed, "Tunovka" unless stated

    explicit RuntimeError(int number, std::wstring_view detail = {},
                          std::wstring_view source = L"Tunovka");
    const char* what() const noexcept override { return "run-time error"; }
};

// Raises the RuntimeError of an error of the system, with the source "FileSystemObject". Its
// sentence says what to do where the system's error tells more than the number.
[[noreturn]] void raiseSystemError(unsigned long systemError);

inline void require(unsigned long systemError) {
    if (systemError) raiseSystemError(systemError);
}

}  // namespace tunovka
