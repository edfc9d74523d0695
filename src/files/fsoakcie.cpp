#include "files/fsoakcie.h"

#include <memory>
#include <optional>

#include "core/errors.h"
#include "core/paths.h"
#include "ui/frm_box.h"
#include "ui/program_links.h"

namespace tunovka::FSOakcie {
namespace {

namespace fso = FileSystemObject;

constexpr std::uint32_t kReadOnly = 1;

// What an operation that ran to its end leaves behind.
struct Outcome {
    std::wstring clipboard;
    std::wstring command;
};

// A file prepared for its end. When the end does not come it gets its read-only bit back.
class Prepared {
  public:
    explicit Prepared(const std::wstring& path) : path_(path) {
        if (!fso::FileExists(path)) return;
        before_ = fso::details(path);
        prepareFile(path, true);
    }
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;
    ~Prepared() {
        if (ended_ || !(before_.attributes & kReadOnly)) return;
        try {
            if (isStillThere()) fso::setAttributes(path_, before_.attributes);
        } catch (const RuntimeError&) {
            // The failure that led here is the one to tell.
        }
    }

    void ended() { ended_ = true; }

    // Another file has taken its place, although the operation failed.
    bool isReplaced() const {
        try {
            return fso::FileExists(path_) && !isStillThere();
        } catch (const RuntimeError&) {
            return false;
        }
    }

  private:
    bool isStillThere() const {
        const FileDetails now = fso::details(path_);
        return now.size == before_.size && now.created == before_.created &&
               now.modified == before_.modified;
    }

    std::wstring path_;
    FileDetails before_;
    bool ended_ = false;
};

// One operation under way. Each step returns nothing when the person broke it off.
class Operation {
  public:
    Operation(const Explorer& explorer, const std::wstring& source)
        : explorer_(explorer), source_(source) {}

    std::optional<Outcome> run(int number, const std::wstring& destination) const {
        switch (number) {
            case kCopyToClipboard:
                return Outcome{copiedClipboard(source_), {}};
            case kCutToClipboard:
                return Outcome{cutClipboard(source_), {}};
            case kCopyIntoFolder:
                return copyIntoFolder();
            case kMoveIntoFolder:
                return moveIntoFolder();
            case kTransfer:
                return transfer(destination);
            case kDelete:
                return remove();
            default:
                return std::nullopt;
        }
    }

    // A move that failed has left its copy in place, as well as the source.
    bool leftBoth() const { return *leftBoth_; }

  private:
    std::optional<Outcome> copyIntoFolder() const {
        const std::wstring chosen = explorer_.pickFolder(kCopyFolderPrompt);
        if (chosen.empty()) return std::nullopt;
        const std::wstring folder = normalizedFolder(chosen);
        // Unlike the other operations it does not prepare what it replaces: a read-only file there
        // makes it fail.
        return refreshIf(copy(folder + fileName(source_), false));
    }

    std::optional<Outcome> moveIntoFolder() const {
        const std::wstring chosen = explorer_.pickFolder(kMoveFolderPrompt);
        if (chosen.empty()) return std::nullopt;
        return refreshIf(move(normalizedFolder(chosen) + fileName(source_)));
    }

    std::optional<Outcome> transfer(const std::wstring& destination) const {
        if (destination.empty()) return std::nullopt;
        if (!isCopied(explorer_.txtsubor.text())) return refreshIf(move(destination));
        return refreshIf(copy(destination, true));
    }

    std::optional<Outcome> remove() const {
        if (ask(deleteQuestion(source_)) != 1) return std::nullopt;
        return refreshIf(explorer_.carry(source_, [source = source_](const TransferHooks& hooks) {
            Prepared doomed(source);
            fso::deleteFile(source, false, hooks);
            doomed.ended();
            return true;
        }));
    }

    // False when the person stopped it.
    bool copy(const std::wstring& destination, bool prepares) const {
        return explorer_.carry(
            source_, [source = source_, destination, prepares](const TransferHooks& hooks) {
                Prepared replaced(prepares ? destination : std::wstring());
                const bool done = fso::copyFile(source, destination, hooks);
                if (done) replaced.ended();
                return done;
            });
    }

    bool move(const std::wstring& destination) const {
        return explorer_.carry(
            source_, [source = source_, destination, both = leftBoth_](const TransferHooks& hooks) {
                Prepared replaced(destination);
                try {
                    const bool done = fso::moveFile(source, destination, true, hooks);
                    if (done) replaced.ended();
                    return done;
                } catch (const RuntimeError&) {
                    *both = replaced.isReplaced();
                    throw;
                }
            });
    }

    static std::optional<Outcome> refreshIf(bool done) {
        if (!done) return std::nullopt;
        return Outcome{{}, kRefreshCommand};
    }

    const Explorer& explorer_;
    const std::wstring& source_;
    const std::shared_ptr<bool> leftBoth_ = std::make_shared<bool>(false);  // a worker tells
};

bool isKnown(int operation) {
    return (operation >= kCopyToClipboard && operation <= kCutToClipboard) || operation == kDelete;
}

}  // namespace

void carryOut(const Explorer& explorer, int operation, const std::wstring& source,
              const std::wstring& destination) {
    if (source.empty() || !isKnown(operation)) return;
    std::wstring command;
    const Operation underWay(explorer, source);
    try {
        const std::optional<Outcome> outcome = underWay.run(operation, destination);
        if (outcome) {
            explorer.txtsubor.setText(outcome->clipboard);
            command = outcome->command;
        }
    } catch (const RuntimeError& error) {
        ask(transferFailure(error.number, error.description));
        if (underWay.leftBoth()) explorer.txtodkaz.setText(kRefreshCommand);
        return;
    }
    explorer.txtodkaz.setText(command);
}

bool prepareFile(const std::wstring& path, bool dontAsk) {
    if (!fso::FileExists(path)) return true;
    if (!dontAsk && ask(overwriteQuestion()) != 1) return false;
    const std::uint32_t attributes = fso::attributes(path);
    if (attributes & kReadOnly) fso::setAttributes(path, attributes & ~kReadOnly);
    return true;
}

}  // namespace tunovka::FSOakcie
