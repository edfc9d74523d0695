#include <windows.h>

#include "bench/bench.h"
#include "core/ansi.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "editor/frm_plejlist.h"

namespace tunovka::bench {
namespace {

constexpr int kFolders = 300, kFilesEach = 100;

std::wstring album(int number) {
    return L"album " + std::to_wstring(number) + L"\\";
}

// 30,000 files in 300 folders, a list of them all, and one whose every third entry is missing.
std::wstring collection() {
    return data(L"editor", [](const std::wstring& root) {
        std::wstring all, thirdMissing;
        for (int number = 0; number < kFolders; ++number) {
            CreateDirectoryW((root + album(number)).c_str(), nullptr);
            for (int song = 0; song < kFilesEach; ++song) {
                const std::wstring file =
                    album(number) + L"pieseň číslo " + std::to_wstring(song * 7919 % 1000);
                writeFile(root + file + L".mp3", "");
                all += file + L".mp3\r\n";
                thirdMissing += file + (song % 3 ? L".mp3\r\n" : L".wav\r\n");
            }
        }
        writeFile(root + L"all.m3u", toAnsi(all));
        writeFile(root + L"missing.m3u", toAnsi(thirdMissing));
    });
}

// 30,000 entries that never stay in a folder, in a list mixed.m3u: 3,000 files of 300 folders, ten
// times each, but one in ten is missing.
std::wstring mixedCollection() {
    return data(L"editor-mixed", [](const std::wstring& root) {
        constexpr int kSongs = 10;
        for (int number = 0; number < kFolders; ++number) {
            CreateDirectoryW((root + album(number)).c_str(), nullptr);
            for (int song = 0; song < kSongs; ++song)
                writeFile(root + album(number) + L"song " + std::to_wstring(song) + L".mp3", "");
        }
        std::wstring list;
        for (int round = 0; round < 100; ++round)
            for (int number = 0; number < kFolders; ++number)
                list += album(number) + L"song " + std::to_wstring(round % kSongs) +
                        ((number + round) % 10 ? L".mp3\r\n" : L" (missing).mp3\r\n");
        writeFile(root + L"mixed.m3u", toAnsi(list));
    });
}

void enumerateAlbums(const std::wstring& root) {
    for (int number = 0; number < kFolders; ++number) {
        WIN32_FIND_DATAW entry;
        const FindHandle search(FindFirstFileW((root + album(number) + L"*").c_str(), &entry));
        while (search && FindNextFileW(search.get(), &entry)) continue;
    }
}

struct NoProgram : ProgramLinks {
    void tellExplorer(const std::wstring&) override {}
    std::wstring shownFolder() const override { return {}; }
    std::wstring folderToSearch() const override { return {}; }
    void openEditor(const std::wstring&) override {}
    void showInformation(const std::wstring&) override {}
};

class Window {
  public:
    explicit Window(const std::wstring& playlist = {}) {
        MultiMedialny::InitSharedTables();
        form.emplace(program_);
        form->show();
        if (!playlist.empty()) form->txtodkaz.setText(playlist);
    }
    Editor& editor() { return form->editor; }
    void painted() { UpdateWindow(editor().view.Lview.handle()); }

    std::optional<frmplejlist> form;

  private:
    NoProgram program_;
};

// The median time of a command over fresh windows, and the longest that another window waited.
void reportCommand(const char* name, const char* answerName, const std::wstring& playlist,
                   double limit, const std::function<void(Window&)>& command) {
    std::vector<double> times, answers;
    for (int run = 0; run < 7; ++run) {
        Window window(playlist);
        times.push_back(timed([&] {
            command(window);
            window.painted();
        }));
    }
    for (int run = 0; run < 5; ++run) {
        Window window(playlist);
        AnsweringWindow asked;
        command(window);
        answers.push_back(asked.longestAnswer());
    }
    report({name, median(times), "ms", {}, limit});
    report({answerName, median(answers), "ms", {}, 50});
}

}  // namespace

BENCH(editor_open) {
    const std::wstring root = collection(), list = root + L"all.m3u";
    std::vector<double> own, bare, answers;
    enumerateAlbums(root);
    for (int run = 0; run < 9; ++run) {
        Window window;
        own.push_back(timed([&] {
            window.form->txtodkaz.setText(list);
            window.painted();
        }));
        bare.push_back(timed([&] {
            FileSystemObject::readAll(list);
            enumerateAlbums(root);
        }));
    }
    for (int run = 0; run < 5; ++run) {
        Window window;
        AnsweringWindow asked;
        window.form->txtodkaz.setText(list);
        answers.push_back(asked.longestAnswer());
    }
    report({"editor_open", median(own), "ms", median(bare), 1.5});
    report({"editor_open_answer", median(answers), "ms", {}, 50});
}

// What a person waits for: the window is made as well.
BENCH(editor_open_mixed) {
    const std::wstring list = mixedCollection() + L"mixed.m3u";
    std::vector<double> times;
    for (int run = 0; run < 10; ++run) {
        std::optional<Window> window;
        times.push_back(timed([&] {
            window.emplace(list);
            window->painted();
        }));
    }
    times.erase(times.begin());  // it warmed the caches
    report({"editor_open_mixed", median(times), "ms"});
}

BENCH(editor_duplicates) {
    Window window(collection() + L"all.m3u");
    const auto resolved = [](const std::wstring&) { return true; };
    std::vector<double> times;
    for (int run = 0; run < 9; ++run)
        times.push_back(timed([&] { window.editor().document.duplicates(resolved); }));
    report({"editor_duplicates", median(times), "ms", {}, 100});
}

BENCH(editor_remove_invalid) {
    reportCommand("editor_remove_invalid", "editor_remove_invalid_answer",
                  collection() + L"missing.m3u", 200, [](Window& window) {
                      const Form::Busy busy(*window.form);
                      dropInvalidLinks(window.editor());
                  });
}

BENCH(editor_sort) {
    reportCommand("editor_sort", "editor_sort_answer", collection() + L"all.m3u", 200,
                  [](Window& window) {
                      const Form::Busy busy(*window.form);
                      sortRows(window.editor(), SortOrder::Ascending);
                  });
}

BENCH(editor_restore) {
    reportCommand("editor_restore", "editor_restore_answer", collection() + L"all.m3u", 200,
                  [](Window& window) {
                      const Form::Busy busy(*window.form);
                      restoreLoadOrder(window.editor());
                  });
}

BENCH(editor_save) {
    const std::wstring root = collection(), target = root + L"saved.m3u";
    Window window(root + L"all.m3u");
    const std::string bytes = FileSystemObject::readAll(root + L"all.m3u");
    const Pair times = comparedInTurns(
        9, [&] { writeList(window.editor(), target, true); },
        [&] {
            enumerateAlbums(root);
            FileSystemObject::writeWhole(root + L"bare.m3u", bytes);
        });
    report({"editor_save", times.own, "ms", times.bare, 2});
    std::vector<double> answers;
    for (int run = 0; run < 5; ++run) {
        AnsweringWindow asked;
        writeList(window.editor(), target, true);
        answers.push_back(asked.longestAnswer());
    }
    report({"editor_save_answer", median(answers), "ms", {}, 50});
}

}  // namespace tunovka::bench
