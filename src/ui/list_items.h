#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/multimedialny.h"
#include "ui/sort_order.h"

namespace tunovka {

// One row of a list view.
struct ListItem {
    std::wstring key;       // unique, compared exactly; any number of rows may have ""
    std::wstring text;      // what the row shows and is sorted by
    std::wstring imageKey;  // "" for no picture
    MultiMedialny::Color foreground = 0;
};

// The rows of a list view without its window. A key that is there already raises kKeyNotUnique and
// changes nothing, an unknown key kElementNotFound, a position past the end kSubscriptOutOfRange.
class ListItems {
  public:
    // Turns a text into bytes whose order is the order of the list.
    using SortKeyOf = std::function<std::string(std::wstring_view text)>;

    explicit ListItems(SortKeyOf sortKeyOf) : sortKeyOf_(std::move(sortKeyOf)) {}

    std::size_t count() const { return rows_.size(); }
    const ListItem& at(std::size_t position) const { return row(position).item; }
    std::optional<std::size_t> find(std::wstring_view key) const;  // "" is never found

    // While the list is sorted new rows take their places, else the end. Returns the new row's
    // position.
    std::size_t add(ListItem item);
    // Before the row at that position (the end: the count); kInvalidCall while sorted.
    void insert(std::size_t position, ListItem item);
    void addAll(std::vector<ListItem> items);
    // Replaces the whole content and ends the sorting.
    void setAll(std::vector<ListItem> items);

    void removeAt(std::size_t position);
    // Removes the rows of those keys, as far as they are there; returns how many it were.
    std::size_t remove(const std::vector<std::wstring>& keys);
    // The sorting stays: new rows take their places in it.
    void clear();

    void rename(std::wstring_view key, std::wstring newKey, std::wstring text);
    void setForeground(std::size_t position, MultiMedialny::Color color);
    // Takes a row out and puts it in at another position; in a sorted list nothing happens.
    void move(std::size_t from, std::size_t to);

    // Sorts and keeps the list sorted; None keeps the order that the rows have then. Rows with
    // equal texts stay in the order they have, in both directions.
    void sort(SortOrder order);
    SortOrder sortOrder() const { return sortOrder_; }

    // One row may carry a mark, which goes with it and is gone when the row is removed.
    void setMark(std::optional<std::size_t> position);
    std::optional<std::size_t> mark() const;

    // The first row, from a position on and then from the top, whose text begins with these
    // letters (whatever their case) or, when `whole`, is them.
    std::optional<std::size_t> findText(std::wstring_view letters, std::size_t from,
                                        bool whole) const;

  private:
    struct Row {
        ListItem item;
        std::string sortKey;  // made the first time that the row is sorted
        std::size_t position = 0;
    };
    using Rows = std::vector<std::unique_ptr<Row>>;
    Row& row(std::size_t position) const;
    void append(std::vector<ListItem> items);
    void placeFrom(std::size_t firstNew);
    void renumber(std::size_t from);

    Rows rows_;
    std::unordered_map<std::wstring_view, Row*> byKey_;  // rows with a key
    SortOrder sortOrder_ = SortOrder::None;
    SortKeyOf sortKeyOf_;
    const Row* marked_ = nullptr;
};

}  // namespace tunovka
