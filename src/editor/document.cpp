#include "editor/document.h"

#include <algorithm>
#include <numeric>

#include "core/counter16.h"
#include "core/paths.h"
#include "editor/texts.h"
#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"
#include "playlist/line_reader.h"

namespace tunovka {

std::wstring EditorEntry::name() const {
    return key.empty() ? std::wstring(kNothingFound) : entryDisplayName(key);
}

std::optional<std::size_t> EditorDocument::positionOf(std::wstring_view key) const {
    if (key.empty()) return std::nullopt;
    const auto found = std::ranges::find(entries_, key, &EditorEntry::key);
    if (found == entries_.end()) return std::nullopt;
    return found - entries_.begin();
}

std::wstring EditorDocument::folder() const {
    return playlistFolder(playlistPath_);
}

std::wstring EditorDocument::resolve(std::size_t position, const FileExistsTest& exists) const {
    return resolveEntryPath(entries_.at(position).key, folder(), exists);
}

void EditorDocument::reset(std::wstring_view playlistPath) {
    entries_.clear();
    loadOrder_.clear();
    playlistPath_ = playlistPath;
    sortOrder_ = SortOrder::None;
    highestNumber_ = 0;
    changed_ = false;
    mayBeSaved_ = false;
}

bool EditorDocument::openNew(std::wstring_view text) {
    if (busy()) return false;
    reset(text);
    mayBeSaved_ = true;
    return true;
}

bool EditorDocument::load(std::wstring_view path, std::wstring_view text,
                          const FileExistsTest& exists, const LoopHooks& hooks) {
    if (busy()) return false;
    const Busy guard(*this);
    reset(path);
    const std::wstring home = folder();
    Counter16 number;
    WideLineReader lines(text);
    entries_.reserve(std::ranges::count(text, L'\n') + 1);
    for (std::wstring_view line; lines.next(line);) {
        if (isPlaylistEntryLine(line)) {
            ++number;
            const bool missing = !exists(absoluteEntryPath(withoutFilePrefix(line), home));
            append(number, line, missing);
        }
        if (!hooks.next()) return true;
    }
    mayBeSaved_ = !entries_.empty();
    if (entries_.empty()) entries_.push_back({});
    return true;
}

// Read out of the keys, so that a row without one raises its error before anything is changed.
std::int16_t EditorDocument::largestNumber() const {
    std::int16_t largest = highestNumber_;
    for (const EditorEntry& entry : entries_) largest = std::max(largest, entryNumberOf(entry.key));
    return largest;
}

// Puts a row at the end of the list and of the load order.
void EditorDocument::append(std::int16_t number, std::wstring_view entryText, bool missing) {
    loadOrder_.push_back(number);
    entries_.push_back({entryKey(number, entryText), missing});
    highestNumber_ = number;
}

// Gives the rows of a sorted list their places. Only positions are sorted: a row is moved once.
void EditorDocument::place() {
    if (sortOrder_ == SortOrder::None) return;
    for (EditorEntry& entry : entries_)
        if (entry.sortKey.empty()) entry.sortKey = sortKeyOf_(entry.name());
    std::vector<std::size_t> positions(entries_.size());
    std::iota(positions.begin(), positions.end(), 0);
    std::ranges::stable_sort(positions, [this](std::size_t one, std::size_t other) {
        if (sortOrder_ == SortOrder::Descending) std::swap(one, other);
        return entries_[one].sortKey < entries_[other].sortKey;
    });
    std::vector<EditorEntry> sorted;
    sorted.reserve(entries_.size());
    for (const std::size_t position : positions) sorted.push_back(std::move(entries_[position]));
    entries_ = std::move(sorted);
}

// Hands every row to `take` and lets events run; the document stays busy. False when cancelled.
template <class Take>
bool EditorDocument::forEachRow(const LoopHooks& hooks, Take take) {
    const Busy guard(*this);
    for (const EditorEntry& entry : entries_) {
        take(entry);
        if (!hooks.next()) return false;
    }
    return true;
}

std::optional<bool> EditorDocument::holds(const std::wstring& path, const LoopHooks& hooks) {
    if (busy()) return std::nullopt;
    bool found = false;
    const std::wstring home = folder();
    const bool whole = forEachRow(hooks, [&](const EditorEntry& entry) {
        entryNumberOf(entry.key);  // raises the error of a row without a key
        found = found || entryPath(entry.key, home) == path;
    });
    if (!whole) return std::nullopt;
    return found;
}

std::optional<std::size_t> EditorDocument::add(const std::wstring& path) {
    if (busy()) return std::nullopt;
    Counter16 number(largestNumber());
    ++number;
    append(number, path, false);
    const std::wstring key = entries_.back().key;
    changed_ = true;
    place();
    return positionOf(key);
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
        place();  // what was added before the error stays
        throw;
    }
    place();
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
            append(number, path, missing);
            changed_ = true;
            ++report.added;
            if (missing) ++report.invalid;
        }
        if (!hooks.next()) return false;
    }
    return true;
}

std::optional<std::size_t> EditorDocument::move(std::wstring_view key, std::size_t to) {
    if (busy() || sortOrder_ != SortOrder::None) return std::nullopt;
    const auto from = positionOf(key);
    if (!from || *from == to || to >= entries_.size()) return std::nullopt;
    const auto row = [this](std::size_t position) { return entries_.begin() + position; };
    if (*from < to)
        std::rotate(row(*from), row(*from + 1), row(to + 1));
    else
        std::rotate(row(to), row(*from), row(*from + 1));
    loadOrder_.clear();
    for (const EditorEntry& entry : entries_)
        if (!entry.key.empty()) loadOrder_.push_back(entryNumberOf(entry.key));
    changed_ = true;
    return to;
}

bool EditorDocument::removeAt(std::size_t position) {
    if (busy() || position >= entries_.size()) return false;
    entries_.erase(entries_.begin() + position);
    changed_ = true;
    return true;
}

std::optional<std::vector<std::wstring>> EditorDocument::duplicates(const FileExistsTest& exists,
                                                                    const LoopHooks& hooks) {
    if (busy()) return std::nullopt;
    std::vector<std::wstring> keys;
    std::unordered_set<std::wstring> paths;
    const std::wstring home = folder();
    const bool whole = forEachRow(hooks, [&](const EditorEntry& entry) {
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
    const bool whole = forEachRow(hooks, [&](const EditorEntry& entry) {
        const bool isLink = !entry.key.empty();
        if (isLink && !exists(entryPath(entry.key, home))) keys.push_back(entry.key);
    });
    if (!whole) return std::nullopt;
    return keys;
}

std::size_t EditorDocument::remove(const std::vector<std::wstring>& keys) {
    if (busy()) return 0;
    const std::unordered_set<std::wstring_view> gone(keys.begin(), keys.end());
    const std::size_t removed =
        std::erase_if(entries_, [&](const EditorEntry& entry) { return gone.contains(entry.key); });
    if (removed > 0) changed_ = true;
    return removed;
}

bool EditorDocument::sort(SortOrder order, SortKeyOf keyOf, const LoopHooks& hooks) {
    if (busy()) return false;
    const Busy guard(*this);
    // Making the keys is what takes time.
    for (EditorEntry& entry : entries_) {
        entry.sortKey = keyOf(entry.name());
        if (!hooks.next()) return false;
    }
    sortOrder_ = order;
    sortKeyOf_ = std::move(keyOf);
    place();
    return true;
}

bool EditorDocument::restoreLoadOrder(const FileExistsTest& exists, const LoopHooks& hooks) {
    if (busy()) return false;
    const Busy guard(*this);
    constexpr std::size_t kNoRow = -1;
    std::vector<std::size_t> rowOf(highestNumber_ + 1, kNoRow);  // by number
    for (std::size_t row = 0; row < entries_.size(); ++row)
        if (!entries_[row].key.empty()) rowOf[entryNumberOf(entries_[row].key)] = row;

    const std::wstring home = folder();
    std::vector<std::int16_t> order;
    std::vector<bool> missing;
    for (const std::int16_t number : loadOrder_) {
        if (rowOf[number] == kNoRow) continue;
        order.push_back(number);
        missing.push_back(!exists(entryPath(entries_[rowOf[number]].key, home)));
        if (!hooks.next()) return true;
    }
    sortOrder_ = SortOrder::None;
    if (order.empty()) return true;
    std::vector<EditorEntry> restored;
    restored.reserve(order.size());
    for (const std::int16_t number : order) {
        restored.push_back(std::move(entries_[rowOf[number]]));
        restored.back().missing = missing[restored.size() - 1];
    }
    entries_ = std::move(restored);
    loadOrder_ = std::move(order);
    return true;
}

std::optional<std::vector<std::wstring>> EditorDocument::pathsToSave(const FileExistsTest& exists,
                                                                     const LoopHooks& hooks) {
    std::vector<std::wstring> paths;
    const std::wstring home = folder();
    const bool whole = forEachRow(hooks, [&](const EditorEntry& entry) {
        std::wstring path = resolveEntryPath(entry.key, home, exists);
        if (!path.empty()) paths.push_back(std::move(path));
    });
    if (!whole) return std::nullopt;
    return paths;
}

}  // namespace tunovka
