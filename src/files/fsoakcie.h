#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/errors.h"
#include "core/file_system.h"
#include "ui/program_links.h"

// The file operations behind the explorer's menus and drops.

namespace tunovka {

// The file operations by their numbers; every other number does nothing.
enum FileOperation : int {
    kCopyToClipboard = 1,
    kCopyIntoFolder = 2,
    kMoveIntoFolder = 3,
    kTransfer = 4,
    kCutToClipboard = 5,
    kDelete = 8,
};

// What a path begins with in the file clipboard, which is "" while it holds nothing.
inline constexpr wchar_t kCopied[] = L"copy:", kCut[] = L"cut:";

namespace FSOakcie {

// What the operations need of the explorer.
struct Explorer {
    TextBox& txtsubor;  // the file clipboard
    TextBox& txtodkaz;  // the explorer's command channel

    // Asks for a folder; "" when the person cancels.
    std::function<std::wstring(std::wstring_view prompt)> pickFolder;

    // Runs work on the file on a worker while the windows live, as CopyWatch does. False when the
    // work says so or when the person stopped it; what it raises is raised here. The work holds
    // values of its own: stopped, it may still run for a while.
    using Work = std::function<bool(const TransferHooks& hooks)>;
    std::function<bool(const std::wstring& path, const Work& work)> carry;
};

// Carries out the operation of that number on the file `source`; `destination` (a full path) is
// taken by kTransfer alone. Questions and the notice of a failure are asked here; nothing is
// raised.
//
// An operation that runs to its end replaces the clipboard text; one that the person breaks off
// leaves it. Both write their command, which may be "", into `txtodkaz`. A failure leaves both;
// only a move whose copy is in place beside its source makes the explorer show it.
void carryOut(const Explorer& explorer, int operation, const std::wstring& source,
              const std::wstring& destination = {});

// The notice of a failure.
void tellFailure(const RuntimeError& error);

// Prepares a file that is about to be replaced or deleted: asks whether an existing file may be
// overwritten, unless `dontAsk`, and lifts its read-only bit. False when it may not. The program
// itself never asks.
bool prepareFile(const std::wstring& path, bool dontAsk);

}  // namespace FSOakcie
}  // namespace tunovka
