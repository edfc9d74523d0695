#include "editor/document.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <unordered_set>
#include <utility>

#include "core/errors.h"
#include "core/text.h"
#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"

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

void EditorDocument::clear(std::wstring_view path) {
    loadOrder_.clear();
    playlistPath_ = path;
    highestNumber_ = 0;
    changed_ = false;
    whole_ = false;
    empty_ = true;
    sort(SortOrder::None);
    setRows({});
}

void EditorDocument::openNew(std::wstring_view text) {
    clear(text);
    whole_ = true;
    empty_ = false;
}

void EditorDocument::load(std::wstring_view path, std::wstring_view text, FileQuestions& files,
                          const LoopHooks& hooks) {
    clear(path);
    whole_ = appendLines(text, 0, files, hooks, std::identity()).has_value();
    if (whole_ && count() == 0) append(std::vector<PlaylistEntry>(1));
}

std::optional<MergeReport> EditorDocument::merge(std::wstring_view droppedPath,
                                                 std::wstring_view text, FileQuestions& files,
                                                 const LoopHooks& hooks) {
    const std::wstring droppedFolder = playlistFolder(droppedPath);
    const bool before = std::exchange(changed_, true);  // also when an error cuts it short
    const auto report =
        appendLines(text, largestNumber(), files, hooks, [&](std::wstring_view line) {
            return mergedEntryPath(withoutFilePrefixAnyCase(line), droppedFolder);
        });
    if (!report) changed_ = before;
    return report;
}

// Appends the entries of a playlist's text, each with what `entryText` makes of its line, and shows
// them; those before an error as well. nullopt when cancelled.
template <class EntryText>
std::optional<MergeReport> EditorDocument::appendLines(std::wstring_view text,
                                                       std::int16_t lastNumber,
                                                       FileQuestions& files, const LoopHooks& hooks,
                                                       EntryText entryText) {
    std::vector<PlaylistEntry> entries;
    std::int16_t number = lastNumber;
    const std::wstring home = folder();
    std::wstring path;
    std::exception_ptr failure;
    try {
        WideLineReader lines(text);
        for (std::wstring_view line; lines.next(line);) {
            if (isPlaylistEntryLine(line)) {
                number = count16(number + 1);
                const auto entry = entryText(line);
                path = absoluteEntryPath(withoutFilePrefix(entry), home, std::move(path));
                files.ask(path);
                entries.push_back({entryKey(number, entry)});
            }
            if (!hooks.next()) return std::nullopt;
        }
    } catch (const RuntimeError&) {
        failure = std::current_exception();
    }
    const auto isThere = files.answers(hooks);
    if (!isThere) return std::nullopt;
    MergeReport report;
    for (PlaylistEntry& entry : entries) {
        entry.missing = !(*isThere)[report.added++];
        report.invalid += entry.missing;
    }
    appendEntries(lastNumber, std::move(entries));
    if (failure) std::rethrow_exception(failure);
    return report;
}

// Read out of the keys, so that a row without one raises its error before anything is changed.
std::int16_t EditorDocument::largestNumber() const {
    std::int16_t largest = highestNumber_;
    for (const PlaylistEntry& entry : rows()) largest = std::max(largest, entryNumberOf(entry.key));
    return largest;
}

// Puts rows at the end of the list and of the load order; `number` is the last one before theirs.
void EditorDocument::appendEntries(std::int16_t number, std::vector<PlaylistEntry> entries) {
    for (std::size_t row = 0; row < entries.size(); ++row) loadOrder_.push_back(++number);
    highestNumber_ = number;
    empty_ = empty_ && entries.empty();
    append(std::move(entries));
}

// The texts that `take` puts together out of all rows. Events run after each; nullopt when
// cancelled.
template <class Take>
std::optional<std::vector<std::wstring>> EditorDocument::collect(const LoopHooks& hooks,
                                                                 Take take) const {
    std::vector<std::wstring> texts;
    for (const PlaylistEntry& entry : rows()) {
        take(entry, texts);
        if (!hooks.next()) return std::nullopt;
    }
    return texts;
}

std::optional<bool> EditorDocument::holds(const std::wstring& path, const LoopHooks& hooks) const {
    const auto same = collect(hooks, [&, home = folder()](const PlaylistEntry& entry, auto& keys) {
        entryNumberOf(entry.key);  // raises the error of a row without a key
        if (entryPath(entry.key, home) == path) keys.push_back(entry.key);
    });
    if (!same) return std::nullopt;
    return !same->empty();
}

std::size_t EditorDocument::add(const std::wstring& path, const FileExistsTest& exists) {
    const std::int16_t before = largestNumber();
    const std::wstring key = entryKey(count16(before + 1), path);
    const bool missing = !exists(absoluteEntryPath(withoutFilePrefix(path), folder()));
    changed_ = true;
    appendEntries(before, {{key, missing}});
    return *find(key);
}

bool EditorDocument::move(std::wstring_view key, std::size_t to) {
    const auto from = find(key);
    if (sortOrder() != SortOrder::None || !from || *from == to || to >= count()) return false;
    changed_ = true;
    ListRows::move(*from, to);
    loadOrder_.clear();
    for (const PlaylistEntry& entry : rows())
        if (!entry.key.empty()) loadOrder_.push_back(entryNumberOf(entry.key));
    return true;
}

void EditorDocument::removeAt(std::size_t position) {
    changed_ = true;
    ListRows::removeAt(position);
}

std::optional<std::vector<std::wstring>> EditorDocument::duplicates(
    const std::vector<bool>& isThere, const LoopHooks& hooks) const {
    std::unordered_set<std::wstring> paths;
    auto there = isThere.begin();
    return collect(hooks, [&, home = folder()](const PlaylistEntry& entry, auto& keys) {
        if (*there++ && !paths.insert(entryPath(entry.key, home)).second) keys.push_back(entry.key);
    });
}

std::vector<std::wstring> EditorDocument::invalidLinks(const std::vector<bool>& isThere) const {
    std::vector<std::wstring> keys;
    for (std::size_t row = 0; row < count(); ++row)
        if (!isThere[row] && !at(row).key.empty()) keys.push_back(at(row).key);
    return keys;
}

std::size_t EditorDocument::remove(const std::vector<std::wstring>& keys) {
    const std::size_t removed = ListRows::remove(keys);
    changed_ = changed_ || removed > 0;
    return removed;
}

void EditorDocument::restoreLoadOrder(const std::vector<bool>& isThere) {
    constexpr std::uint32_t kNoRow = -1;
    std::vector<std::uint32_t> rowOf(highestNumber_ + 1, kNoRow);  // by number
    for (std::uint32_t row = 0; row < count(); ++row)
        if (!at(row).key.empty()) rowOf[entryNumberOf(at(row).key)] = row;

    std::erase_if(loadOrder_, [&](std::int16_t number) { return rowOf[number] == kNoRow; });
    sort(SortOrder::None);
    if (loadOrder_.empty()) return;
    std::vector<std::uint32_t> order;
    for (const std::int16_t number : loadOrder_) {
        const std::uint32_t row = rowOf[number];
        rowToChange(row).missing = !isThere[row];
        order.push_back(row);
    }
    reorder(order);
}

std::vector<std::wstring> EditorDocument::pathsToSave(const std::vector<bool>& isThere) const {
    const std::wstring home = folder();
    std::vector<std::wstring> paths;
    for (std::size_t row = 0; row < count(); ++row)
        if (isThere[row]) paths.push_back(entryPath(at(row).key, home));
    return paths;
}

}  // namespace tunovka
