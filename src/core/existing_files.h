#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/loop.h"

namespace tunovka {

// Answers "does this file exist" for many paths at once: each folder is enumerated once and its
// names are kept upper-cased, so that an answer costs a hash look-up and not a system call. The
// answers of one operation (listing, loading, cleaning, saving) are those of its start; each
// operation has an object of its own, or begins with anew() and then enumerates only the folders
// that have changed.
//
// A name that its folder's set does not hold is confirmed by one real question unless the
// enumeration succeeded and covered short names too. A root that is not there is asked once. What
// was not answered, because the person gave the question up, counts as there.
class ExistingFiles {
  public:
    // What is needed of the disk; the defaults of the product are in existing_files_windows.cpp.
    struct Disk {
        struct Listing {
            std::wstring files;     // long and short names of files, each ended by "\"
            bool complete = false;  // enumerated to its end, short names covered
        };
        struct Stamp {
            std::uint64_t written, created;
            bool operator==(const Stamp&) const = default;
        };
        // nullopt when the folder cannot be listed; a folder that is certainly not there is a
        // complete and empty listing, so that its entries cost no question each.
        std::function<std::optional<Listing>(const std::wstring& folder)> list;
        // What changes whenever a file of the folder comes, goes or gets another name; nullopt
        // where nothing tells that for certain.
        std::function<std::optional<Stamp>(const std::wstring& folder)> stamp;
        // A real question for one path.
        std::function<bool(const std::wstring& path)> exists;
        // The full path as the file system normalises it ("..", "/", doubled "\", trailing dots).
        std::function<std::wstring(const std::wstring& path)> normalized;
        // False when the drive or share is not there.
        std::function<bool(const std::wstring& root)> rootAnswers;

        // The functions above ask the disk and are called by way of these: one question, empty when
        // it was given up, or many, several at a time, whose answers are taken in their order;
        // false when they were given up.
        struct Answer {
            bool there = true;  // the file or root
            std::optional<Stamp> stamp{};
            bool unchanged = false;  // since the stamp that was known, so not listed
            std::optional<Listing> listing{};
        };
        using Question = std::function<Answer()>;
        std::function<std::optional<Answer>(const std::wstring& path, const Question& question)>
            ask = [](const std::wstring&, const Question& question) {
                return std::optional<Answer>(question());
            };
        using Take = std::function<void(std::size_t position, Answer answer)>;
        std::function<bool(const std::vector<Question>& questions, const LoopHooks& command,
                           const Take& take)>
            askMany =
                [](const std::vector<Question>& questions, const LoopHooks&, const Take& take) {
                    for (std::size_t i = 0; i < questions.size(); ++i) take(i, questions[i]());
                    return true;
                };
    };

    explicit ExistingFiles(Disk disk);
    ExistingFiles();  // over the real disk
    ExistingFiles(const ExistingFiles&) = delete;
    ExistingFiles& operator=(const ExistingFiles&) = delete;

    // Starts another operation, whose answers are those of now. The test to hand in.
    std::reference_wrapper<ExistingFiles> anew();

    // Says that a path will be asked for.
    void expect(std::wstring_view path);
    // Asks the disk about the folders of all expected paths at once, while events run. False when
    // the command was given up.
    bool prepare(const LoopHooks& command);

    // True when a file (not a folder) of that path exists; "" and paths with wildcards are false.
    bool contains(const std::wstring& path);
    // The same, so that std::ref() of an object is a test to hand in.
    bool operator()(const std::wstring& path) { return contains(path); }

  private:
    struct Folder {
        bool answers = false;              // the drive or share does
        bool complete = false;             // `names` are all there are, short names covered
        unsigned operation = 0;            // the last one that asked
        std::optional<Disk::Stamp> stamp;  // from just before the listing
        std::wstring text;                 // the names as they were listed, upper-cased
        std::unordered_set<std::wstring_view> names;  // parts of `text`
    };
    // Looks a spelling up without making a text of it.
    struct SpellingHash : std::hash<std::wstring_view> {
        using is_transparent = void;
    };
    bool holds(const std::wstring& full);
    bool isThere(const std::wstring& full);
    const Folder& folderOf(const std::wstring& path, std::size_t cut);
    void update(Folder& folder, const std::wstring& path);
    bool rootAnswers(const std::wstring& root);
    Disk::Question questionFor(const Folder& folder, const std::wstring& path) const;
    static void take(Folder& folder, Disk::Answer answer);

    Disk disk_;
    std::unordered_map<std::wstring, Folder> folders_;
    std::unordered_map<std::wstring, bool> roots_;  // by drive or share as written
    unsigned operation_ = 1;
    // The folders of this operation by their paths as they were asked for: parts of folders_, whose
    // entries never move.
    std::unordered_map<std::wstring, const Folder*, SpellingHash, std::equal_to<>> spelled_;
    // Folders of the expected paths, in their order.
    std::vector<std::wstring> expected_;
    std::unordered_set<std::wstring, SpellingHash, std::equal_to<>> expectedNames_;
};

}  // namespace tunovka
