#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/loop.h"

namespace tunovka::RozneApi {

// Thin wrappers over the Win32 shell and file services; no state of their own.

// The shell's own answer whether a folder has sub-folders; nothing is enumerated. False when the
// shell does not know the path.
bool HasSubfolders(const std::wstring& folder);

// What AddSubfolderNodes needs of a tree.
class FolderNodes {
  public:
    virtual ~FolderNodes() = default;
    // A node under the parent; black text on white.
    virtual void add(const std::wstring& parentKey, const std::wstring& key,
                     const std::wstring& text) = 0;
    virtual bool hasNode(const std::wstring& key) const = 0;
};

inline constexpr wchar_t kPlaceholderText[] = L"podzložky";
inline constexpr wchar_t kPlaceholderSuffix[] = L"_*.?";

// Adds the sub-folders of a folder under its node, each with a placeholder child when it has
// sub-folders of its own. Unreadable folders add nothing.
void AddSubfolderNodes(FolderNodes& tree, const std::wstring& parentKey,
                       const LoopHooks& hooks = {yieldToEvents});

// The program that the shell associates with a file, "" without one.
std::wstring FindAssociatedProgram(const std::wstring& path);

// Called for each folder that is visited, with the number of files found so far.
using CollectProgress = std::function<void(const std::wstring& folder, std::size_t found)>;

// All files below a folder, breadth first, each folder's files in the system's order before those
// of its sub-folders. Clears StopRequested at its start and ends after the folder in which it is
// raised or the loop is cancelled; it then returns what was found so far. Lets events run per
// entry. Links are followed, each target once. Folders that cannot be listed give no files.
std::vector<std::wstring> CollectFiles(const std::wstring& folder,
                                       const CollectProgress& progress = {},
                                       const LoopHooks& hooks = {yieldToEvents});

}  // namespace tunovka::RozneApi
