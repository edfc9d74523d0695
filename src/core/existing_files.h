#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/disk_questions.h"
#include "core/file_questions.h"

namespace tunovka {

// Asks the disk: each folder is enumerated once, by a worker while the next questions are put, and
// its names are kept upper-cased, so that an answer costs a hash look-up and not a system call.
// Each operation (listing, loading, cleaning, saving) has an object of its own, or calls
// beginOperation(), which enumerates only the folders that have changed.
//
// A name that its folder's set does not hold is confirmed by one real question unless the
// enumeration succeeded and covered short names too. A path that the system would rewrite is asked
// for as it is. A root that is not there is asked once.
class ExistingFiles : public FileQuestions {
  public:
    // Starts another operation, without a question yet, whose answers are those of now.
    void beginOperation();

    void ask(const std::wstring& path) override;
    std::size_t count() const { return count_; }  // of the questions in this operation
    std::optional<std::vector<bool>> answers(const LoopHooks& command) override;

  private:
    // What changes whenever a file of the folder comes, goes or gets another name.
    struct Stamp {
        std::uint64_t written, created;
        bool operator==(const Stamp&) const = default;
    };
    struct Root;
    struct Listing {
        std::optional<Stamp> stamp;  // from just before
        bool complete = false;       // `files` are all there are, short names covered
        std::wstring files;          // long and short names, each ended by "\"
    };
    struct Answer {
        bool rootAnswers = true;
        std::optional<Listing> listing{};  // none where nothing has changed since the last one
    };
    struct Folder {
        std::wstring path;
        bool rootAnswers = false;
        unsigned operation = 0;                       // the last one that asked
        std::wstring asked;                           // the names asked for, each ended by "\"
        std::vector<std::size_t> questions;           // of these names
        Listing listing;                              // upper-cased
        std::unordered_set<std::wstring_view> names;  // parts of its files
    };
    // Looks a spelling up without making a text of it.
    struct SpellingHash : std::hash<std::wstring_view> {
        using is_transparent = void;
    };

    static std::optional<Stamp> stampOf(const auto& folder, std::uint64_t now);
    static Listing list(const std::wstring& folder);
    Folder* folderOf(std::wstring_view spelling);
    std::function<Answer()> questionFor(const Folder& folder);
    static void take(Folder& folder, Answer answer);
    void answer(const Folder& folder, std::vector<bool>& answers);
    bool askAlone(std::vector<bool>& answers, const LoopHooks& command);

    std::unordered_map<std::wstring, Folder> folders_;
    std::unordered_map<std::wstring, std::shared_ptr<Root>> roots_;
    unsigned operation_ = 1;
    // The folders of this operation by their paths as they were asked for: parts of folders_, whose
    // entries never move; nullptr for one that the system would rewrite.
    std::unordered_map<std::wstring, Folder*, SpellingHash, std::equal_to<>> spelled_;
    std::optional<DiskQuestions<Answer>> questions_;
    std::vector<Folder*> asked_;
    std::size_t count_ = 0;                                    // questions of this operation
    std::vector<std::pair<std::size_t, std::wstring>> alone_;  // those about a single path
};

}  // namespace tunovka
