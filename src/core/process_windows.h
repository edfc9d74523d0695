#pragma once

#include <windows.h>

#include <string>

namespace tunovka {

// Starts a program and does not wait for it. The command line goes to the system to the letter;
// `showMode` is one of SW_…. Raises kFileNotFound when there is no such program,
// kPermissionDenied when it must not be started, else kInvalidCall.
void startProgram(const std::wstring& commandLine, int showMode);

}  // namespace tunovka
