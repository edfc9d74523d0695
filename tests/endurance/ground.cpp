#include "endurance/ground.h"

#include <windows.h>

#include <cstring>
#include <functional>

#include "core/errors.h"
#include "core/file_system.h"
#include "core/text.h"
#include "endurance/program.h"
#include "support/samples.h"

namespace tunovka {
namespace {

const std::wstring kDrive = L"E:\\";

constexpr char kLinks[] =
    "#EXTM3U\r\n#EXTINF:3,Anna - Prv\xE1\r\na.wav\r\nniet.mp3\r\n..\\..\\..\\inde.mp3\r\n"
    "\xE8\x65re\x9A\xF2ov\xFD sad.mp3\r\n";

// Without the code under test, and from any thread.
std::string contentOf(const std::wstring& path) {
    const FileHandle file(CreateFileW(path.c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                      nullptr));
    std::string content(file ? GetFileSize(file.get(), nullptr) : 0, '\0');
    DWORD read = 0;
    ReadFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &read, nullptr);
    return content;
}

// Every file and folder below a folder, itself left out.
void walk(const std::wstring& folder,
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

// Large enough to be caught while it is copied. A real sound: a file of 4 MB that is none costs
// Wine's media bridge 20 MB of memory a second, without an end.
std::string longSound() {
    constexpr std::size_t kHeader = 44;
    std::string sound = contentOf(samplesFolder() + L"Skúšky\\Ladička 440 Hz.wav");
    const std::string wave = sound.substr(kHeader);
    while (sound.size() < 4'000'000) sound += wave;
    const auto putSize = [&](std::size_t at) {
        const auto rest = static_cast<std::uint32_t>(sound.size() - at - 4);
        std::memcpy(&sound[at], &rest, sizeof rest);
    };
    putSize(4);
    putSize(kHeader - 4);
    return sound;
}

bool isBelow(const std::wstring& path, const std::wstring& folder) {
    const std::wstring plain = path.starts_with(L"\\\\?\\") ? path.substr(4) : path;
    return upperCased(plain).starts_with(upperCased(folder));
}

}  // namespace

Ground::Ground() : before_(contentsOf(kDrive)) {
    build();
    elsewhere_.file(L"inde.mp3");
    untouched_ = contentsOf(elsewhere_.path());
    last_ = contentsOf(kDrive);
    FileSystemObject::setFault([this](DiskStep step, const std::wstring& where) {
        if (step == DiskStep::Read) return;
        if (step == DiskStep::Copy) return Sleep(40);  // so that copying a large file takes a while
        if (isBelow(where, kDrive)) return;
        faults_.push_back("written outside: " + narrow(where));
        throw RuntimeError(kPermissionDenied);
    });
}

// What was brought to other folders of the drive goes too, or the next run would find it.
Ground::~Ground() {
    FileSystemObject::setFault({});
    for (const auto& [path, content] : contentsOf(kDrive)) {
        if (before_.contains(path)) continue;
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileW(path.c_str());
    }
}

// The samples, and what else may lie in somebody's folders.
void Ground::build() {
    const std::wstring samples = samplesFolder();
    walk(samples, [&](const std::wstring& sample, bool isFolder) {
        const std::wstring name = sample.substr(samples.size());
        isFolder ? folder_.folder(name) : folder_.file(name, contentOf(sample));
    });
    folder_.folder(L"prázdny");
    folder_.file(L"a.wav", contentOf(samples + L"Skúšky\\Ladička 440 Hz.wav") + "x");
    folder_.file(L"veľká.wav", longSound());
    folder_.file(L"šum.mp3", std::string(5000, 'Z'));
    folder_.file(L"prázdny.mp3", "");
    folder_.file(L"iné.txt", "text");
    folder_.file(L"odkazy.m3u", kLinks);
    std::string many;
    for (int i = 0; i < 500; ++i)
        many += i % 3 ? "a.wav\r\n" : "niet" + std::to_string(i) + ".mp3\r\n";
    folder_.file(L"veľa.m3u", many);
    SetFileAttributesW((path() + L"ľúbezná.wma").c_str(), FILE_ATTRIBUTE_READONLY);
}

std::vector<std::wstring> Ground::folders() const {
    std::vector<std::wstring> found{path()};
    walk(path(), [&](const std::wstring& entry, bool isFolder) {
        if (isFolder) found.push_back(entry);
    });
    return found;
}

Ground::Contents Ground::contentsOf(const std::wstring& folder) {
    Contents contents;
    walk(folder, [&](const std::wstring& path, bool isFolder) {
        if (!isFolder) contents[path] = std::hash<std::string>()(contentOf(path));
    });
    return contents;
}

void Ground::agreedToDelete(const std::wstring& path) {
    agreed_.insert(path);
}

void Ground::check(bool atRest) {
    const Contents now = contentsOf(kDrive);
    std::set<std::uint64_t> kept;
    for (const auto& [path, content] : now) {
        kept.insert(content);
        if (atRest && path.ends_with(L".tmp")) faults_.push_back("left behind: " + narrow(path));
    }
    for (const auto& [path, content] : last_) {
        // What was put in a file's place by a copy, a move or a save was meant to be.
        if (kept.contains(content) || now.contains(path) || agreed_.contains(path)) continue;
        faults_.push_back("lost: " + narrow(path));
    }
    if (contentsOf(elsewhere_.path()) != untouched_) faults_.push_back("changed elsewhere");
    last_ = now;
    agreed_.clear();
}

}  // namespace tunovka
