#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "support/scratch_folder.h"

namespace tunovka {

// A small collection in a folder of drive E: for hands that do what they like, and the books about
// it: every content that is lost although nobody asked for that is told.
class Ground {
  public:
    Ground() : before_(contentsOf(kDrive)) {
        const std::wstring samples = samplesFolder();
        const std::string sound = contentOf(samples + L"Skúšky\\Ladička 440 Hz.wav");
        walk(samples, [&](const std::wstring& sample, bool isFolder) {
            const std::wstring name = sample.substr(samples.size());
            isFolder ? folder_.folder(name) : folder_.file(name, contentOf(sample));
        });
        std::string many;
        for (int i = 0; i < 500; ++i)
            many += i % 3 ? "a.wav\r\n" : "niet" + std::to_string(i) + ".mp3\r\n";
        const std::pair<const wchar_t*, std::string> files[]{
            {L"a.wav", sound + "x"},
            {L"šum.mp3", std::string(5000, 'Z')},
            {L"prázdny.mp3", ""},
            {L"iné.txt", "text"},
            {L"odkazy.m3u", "#EXTINF:3,Prv\xE1\r\na.wav\r\nniet.mp3\r\n..\\..\\..\\inde.mp3\r\n"},
            {L"veľa.m3u", many}};
        for (const auto& [name, content] : files) folder_.file(name, content);
        SetFileAttributesW((path() + L"ľúbezná.wma").c_str(), FILE_ATTRIBUTE_READONLY);
        elsewhere_.file(L"inde.mp3");
        untouched_ = contentsOf(elsewhere_.path());
        last_ = contentsOf(kDrive);
    }
    Ground(const Ground&) = delete;
    Ground& operator=(const Ground&) = delete;
    // What was brought to other folders of the drive goes too, or the next run would find it.
    ~Ground() {
        for (const auto& [path, content] : contentsOf(kDrive))
            if (!before_.contains(path)) {
                SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
                DeleteFileW(path.c_str());
            }
    }

    const std::wstring& path() const { return folder_.path(); }  // ends in "\"

    // A person agreed to delete the file.
    void agreedToDelete(const std::wstring& path) { agreed_.insert(path); }

    // Compares with the last call. At rest nothing may be half written any more.
    void check(bool atRest) {
        const Contents now = contentsOf(kDrive);
        std::set<std::size_t> kept;
        for (const auto& [path, content] : now) {
            kept.insert(content);
            if (atRest && path.ends_with(L".tmp")) faults.push_back(L"left behind: " + path);
        }
        for (const auto& [path, content] : last_) {
            // What was put in a file's place by a copy, a move or a save was meant to be.
            if (kept.contains(content) || now.contains(path) || agreed_.contains(path)) continue;
            faults.push_back(L"lost: " + path);
        }
        if (contentsOf(elsewhere_.path()) != untouched_) faults.push_back(L"changed elsewhere");
        last_ = now;
        agreed_.clear();
    }

    std::vector<std::wstring> faults;  // what went wrong so far

  private:
    using Contents = std::map<std::wstring, std::size_t>;  // path, hash
    static constexpr wchar_t kDrive[] = L"E:\\";

    static Contents contentsOf(const std::wstring& folder) {
        Contents contents;
        walk(folder, [&](const std::wstring& path, bool isFolder) {
            if (!isFolder) contents[path] = std::hash<std::string>()(contentOf(path));
        });
        return contents;
    }
    // Every file and folder below a folder, itself left out.
    static void walk(const std::wstring& folder,
                     const std::function<void(const std::wstring& path, bool isFolder)>& visit) {
        WIN32_FIND_DATAW entry;
        const FindHandle search(FindFirstFileW((folder + L"*").c_str(), &entry));
        if (!search) return;
        do {
            const std::wstring name = entry.cFileName;
            if (name == L"." || name == L"..") continue;
            const bool isFolder = entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY;
            visit(folder + name + (isFolder ? L"\\" : L""), isFolder);
            if (isFolder) walk(folder + name + L"\\", visit);
        } while (FindNextFileW(search.get(), &entry));
    }

    const Contents before_;
    ScratchFolder folder_{kDrive};
    ScratchFolder elsewhere_{L"T:\\"};
    Contents last_, untouched_;
    std::set<std::wstring> agreed_;
};

}  // namespace tunovka
