#include "files/fsoakcie.h"

#include "core/non_copyable.h"
#include "core/paths.h"
#include "core/text.h"
#include "ui/frm_box.h"

namespace tunovka::FSOakcie {
namespace {

namespace fso = FileSystemObject;

constexpr std::uint32_t kReadOnly = 1;

// A file to be deleted or replaced: read-only no more, until that fails.
class Prepared : NonCopyable {
  public:
    explicit Prepared(const std::wstring& path) : path_(path) {
        if (!fso::FileExists(path)) return;
        before_ = fso::attributes(path);
        prepareFile(path, true);
    }
    ~Prepared() {
        if (!(before_ & kReadOnly)) return;
        try {
            fso::setAttributes(path_, before_);
        } catch (const RuntimeError&) {
            // The failure that led here is the one to tell.
        }
    }

    void ended() { before_ = 0; }

  private:
    std::wstring path_;
    std::uint32_t before_ = 0;
};

// One operation on the disk. Each step is false when the person broke it off.
class Operation {
  public:
    Operation(const Explorer& explorer, const std::wstring& source)
        : explorer_(explorer), source_(source) {}

    bool run(int number, const std::wstring& destination) const {
        switch (number) {
            case kCopyIntoFolder:
                // Unlike the other operations it does not prepare what it replaces: a read-only
                // file there makes it fail.
                return transfer(false, inFolder(L"Určite adresár, kam sa súbor prekopíruje."),
                                false);
            case kMoveIntoFolder:
                return transfer(true, inFolder(L"Určite adresár, kam sa súbor presunie."));
            case kTransfer:
                return transfer(!explorer_.txtsubor.text().starts_with(kCopied), destination);
            default:
                return remove();
        }
    }

  private:
    // The file's place in a folder that the person chooses; "" when they choose none.
    std::wstring inFolder(std::wstring_view prompt) const {
        const std::wstring chosen = explorer_.pickFolder(prompt);
        return chosen.empty() ? chosen : withBackslash(chosen) + fileName(source_);
    }

    bool remove() const {
        const std::wstring question =
            L"Naozaj chceš nenávratne odstrániť súbor '" + source_ + L"' ?";
        if (ask(L"Vymazať súbor", question, L"ÁNO;NIE") != 1) return false;
        return explorer_.carry(source_, [source = source_](const TransferHooks& hooks) {
            Prepared doomed(source);
            fso::deleteFile(source, false, hooks);
            doomed.ended();
            return true;
        });
    }

    bool transfer(bool moves, const std::wstring& destination, bool prepares = true) const {
        if (destination.empty()) return false;
        return explorer_.carry(source_, [=, source = source_](const TransferHooks& hooks) {
            Prepared replaced(prepares ? destination : std::wstring());
            try {
                const bool done = moves ? fso::moveFile(source, destination, true, hooks)
                                        : fso::copyFile(source, destination, hooks);
                if (done) replaced.ended();
                return done;
            } catch (const SourceLeft&) {
                replaced.ended();
                throw;
            }
        });
    }

    const Explorer& explorer_;
    const std::wstring& source_;
};

}  // namespace

void carryOut(const Explorer& explorer, int operation, const std::wstring& source,
              const std::wstring& destination) {
    const bool toClipboard = operation == kCopyToClipboard || operation == kCutToClipboard;
    const bool toDisk =
        (operation >= kCopyIntoFolder && operation <= kTransfer) || operation == kDelete;
    if (source.empty() || (!toClipboard && !toDisk)) return;
    if (toClipboard) {
        explorer.txtsubor.setText((operation == kCopyToClipboard ? kCopied : kCut) + source);
        return explorer.txtodkaz.setText(L"");
    }
    bool done = false;
    try {
        done = Operation(explorer, source).run(operation, destination);
    } catch (const SourceLeft& error) {
        tellFailure(error);
        return explorer.txtodkaz.setText(kRefreshCommand);
    } catch (const RuntimeError& error) {
        return tellFailure(error);
    }
    if (done) explorer.txtsubor.setText(L"");
    explorer.txtodkaz.setText(done ? kRefreshCommand : L"");
}

void tellFailure(const RuntimeError& error) {
    ask(L"CHYBA",
        L"Došlo k neočakávanej chybe (č. " + decimal(error.number) + L")\rVýpis správy chyby:\r" +
            error.description,
        L"Rozumiem ...");
}

bool prepareFile(const std::wstring& path, bool dontAsk) {
    if (!fso::FileExists(path)) return true;
    if (!dontAsk && ask(L"Prepísať súbor",
                        L"Súbor s takýmto názvom už v zadanom umiestnení existuje, chceš prepísať "
                        L"existujúci súbor ?",
                        L"ÁNO;NIE") != 1)
        return false;
    const std::uint32_t attributes = fso::attributes(path);
    if (attributes & kReadOnly) fso::setAttributes(path, attributes & ~kReadOnly);
    return true;
}

}  // namespace tunovka::FSOakcie
