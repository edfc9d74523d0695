#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "core/loop.h"
#include "core/multimedialny.h"

namespace tunovka {

// How a list is sorted by the names of its rows; None keeps the order in which they came.
enum class SortOrder { None, Ascending, Descending };

// The name of the row without a key that stands in a list of which nothing came.
inline constexpr std::wstring_view kNothingFound = L"neboli nájdené žiadne súbory";

// What a list view asks about a row.
struct ListRow {
    std::wstring_view key;  // a part of the model, until its rows change
    std::wstring name;      // what the row shows, and is found by when it is typed
    std::wstring picture;   // key of its picture, "" for none
    MultiMedialny::Color color = 0;
};

// What has happened to the rows of a model: where a row of before stands now, nullopt for a removed
// one. Empty when all rows are new.
using ListChange = std::function<std::optional<std::size_t>(std::size_t before)>;

// What a list view shows. Positions count from 0. Keys are unique and compared exactly; a row with
// the key "" stands for no file.
class ListModel {
  public:
    virtual ~ListModel() = default;

    virtual std::size_t count() const = 0;
    virtual ListRow row(std::size_t position) const = 0;

    // The first row, from a position on and then from the top, whose name begins with these
    // letters (whatever their case) or, when `whole`, is them.
    std::optional<std::size_t> findName(std::wstring_view letters, std::size_t from,
                                        bool whole) const;

    // Told after each change, once the rows are what they are. The list view takes it for itself.
    std::function<void(const ListChange&)> onChange;
};

// The positions of texts in the order of the user's language. Texts that are equal there stay in
// the order in which they were added, in both directions.
class SortedTexts {
  public:
    explicit SortedTexts(std::size_t count) { ends_.reserve(count); }
    void add(std::wstring_view text);
    std::vector<std::uint32_t> positions(SortOrder order) const;

  private:
    std::string_view keyAt(std::size_t position) const;

    std::string keys_;  // one after the other: tens of thousands of strings would take longer
    std::vector<std::uint32_t> ends_;
};

// The rows of a model in the order in which they are shown. A `Row` has a key and a name().
template <class Row>
class ListRows : public ListModel {
  public:
    std::size_t count() const override { return rows_.size(); }
    const std::vector<Row>& rows() const { return rows_; }
    SortOrder sortOrder() const { return sortOrder_; }

    std::optional<std::size_t> find(std::wstring_view key) const {  // "" is never found
        for (std::size_t i = 0; i < rows_.size() && !key.empty(); ++i)
            if (rows_[i].key == key) return i;
        return std::nullopt;
    }

  protected:
    const Row& at(std::size_t position) const { return rows_.at(position); }

    // Replaces all rows; the sorting stays as it is for those that come.
    void setRows(std::vector<Row> rows) {
        rows_ = std::move(rows);
        if (sortOrder_ == SortOrder::None) return tell({});
        sort(sortOrder_);
    }

    // Rows come at the end, or take their places in a sorted list.
    void append(std::vector<Row> rows) {
        if (rows_.empty()) rows_.swap(rows);
        for (Row& row : rows) rows_.push_back(std::move(row));
        if (sortOrder_ == SortOrder::None) return tell([](std::size_t before) { return before; });
        sort(sortOrder_);
    }

    void removeAt(std::size_t position) {
        removeIf([&](std::size_t i) { return i == position; });
    }

    // Removes the rows of those keys, as far as they are there, and returns how many there were.
    std::size_t remove(const std::vector<std::wstring>& keys) {
        const std::unordered_set<std::wstring_view> wanted(keys.begin(), keys.end());
        return removeIf(
            [&](std::size_t i) { return !rows_[i].key.empty() && wanted.contains(rows_[i].key); });
    }

    // Takes a row out and puts it in at another position.
    void move(std::size_t from, std::size_t to) {
        std::vector<std::uint32_t> order(rows_.size());
        for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
        order.erase(order.begin() + from);
        order.insert(order.begin() + to, from);
        reorder(order);
    }

    // Sorts by name and keeps the list sorted; None keeps the order of the moment. False when the
    // hooks, called for each row, have cancelled it: all is as before. While events run the rows
    // must not change.
    bool sort(SortOrder order, const LoopHooks& hooks = {}) {
        if (order != SortOrder::None) {
            SortedTexts names(rows_.size());
            for (const Row& row : rows_) {
                names.add(row.name());
                if (!hooks.next()) return false;
            }
            reorder(names.positions(order));
        }
        sortOrder_ = order;
        return true;
    }

    // Gives the rows another order: the present position of each. Those not named are removed.
    void reorder(const std::vector<std::uint32_t>& order) {
        std::vector<Row> before = std::move(rows_);
        rows_ = {};
        rows_.reserve(order.size());
        for (const std::uint32_t position : order) rows_.push_back(std::move(before[position]));
        tell([&](std::size_t position) -> std::optional<std::size_t> {
            for (std::size_t i = 0; i < order.size(); ++i)
                if (order[i] == position) return i;
            return std::nullopt;
        });
    }

    // For a change of rows in place, which moves none.
    Row& rowToChange(std::size_t position) { return rows_.at(position); }

  private:
    template <class Test>
    std::size_t removeIf(Test test) {
        std::vector<std::uint32_t> left;
        for (std::uint32_t i = 0; i < rows_.size(); ++i)
            if (!test(i)) left.push_back(i);
        const std::size_t removed = rows_.size() - left.size();
        reorder(left);
        return removed;
    }

    void tell(const ListChange& change) const {
        if (onChange) onChange(change);
    }

    std::vector<Row> rows_;
    SortOrder sortOrder_ = SortOrder::None;
};

}  // namespace tunovka
