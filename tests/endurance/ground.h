#pragma once

#include <windows.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/frm_prieskumnik.h"
#include "core/loop.h"
#include "support/scratch_folder.h"
#include "ui/box.h"

namespace tunovka {

// A small collection in a folder of drive E: for hands that do what they like. What they bring to
// other folders of the drive goes with it.
class Ground {
  public:
    Ground() : before_(contentsOf(kDrive)) {
        const std::wstring samples = samplesFolder();
        walk(samples, [&](const std::wstring& sample, bool isFolder) {
            const std::wstring name = sample.substr(samples.size());
            isFolder ? folder_.folder(name) : folder_.file(name, contentOf(sample));
        });
        std::string many;
        for (int i = 0; i < 500; ++i)
            many += i % 3 ? "a.wav\r\n" : "niet" + std::to_string(i) + ".mp3\r\n";
        folder_.file(L"a.wav", contentOf(samples + L"Skúšky\\Ladička 440 Hz.wav") + "x");
        folder_.file(L"prázdny.mp3", "");
        folder_.file(L"odkazy.m3u", "#EXTINF:3,Prv\xE1\r\nniet.mp3\r\n..\\..\\..\\inde.mp3\r\n");
        folder_.file(L"veľa.m3u", many);
        SetFileAttributesW((path() + L"ľúbezná.wma").c_str(), FILE_ATTRIBUTE_READONLY);
        start_ = contentsOf(kDrive);
    }
    Ground(const Ground&) = delete;
    Ground& operator=(const Ground&) = delete;
    ~Ground() {
        for (const auto& [path, content] : contentsOf(kDrive))
            if (!before_.contains(path)) {
                SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
                DeleteFileW(path.c_str());
            }
    }

    const std::wstring& path() const { return folder_.path(); }  // ends in "\"

    // The files whose content is not there any more, and what is half written.
    std::vector<std::wstring> lost() const {
        std::vector<std::wstring> lost;
        std::set<std::size_t> kept;
        for (const auto& [path, content] : contentsOf(kDrive)) {
            kept.insert(content);
            if (path.ends_with(L".tmp")) lost.push_back(path);
        }
        for (const auto& [path, content] : start_)
            if (!kept.contains(content)) lost.push_back(path);
        return lost;
    }

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
        for (const FolderEntry& entry : FileSystemObject::listFolder(folder)) {
            const std::wstring path = folder + entry.name + (entry.isFolder() ? L"\\" : L"");
            visit(path, entry.isFolder());
            if (entry.isFolder()) walk(path, visit);
        }
    }

    const Contents before_;
    ScratchFolder folder_{kDrive};
    Contents start_;
};

// Opens the explorer on a folder, as the program's start does.
inline frmPrieskumnik& startProgram(const std::wstring& folder) {
    installFailureNotice();
    MultiMedialny::InitSharedTables();
    frmPrieskumnik& explorer = Forms::load<frmPrieskumnik>();
    explorer.load();
    explorer.folders.strom.select(folder);
    explorer.contents.ListFolderContents(folder);
    return explorer;
}

// A number that the person who starts the test may set in the environment.
inline int setting(const char* name, int otherwise) {
    const char* const text = std::getenv(name);
    return text ? std::atoi(text) : otherwise;
}

}  // namespace tunovka
