#pragma once

#include <string>

#include "core/file_system.h"

namespace tunovka {

// Announces a step of an operation on the disk right before it is taken: the place where tests
// cut it short.
void diskStep(DiskStep step, const std::wstring& path);

// The path in the form for the system. Raises kFileNotFound or kPathNotFound when no file (a
// folder is none) is there.
std::wstring requireFile(const std::wstring& path);

}  // namespace tunovka
