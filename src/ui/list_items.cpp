#include "ui/list_items.h"

#include <algorithm>

#include "core/errors.h"
#include "core/text.h"

namespace tunovka {

ListItems::Row& ListItems::row(std::size_t position) const {
    if (position >= rows_.size()) throw RuntimeError(kSubscriptOutOfRange);
    return *rows_[position];
}

std::optional<std::size_t> ListItems::find(std::wstring_view key) const {
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) return std::nullopt;
    return found->second->position;
}

void ListItems::renumber(std::size_t from) {
    for (std::size_t i = from; i < rows_.size(); ++i) rows_[i]->position = i;
}

// Adds rows at the end: all of them, or none when a key is there already.
void ListItems::append(std::vector<ListItem> items) {
    const std::size_t before = rows_.size();
    if (items.size() > before) {  // else they are few, and what is there grows by itself
        rows_.reserve(before + items.size());
        byKey_.reserve(before + items.size());
    }
    for (ListItem& item : items) {
        rows_.push_back(std::make_unique<Row>(Row{std::move(item), {}, rows_.size()}));
        Row& added = *rows_.back();
        const std::wstring& key = added.item.key;
        if (key.empty() || byKey_.emplace(key, &added).second) continue;
        const std::wstring refused = key;
        rows_.pop_back();
        for (std::size_t i = before; i < rows_.size(); ++i) byKey_.erase(rows_[i]->item.key);
        rows_.resize(before);
        throw RuntimeError(kKeyNotUnique, refused);
    }
}

// Rows from `firstNew` on take their places in a sorted list; the others are in place.
void ListItems::placeFrom(std::size_t firstNew) {
    if (sortOrder_ == SortOrder::None || firstNew >= rows_.size()) return;
    const auto middle = rows_.begin() + firstNew;
    for (auto row = middle; row != rows_.end(); ++row) {
        std::string& key = (*row)->sortKey;
        if (!key.empty()) continue;
        key = sortKeyOf_((*row)->item.text);
        key.shrink_to_fit();  // it is made in a much larger text
    }
    const auto before = [descending = sortOrder_ == SortOrder::Descending](const auto& one,
                                                                           const auto& other) {
        return descending ? other->sortKey < one->sortKey : one->sortKey < other->sortKey;
    };
    std::stable_sort(middle, rows_.end(), before);
    std::inplace_merge(rows_.begin(), middle, rows_.end(), before);
    renumber(0);
}

std::size_t ListItems::add(ListItem item) {
    std::vector<ListItem> items;
    items.push_back(std::move(item));
    append(std::move(items));
    const Row& added = *rows_.back();
    placeFrom(rows_.size() - 1);
    return added.position;
}

void ListItems::insert(std::size_t position, ListItem item) {
    if (position > rows_.size()) throw RuntimeError(kSubscriptOutOfRange);
    if (sortOrder_ != SortOrder::None) throw RuntimeError(kInvalidCall);
    const std::size_t last = add(std::move(item));
    move(last, position);
}

void ListItems::addAll(std::vector<ListItem> items) {
    const std::size_t firstNew = rows_.size();
    append(std::move(items));
    placeFrom(firstNew);
}

void ListItems::setAll(std::vector<ListItem> items) {
    Rows oldRows = std::exchange(rows_, {});
    auto oldKeys = std::exchange(byKey_, {});
    try {
        rows_.reserve(items.size());
        byKey_.reserve(items.size());
        append(std::move(items));
    } catch (...) {
        rows_ = std::move(oldRows);
        byKey_ = std::move(oldKeys);
        throw;
    }
    sortOrder_ = SortOrder::None;
    marked_ = nullptr;
}

void ListItems::clear() {
    marked_ = nullptr;
    byKey_.clear();
    rows_.clear();
}

void ListItems::removeAt(std::size_t position) {
    if (&row(position) == marked_) marked_ = nullptr;
    byKey_.erase(rows_[position]->item.key);
    rows_.erase(rows_.begin() + position);
    renumber(position);
}

std::size_t ListItems::remove(const std::vector<std::wstring>& keys) {
    const std::size_t before = rows_.size();
    for (const std::wstring& key : keys) {
        const auto found = byKey_.find(key);
        if (found == byKey_.end()) continue;
        const std::size_t position = found->second->position;
        if (found->second == marked_) marked_ = nullptr;
        byKey_.erase(found);  // its text lies in the row
        rows_[position].reset();
    }
    std::erase(rows_, nullptr);
    renumber(0);
    return before - rows_.size();
}

void ListItems::rename(std::wstring_view key, std::wstring newKey, std::wstring text) {
    const auto position = find(key);
    if (!position) throw RuntimeError(kElementNotFound, key);
    const auto holder = find(newKey);
    if (holder && holder != position) throw RuntimeError(kKeyNotUnique, newKey);
    Row& renamed = *rows_[*position];
    byKey_.erase(renamed.item.key);
    renamed.item.key = std::move(newKey);
    renamed.item.text = std::move(text);
    renamed.sortKey.clear();
    if (!renamed.item.key.empty()) byKey_.emplace(renamed.item.key, &renamed);
    if (sortOrder_ == SortOrder::None) return;
    std::rotate(rows_.begin() + *position, rows_.begin() + *position + 1, rows_.end());
    placeFrom(rows_.size() - 1);
}

void ListItems::setForeground(std::size_t position, MultiMedialny::Color color) {
    row(position).item.foreground = color;
}

void ListItems::move(std::size_t from, std::size_t to) {
    row(from);
    row(to);
    if (sortOrder_ != SortOrder::None || from == to) return;
    const auto place = [this](std::size_t position) { return rows_.begin() + position; };
    if (from < to)
        std::rotate(place(from), place(from + 1), place(to + 1));
    else
        std::rotate(place(to), place(from), place(from + 1));
    renumber(std::min(from, to));
}

void ListItems::sort(SortOrder order) {
    sortOrder_ = order;
    placeFrom(0);
}

void ListItems::setMark(std::optional<std::size_t> position) {
    marked_ = position ? &row(*position) : nullptr;
}

std::optional<std::size_t> ListItems::mark() const {
    if (!marked_) return std::nullopt;
    return marked_->position;
}

std::optional<std::size_t> ListItems::findText(std::wstring_view letters, std::size_t from,
                                               bool whole) const {
    const std::wstring wanted = lowerCased(letters);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const std::size_t position = (from + i) % rows_.size();
        const std::wstring_view text = rows_[position]->item.text;
        if (text.size() < wanted.size() || (whole && text.size() != wanted.size())) continue;
        if (lowerCased(text.substr(0, wanted.size())) == wanted) return position;
    }
    return std::nullopt;
}

}  // namespace tunovka
