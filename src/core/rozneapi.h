#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/loop.h"

namespace tunovka::RozneApi {

// The shell's own answer; nothing is enumerated. False when it does not know the path.
bool HasSubfolders(const std::wstring& folder);

// The names of a folder's sub-folders, at most so many; none of an unreadable one.
std::vector<std::wstring> subfolderNames(const std::wstring& folder, std::size_t most = SIZE_MAX);

// The program that the shell associates with a file, "" without one.
std::wstring FindAssociatedProgram(const std::wstring& path);

// Called for each folder that is visited, with the number of files found so far.
using CollectProgress = std::function<void(const std::wstring& folder, std::size_t found)>;

// All files below a folder, breadth first, each folder's files in the system's order. Clears
// StopRequested; where that is raised or the loop is cancelled, returns what was found so far.
// Links are followed, each target once. Folders that cannot be listed give no files.
std::vector<std::wstring> CollectFiles(const std::wstring& folder,
                                       const CollectProgress& progress = {},
                                       const LoopHooks& hooks = {yieldToEvents});

}  // namespace tunovka::RozneApi
