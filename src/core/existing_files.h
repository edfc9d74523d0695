#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tunovka {

// Answers "does this file exist" for many paths at once: each folder is enumerated once and its
// names are kept upper-cased, so that an answer costs a hash look-up and not a system call. The
// answers of one operation (listing, loading, cleaning, saving) are those of its start; each
// operation has an object of its own, or begins with anew() and then enumerates only the folders
// that have changed.
//
// A name that its folder's set does not hold is confirmed by one real question unless the
// enumeration succeeded and covered short names too. A root that does not answer is asked once.
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
        // False when the drive or share behind the path does not answer.
        std::function<bool(const std::wstring& root)> rootAnswers;
    };

    explicit ExistingFiles(Disk disk);
    ExistingFiles();  // over the real disk
    ExistingFiles(const ExistingFiles&) = delete;
    ExistingFiles& operator=(const ExistingFiles&) = delete;

    // Starts another operation, whose answers are those of now. The test to hand in.
    std::reference_wrapper<ExistingFiles> anew();

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
    const Folder& folderOf(const std::wstring& path, std::size_t cut);
    void update(Folder& folder, const std::wstring& path);
    void fill(Folder& folder, const std::wstring& path);
    bool rootAnswers(const std::wstring& root);

    Disk disk_;
    std::unordered_map<std::wstring, Folder> folders_;
    std::unordered_map<std::wstring, bool> roots_;  // by drive or share as written
    unsigned operation_ = 1;
    // The folders of this operation by their paths as they were asked for: parts of folders_, whose
    // entries never move.
    std::unordered_map<std::wstring, const Folder*, SpellingHash, std::equal_to<>> spelled_;
};

}  // namespace tunovka
