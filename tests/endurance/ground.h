#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "support/scratch_folder.h"

namespace tunovka {

// A small collection in a folder of drive E: for hands that do what they like, and the books about
// it: what is written elsewhere is refused and told, and so is every content that is lost although
// nobody asked for that.
class Ground {
  public:
    Ground();
    ~Ground();
    Ground(const Ground&) = delete;
    Ground& operator=(const Ground&) = delete;

    const std::wstring& path() const { return folder_.path(); }  // ends in "\"
    std::vector<std::wstring> folders() const;                   // itself first, whole paths

    // A person agreed to delete the file.
    void agreedToDelete(const std::wstring& path);

    // Compares with the last call. Any thread. At rest nothing may be half written any more.
    void check(bool atRest);

    // What went wrong so far, a line each.
    std::vector<std::string> faults() const { return faults_; }

  private:
    using Contents = std::map<std::wstring, std::uint64_t>;  // path, hash

    void build();
    static Contents contentsOf(const std::wstring& folder);

    const Contents before_;
    ScratchFolder folder_{L"E:\\"};
    ScratchFolder elsewhere_{L"T:\\"};
    Contents last_, untouched_;
    std::set<std::wstring> agreed_;
    std::vector<std::string> faults_;
};

}  // namespace tunovka
