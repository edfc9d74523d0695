#include "editor/document.h"

#include <algorithm>
#include <unordered_set>

#include "core/counter16.h"
#include "core/paths.h"
#include "editor/texts.h"
#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"
#include "playlist/line_reader.h"

namespace tunovka {

std::wstring PlaylistEntry::name() const {
    return key.empty() ? std::wstring(kNothingFound) : entryDisplayName(key);
}

ListRow EditorDocument::row(std::size_t position) const {
    const PlaylistEntry& entry = at(position);
    const MultiMedialny::SkinPalette& colors = MultiMedialny::palette();
    return {.key = entry.key,
            .name = entry.name(),
            .picture = {},
            .color = entry.missing ? colors.MissingEntryColor : colors.NodeForeColor};
}

std::wstring EditorDocument::folder() const {
    return playlistFolder(playlistPath_);
}

std::wstring EditorDocument::resolve(std::size_t position, const FileExistsTest& exists) const {
    return resolveEntryPath(at(position).key, folder(), exists);
}

void EditorDocument::reset(std::wstring_view playlistPath) {
    loadOrder_.clear();
    playlistPath_ = playlistPath;
    highestNumber_ = 0;
    changed_ = false;
    whole_ = false;
    empty_ = true;
    ListRows::sort(SortOrder::None);
    setRows({});
}

bool EditorDocument::clear(std::wstring_view path) {
    if (busy()) return false;
    reset(path);
    return true;
}

bool EditorDocument::openNew(std::wstring_view text) {
    if (!clear(text)) return false;
    whole_ = true;
    empty_ = false;
    return true;
}

bool EditorDocument::load(std::wstring_view path, std::wstring_view text,
                          const FileExistsTest& exists, const LoopHooks& hooks) {
    if (!clear(path)) return false;
    const Busy guard(*this);
    try {
        whole_ = readLines(text, exists, hooks);
    } catch (...) {
        showAppended();  // what was read before the error
        throw;
    }
    if (count() == 0) append({});
    showAppended();
    return true;
}

// False when cancelled.
bool EditorDocument::readLines(std::wstring_view text, const FileExistsTest& exists,
                               const LoopHooks& hooks) {
    const std::wstring home = folder();
    Counter16 number;
    WideLineReader lines(text);
    for (std::wstring_view line; lines.next(line);) {
        if (isPlaylistEntryLine(line)) {
            ++number;
            appendEntry(number, line, !exists(absoluteEntryPath(withoutFilePrefix(line), home)));
        }
        if (!hooks.next()) return false;
    }
    return true;
}

// Read out of the keys, so that a row without one raises its error before anything is changed.
std::int16_t EditorDocument::largestNumber() const {
    std::int16_t largest = highestNumber_;
    for (const PlaylistEntry& entry : rows()) largest = std::max(largest, entryNumberOf(entry.key));
    return largest;
}

// Puts a row at the end of the list and of the load order.
void EditorDocument::appendEntry(std::int16_t number, std::wstring_view entryText, bool missing) {
    loadOrder_.push_back(number);
    append({entryKey(number, entryText), missing});
    highestNumber_ = number;
    empty_ = false;
}

// Hands every row to `take` and lets events run; the document stays busy. False when cancelled.
template <class Take>
bool EditorDocument::forEachRow(const LoopHooks& hooks, Take take) {
    const Busy guard(*this);
    for (const PlaylistEntry& entry : rows()) {
        take(entry);
        if (!hooks.next()) return false;
    }
    return true;
}

std::optional<bool> EditorDocument::holds(const std::wstring& path, const LoopHooks& hooks) {
    if (busy()) return std::nullopt;
    bool found = false;
    const std::wstring home = folder();
    const bool whole = forEachRow(hooks, [&](const PlaylistEntry& entry) {
        entryNumberOf(entry.key);  // raises the error of a row without a key
        found = found || entryPath(entry.key, home) == path;
    });
    if (!whole) return std::nullopt;
    return found;
}

std::optional<std::size_t> EditorDocument::add(const std::wstring& path,
                                               const FileExistsTest& exists) {
    if (busy()) return std::nullopt;
    Counter16 number(largestNumber());
    ++number;
    appendEntry(number, path, !exists(absoluteEntryPath(withoutFilePrefix(path), folder())));
    const std::wstring key = rows().back().key;
    changed_ = true;
    showAppended();
    return find(key);
}

std::optional<MergeReport> EditorDocument::merge(std::wstring_view droppedPath,
                                                 std::wstring_view text,
                                                 const FileExistsTest& exists,
                                                 const LoopHooks& hooks) {
    if (busy()) return std::nullopt;
    const Busy guard(*this);
    MergeReport report;
    bool whole = false;
    try {
        whole = mergeLines(playlistFolder(droppedPath), text, exists, hooks, report);
    } catch (...) {
        showAppended();  // what was added before the error stays
        throw;
    }
    showAppended();
    if (!whole) return std::nullopt;
    changed_ = true;
    return report;
}

bool EditorDocument::mergeLines(std::wstring_view droppedFolder, std::wstring_view text,
                                const FileExistsTest& exists, const LoopHooks& hooks,
                                MergeReport& report) {
    Counter16 number(largestNumber());
    const std::wstring home = folder();
    WideLineReader lines(text);
    for (std::wstring_view line; lines.next(line);) {
        if (isPlaylistEntryLine(line)) {
            ++number;
            const std::wstring path =
                mergedEntryPath(withoutFilePrefixAnyCase(line), droppedFolder);
            const bool missing = !exists(absoluteEntryPath(withoutFilePrefix(path), home));
            appendEntry(number, path, missing);
            changed_ = true;
            ++report.added;
            if (missing) ++report.invalid;
        }
        if (!hooks.next()) return false;
    }
    return true;
}

std::optional<std::size_t> EditorDocument::move(std::wstring_view key, std::size_t to) {
    if (busy() || sortOrder() != SortOrder::None) return std::nullopt;
    const auto from = find(key);
    if (!from || *from == to || to >= count()) return std::nullopt;
    changed_ = true;
    ListRows::move(*from, to);
    loadOrder_.clear();
    for (const PlaylistEntry& entry : rows())
        if (!entry.key.empty()) loadOrder_.push_back(entryNumberOf(entry.key));
    return to;
}

bool EditorDocument::removeAt(std::size_t position) {
    if (busy() || position >= count()) return false;
    changed_ = true;
    ListRows::removeAt(position);
    return true;
}

std::optional<std::vector<std::wstring>> EditorDocument::duplicates(const FileExistsTest& exists,
                                                                    const LoopHooks& hooks) {
    if (busy()) return std::nullopt;
    std::vector<std::wstring> keys;
    std::unordered_set<std::wstring> paths;
    const std::wstring home = folder();
    const bool whole = forEachRow(hooks, [&](const PlaylistEntry& entry) {
        std::wstring path = resolveEntryPath(entry.key, home, exists);
        if (!path.empty() && !paths.insert(std::move(path)).second) keys.push_back(entry.key);
    });
    if (!whole) return std::nullopt;
    return keys;
}

std::optional<std::vector<std::wstring>> EditorDocument::invalidLinks(const FileExistsTest& exists,
                                                                      const LoopHooks& hooks) {
    if (busy()) return std::nullopt;
    std::vector<std::wstring> keys;
    const std::wstring home = folder();
    const bool whole = forEachRow(hooks, [&](const PlaylistEntry& entry) {
        const bool isLink = !entry.key.empty();
        if (isLink && !exists(entryPath(entry.key, home))) keys.push_back(entry.key);
    });
    if (!whole) return std::nullopt;
    return keys;
}

std::size_t EditorDocument::remove(const std::vector<std::wstring>& keys) {
    if (busy()) return 0;
    const std::size_t removed = ListRows::remove(keys);
    if (removed > 0) changed_ = true;
    return removed;
}

bool EditorDocument::sort(SortOrder order, const LoopHooks& hooks) {
    if (busy()) return false;
    const Busy guard(*this);
    return ListRows::sort(order, hooks);
}

bool EditorDocument::restoreLoadOrder(const FileExistsTest& exists, const LoopHooks& hooks) {
    if (busy()) return false;
    const Busy guard(*this);
    constexpr std::uint32_t kNoRow = -1;
    std::vector<std::uint32_t> rowOf(highestNumber_ + 1, kNoRow);  // by number
    for (std::uint32_t row = 0; row < count(); ++row)
        if (!rows()[row].key.empty()) rowOf[entryNumberOf(rows()[row].key)] = row;

    const std::wstring home = folder();
    std::vector<std::int16_t> left;
    std::vector<std::uint32_t> order;
    std::vector<bool> missing;
    for (const std::int16_t number : loadOrder_) {
        const std::uint32_t row = rowOf[number];
        if (row == kNoRow) continue;
        left.push_back(number);
        order.push_back(row);
        missing.push_back(!exists(entryPath(rows()[row].key, home)));
        if (!hooks.next()) return true;
    }
    ListRows::sort(SortOrder::None);
    if (order.empty()) return true;
    loadOrder_ = std::move(left);
    for (std::size_t i = 0; i < order.size(); ++i) rowToChange(order[i]).missing = missing[i];
    reorder(order);
    return true;
}

std::optional<std::vector<std::wstring>> EditorDocument::pathsToSave(const FileExistsTest& exists,
                                                                     const LoopHooks& hooks) {
    std::vector<std::wstring> paths;
    const std::wstring home = folder();
    const bool whole = forEachRow(hooks, [&](const PlaylistEntry& entry) {
        std::wstring path = resolveEntryPath(entry.key, home, exists);
        if (!path.empty()) paths.push_back(std::move(path));
    });
    if (!whole) return std::nullopt;
    return paths;
}

}  // namespace tunovka
