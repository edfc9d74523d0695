#include "files/file_commands.h"

#include <algorithm>

#include "core/disk_questions.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/paths.h"
#include "files/frm_kopirovanie.h"
#include "ui/frm_box.h"
#include "ui/frm_vstup.h"
#include "ui/system_dialogs.h"

namespace tunovka {
namespace {

// The name as typed, without letters that no file name holds. The old file's extension is appended
// unless the name ends in exactly it (letter case counts); a file without one gains a dot.
std::wstring newFileName(std::wstring typed, std::wstring_view oldPath) {
    constexpr std::wstring_view kRefused = L"*?\\/:;";
    std::ranges::replace_if(
        typed, [&](wchar_t letter) { return kRefused.find(letter) != kRefused.npos; }, L'_');
    const std::wstring ending = L"." + fileExtension(oldPath);
    return typed.ends_with(ending) ? typed : typed + ending;
}

}  // namespace

FileCommands::FileCommands(Parts parts)
    : parts_(std::move(parts)),
      explorer_{.txtsubor = parts_.txtsubor,
                .txtodkaz = parts_.txtodkaz,
                .pickFolder =
                    [this](std::wstring_view prompt) {
                        return pickFolder(parts_.form, prompt, parts_.strom.selectedKey());
                    },
                .carry =
                    [this](const std::wstring& path, const FSOakcie::Explorer::Work& work) {
                        return CopyWatch(parts_.form, path, parts_.closeFile).run(work);
                    }},
      stromDrops_(parts_.strom, {.over = [this](Point at) { return strom_OLEDragOver(at); },
                                 .leave = [this] { parts_.strom.setDropHighlight(L""); },
                                 .drop = [this](const std::wstring& path, Point,
                                                const DragState&) { strom_OLEDragDrop(path); }}),
      TviewDrops_(
          parts_.Tview,
          {.over =
               [this](Point) { return !parts_.form.isBusy() && !parts_.txtPath.text().empty(); },
           .drop = [this](const std::wstring& path, Point,
                          const DragState&) { Tview_OLEDragDrop(path); }}) {
    const auto on = [this](PopupMenu& menu, const wchar_t* entry, std::function<void()> command) {
        menu.onClick(entry) = [this, command = std::move(command)] { alone(command); };
    };
    PopupMenu& prehrat = parts_.prehrat;
    on(prehrat, L"kopirovat_subor", [this] { runOnSelected(kCopyToClipboard); });
    on(prehrat, L"vystrihnut_subo", [this] { runOnSelected(kCutToClipboard); });
    on(prehrat, L"kopirovat_do", [this] { runOnSelected(kCopyIntoFolder); });
    on(prehrat, L"preunut_do", [this] { runOnSelected(kMoveIntoFolder); });
    on(prehrat, L"zmazat_subor", [this] { runOnSelected(kDelete); });
    on(prehrat, L"premenovat_subor", [this] { premenovat_subor_Click(); });
    on(prehrat, L"vlozit_subor", [this] { vlozit_subor_Click(); });
    on(parts_.menuprestrom, L"strom_vloz_subor", [this] { vlozit_subor_Click(); });
}

void FileCommands::removeSelected() {
    alone([this] { runOnSelected(kDelete); });
}

void FileCommands::alone(const std::function<void()>& command) {
    if (parts_.form.isBusy() || parts_.form.isClosing()) return;
    const Form::Busy busy(parts_.form);
    command();
}

void FileCommands::runOnSelected(int operation) {
    FSOakcie::carryOut(explorer_, operation, parts_.selectedPath());
}

void FileCommands::vlozit_subor_Click() {
    const std::wstring& clipboard = parts_.txtsubor.text();
    const std::wstring copied = clipboard.substr(clipboard.find(L':') + 1);
    if (copied.empty()) return;
    const std::wstring found = fileOnDisk(copied), source = found.empty() ? copied : found;
    const std::wstring extension = fileExtension(source);
    const std::wstring destination =
        Cdialog::ShowSave(parts_.form, {.title = L"Uložiť súbor ako ...",
                                        .filter = extension + L" súbory|*." + extension,
                                        .folder = parts_.strom.selectedKey(),
                                        .name = fileName(source)});
    if (!destination.empty()) FSOakcie::carryOut(explorer_, kTransfer, source, destination);
}

void FileCommands::premenovat_subor_Click() {
    const std::wstring key = parts_.Tview.selectedKey();
    const std::wstring path = parts_.selectedPath();
    if (path.empty()) return;
    const std::wstring name = fileName(path);
    const std::wstring typed =
        askForText(parts_.form, {.title = L"Premenovať súbor",
                                 .prompt = L"Napíš nový názov súboru \r\n",
                                 .answer = name,
                                 .selected = std::min(name.rfind(L'.'), name.size())});
    if (typed.empty()) return;
    const std::wstring newName = newFileName(typed, path);
    const std::wstring newPath = parts_.strom.selectedKey() + newName;
    const auto refuse = [](const wchar_t* why) { ask(L"CHYBA", why, L"Ou kej ..."); };
    if (newPath == path) return refuse(L"Názov súbor sa zhoduje s pôvodným názvom !");
    if (fileAnswers(newPath))
        return refuse(
            L"Tento názov súboru sa už používa ! Zmeň ho, alebo odstráň súbor s týmto "
            L"názvom.");
    try {
        const std::wstring to = withBackslash(parentFolder(path)) + newName;
        if (!explorer_.carry(path, [path, to](const TransferHooks& hooks) {
                return FileSystemObject::moveFile(path, to, false, hooks);
            }))
            return;
    } catch (const RuntimeError& error) {
        FSOakcie::tellFailure(error);
        return;
    }
    parts_.renamed(key, newName);
}

bool FileCommands::strom_OLEDragOver(Point at) {
    TreeView& strom = parts_.strom;
    dropFolder_ = parts_.form.isBusy() ? std::wstring() : strom.nodeAt(at);
    strom.setDropHighlight(dropFolder_);
    strom.scrollNearEdge(at);
    return !dropFolder_.empty();
}

void FileCommands::strom_OLEDragDrop(const std::wstring& path) {
    const std::wstring folder = dropFolder_;
    copyDropped(path, folder,
                L"Chceš prekopírovať súbor '" + path + L"' do adresára " + folder + L" ?");
}

void FileCommands::Tview_OLEDragDrop(const std::wstring& path) {
    const std::wstring folder = parts_.txtPath.text();
    if (fileAnswers(path))
        copyDropped(
            path, folder,
            L"Naozaj chceš prekopírovať súbor '" + path + L"' do adresára '" + folder + L"' ?");
}

void FileCommands::copyDropped(const std::wstring& path, const std::wstring& folder,
                               const std::wstring& question) {
    alone([&] {
        if (ask(L"Kopírovať súbor", question, L"ÁNO;NIE") != 1) return;
        parts_.txtsubor.setText(kCopied + path);
        const std::wstring found = fileOnDisk(path), name = fileName(found.empty() ? path : found);
        FSOakcie::carryOut(explorer_, kTransfer, path, folder + name);
    });
}

}  // namespace tunovka
