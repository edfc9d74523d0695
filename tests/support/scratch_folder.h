#pragma once

#include <windows.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/file_system.h"
#include "core/handle.h"
#include "core/paths.h"
#include "support/machine.h"

namespace tunovka {

// A file or folder that is there, opened without the code under test.
inline FileHandle opened(const std::wstring& path, DWORD access, DWORD share = 0) {
    return FileHandle(CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

// Opens a file so that nobody else may do what is not shared.
inline FileHandle locked(const std::wstring& path, DWORD share = 0) {
    return opened(path, GENERIC_READ, share);
}

// Read by any thread; "" for a file that is not there.
inline std::string contentOf(const std::wstring& path) {
    std::ifstream file(path.c_str(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The short (8.3) name of a file that is there.
inline std::wstring shortNameOf(const std::wstring& path) {
    wchar_t shortPath[MAX_PATH] = L"";
    GetShortPathNameW(path.c_str(), shortPath, MAX_PATH);
    return fileName(shortPath);
}

inline bool isReadOnly(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_READONLY;
}

inline void makeReadOnly(const std::wstring& path) {
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
}

// Sets the times that are given, of a file or folder.
inline bool setTimes(const std::wstring& path, const FILETIME* changed,
                     const FILETIME* read = nullptr, const FILETIME* created = nullptr) {
    const FileHandle file = opened(path, FILE_WRITE_ATTRIBUTES, FILE_SHARE_WRITE);
    return SetFileTime(file.get(), created, read, changed);
}

// The project's small music collection, found upwards from where the test program lies; ends in
// "\".
inline std::wstring samplesFolder() {
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring folder = program;
    for (auto cut = folder.rfind(L'\\'); cut != folder.npos; cut = folder.rfind(L'\\')) {
        folder.resize(cut);
        const std::wstring samples = folder + L"\\samples\\";
        if (GetFileAttributesW((samples + L"Vitajte.m3u").c_str()) != INVALID_FILE_ATTRIBUTES)
            return samples;
    }
    throw std::runtime_error("the samples are not above the test program");
}

// A folder of a test's own, gone with everything in it at the test's end.
class ScratchFolder {
  public:
    // Below the one given (ends in "\"), else below the system's folder for temporary files.
    explicit ScratchFolder(const std::wstring& below = {}) {
        static int counter = 0;
        wchar_t temporary[MAX_PATH + 1];
        GetTempPathW(MAX_PATH + 1, temporary);
        do {
            path_ = (below.empty() ? temporary : below) + L"tunovka-test-" +
                    std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++counter) +
                    L"\\";
        } while (!CreateDirectoryW(path_.c_str(), nullptr) &&
                 GetLastError() == ERROR_ALREADY_EXISTS);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        remove(path_);
        const auto gone = [&] { return !FileSystemObject::FolderExists(path_); };
        // Wine cannot delete a link itself.
        if (!gone()) onMachine("rm -rf '" + machinePath(path_) + "'", gone);
    }

    const std::wstring& path() const { return path_; }                       // ends in "\"
    std::wstring bare() const { return path_.substr(0, path_.size() - 1); }  // does not
    std::wstring operator/(const std::wstring& name) const { return path_ + name; }

    // Writes without the code under test.
    std::wstring file(const std::wstring& name, const std::string& content = "x") const {
        write(path_ + name, content);
        return path_ + name;
    }
    static void write(const std::wstring& path, const std::string& content) {
        std::ofstream(path.c_str(), std::ios::binary) << content;
    }
    std::wstring folder(const std::wstring& name) const {
        CreateDirectoryW((path_ + name).c_str(), nullptr);
        return path_ + name;
    }
    // Files of that content, and folders: names that end in "\".
    void fill(std::initializer_list<std::wstring> names, const std::string& content = "x") const {
        for (const std::wstring& name : names)
            name.ends_with(L'\\') ? folder(name) : file(name, content);
    }

    // Names of everything in it, folders without a mark.
    std::vector<std::wstring> names() const {
        std::vector<std::wstring> names;
        for (const FolderEntry& entry : FileSystemObject::listFolder(path_))
            names.push_back(entry.name);
        return names;
    }

  private:
    static void remove(const std::wstring& folder) {
        const std::wstring extended = folder[0] == L'\\' ? folder : L"\\\\?\\" + folder;
        WIN32_FIND_DATAW entry;
        {
            const FindHandle search(FindFirstFileW((extended + L"*").c_str(), &entry));
            while (search) {
                const std::wstring name = entry.cFileName;
                const std::wstring path = extended + name;
                SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
                if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
                    DeleteFileW(path.c_str());
                else if (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)
                    RemoveDirectoryW(path.c_str());
                else if (name != L"." && name != L"..")
                    remove(path + L"\\");
                if (!FindNextFileW(search.get(), &entry)) break;
            }
        }
        RemoveDirectoryW(extended.c_str());
    }

    std::wstring path_;
};

}  // namespace tunovka
