#pragma once

#include <string>

#include "core/errors.h"
#include "core/file_system.h"

// Cutting operations on the disk short.

namespace tunovka {

// While it lives, the step of that number (the first is 0) fails as on a full disk, and every later
// one as well when the fault lasts.
class FaultAt {
  public:
    explicit FaultAt(int step, bool lasts = false) : left_(step) {
        FileSystemObject::setFault([this, lasts](DiskStep, const std::wstring&) {
            if (left_-- == 0 || (lasts && left_ < 0)) throw RuntimeError(kDiskFull);
        });
    }
    ~FaultAt() { FileSystemObject::setFault({}); }
    bool wasMet() const { return left_ < 0; }

  private:
    int left_;
};

// "" for a file that is not there.
inline std::string contentOf(const std::wstring& path) {
    return FileSystemObject::FileExists(path) ? FileSystemObject::readAll(path) : "";
}

// A folder on another volume than the temporary one, "" when there is none to be had.
inline std::wstring otherVolume() {
    const std::wstring folder = L"Z:\\dev\\shm\\";
    return FileSystemObject::FolderExists(folder) ? folder : L"";
}

}  // namespace tunovka
