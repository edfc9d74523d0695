#include <windows.h>
// windows.h first: this needs its types.
#include <commctrl.h>

#include "app/contents_tree.h"
#include "bench/bench.h"
#include "core/events.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "core/multimedialny.h"
#include "ui/form.h"

namespace tunovka::bench {
namespace {

constexpr int kPlaylists = 100;
constexpr int kEntries = 300;  // of each playlist
constexpr int kRealFiles = 3000;
constexpr int kFilesInFolder = 100;

std::wstring musicFolder() {
    return data(L"listing-music", [](const std::wstring& folder) {
        for (int number = 0; number < 10000; ++number)
            writeFile(folder + L"Pieseň " + std::to_wstring(number) + L".mp3", "");
    });
}

std::wstring diskName(int file) {
    return L"disk " + std::to_wstring(file / kFilesInFolder);
}

// One entry in ten names a file that is not there.
std::string entryLine(int number) {
    const int file = number % kRealFiles;
    return "disk " + std::to_string(file / kFilesInFolder) + "\\song " + std::to_string(file) +
           (number % 10 == 0 ? " missing" : "") + ".mp3\r\n";
}

std::wstring playlistFolder() {
    return data(L"listing-playlists", [](const std::wstring& folder) {
        for (int file = 0; file < kRealFiles; ++file) {
            CreateDirectoryW((folder + diskName(file)).c_str(), nullptr);
            writeFile(folder + diskName(file) + L"\\song " + std::to_wstring(file) + L".mp3", "");
        }
        for (int list = 0; list < kPlaylists; ++list) {
            std::string content;
            for (int entry = 0; entry < kEntries; ++entry)
                content += entryLine(list * 7 + entry * 11);
            writeFile(folder + L"zoznam " + std::to_wstring(list) + L".m3u", content);
        }
    });
}

class Stage : public Form {
  public:
    Stage()
        : Form({.name = L"frmStage", .caption = L"bench", .size = {600, 600}}),
          contents(*this, txtPath) {
        contents.Tview.setBounds({0, 0, 600, 600});
        show();
    }
    void list(const std::wstring& folder) {
        contents.ListFolderContents(folder);
        UpdateWindow(contents.Tview.handle());
    }

    TextBox txtPath;
    ContentsTree contents;
};

// A tree of the system's, filled by nothing but insertions with redraw off.
class BareTree {
  public:
    BareTree()
        : window_(CreateWindowExW(0, WC_TREEVIEWW, L"", WS_POPUP | WS_VISIBLE | TVS_HASBUTTONS, 0,
                                  0, 600, 600, nullptr, nullptr, nullptr, nullptr)) {}
    HTREEITEM add(HTREEITEM parent, const std::wstring& text) {
        TVINSERTSTRUCTW insert{};
        insert.hParent = parent;
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT;
        insert.item.pszText = const_cast<wchar_t*>(text.c_str());
        return reinterpret_cast<HTREEITEM>(
            SendMessageW(window_.get(), TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
    }
    void fill(const std::function<void()>& insertions) {
        SendMessageW(window_.get(), WM_SETREDRAW, FALSE, 0);
        SendMessageW(window_.get(), TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
        insertions();
        SendMessageW(window_.get(), WM_SETREDRAW, TRUE, 0);
        InvalidateRect(window_.get(), nullptr, TRUE);
        UpdateWindow(window_.get());
    }

  private:
    SystemWindow window_;
};

template <class Visit>
void enumerate(const std::wstring& folder, Visit visit) {
    WIN32_FIND_DATAW entry;
    const FindHandle search(FindFirstFileW((folder + L"*").c_str(), &entry));
    if (!search) return;
    do visit(entry);
    while (FindNextFileW(search.get(), &entry));
}

void bareMusic(BareTree& tree, const std::wstring& folder) {
    tree.fill([&] {
        enumerate(folder,
                  [&](const WIN32_FIND_DATAW& entry) { tree.add(TVI_ROOT, entry.cFileName); });
    });
}

std::string barelyRead(const std::wstring& path) {
    const FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    std::string content(GetFileSize(file.get(), nullptr), '\0');
    DWORD read = 0;
    ReadFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &read, nullptr);
    return content;
}

void barePlaylist(BareTree& tree, const std::wstring& path, const wchar_t* name) {
    const HTREEITEM parent = tree.add(TVI_ROOT, name);
    const std::string content = barelyRead(path);
    for (std::size_t at = 0, end; at < content.size(); at = end + 1) {
        end = std::min(content.find('\n', at), content.size());
        const std::size_t start = content.rfind('\\', end) + 1;
        tree.add(parent, std::wstring(content.begin() + start, content.begin() + end));
    }
}

void barePlaylists(BareTree& tree, const std::wstring& folder) {
    tree.fill([&] {
        enumerate(folder, [&](const WIN32_FIND_DATAW& entry) {
            if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
                barePlaylist(tree, folder + entry.cFileName, entry.cFileName);
            else if (entry.cFileName[0] != L'.')
                enumerate(folder + entry.cFileName + L"\\", [](const WIN32_FIND_DATAW&) {});
        });
    });
}

void compareListing(const char* name, const std::wstring& folder,
                    void (*bare)(BareTree&, const std::wstring&)) {
    MultiMedialny::InitSharedTables();
    double own = 0, bareTime = 0;
    std::size_t nodes = 0;
    {
        Stage stage;
        BareTree tree;
        yieldNow();
        const Pair times = comparedInTurns(
            7, [&] { stage.list(folder); }, [&] { bare(tree, folder); });
        own = times.own;
        bareTime = times.bare;
        nodes = stage.contents.Tview.count();
    }
    report({name, own, "ms", bareTime, 2});
    report({(std::string(name) + "_nodes").c_str(), static_cast<double>(nodes), "nodes"});
}

}  // namespace

BENCH(listing_music) {
    compareListing("listing_music", musicFolder(), bareMusic);
}

BENCH(listing_playlists) {
    compareListing("listing_playlists", playlistFolder(), barePlaylists);
}

}  // namespace tunovka::bench
