#pragma once

#include <string>
#include <utility>
#include <vector>

#include "ui/list_model.h"

namespace tunovka {

struct TestRow {
    std::wstring key, text;
    std::wstring name() const { return text; }
};

// A model whose rows a test gives and changes as it likes.
class TestRows : public ListRows<TestRow> {
  public:
    explicit TestRows(std::vector<TestRow> rows = {}) { setRows(std::move(rows)); }

    ListRow row(std::size_t position) const override {
        return {.key = at(position).key, .name = at(position).text, .picture = L"winamp1"};
    }
    void add(TestRow row) {
        append(std::move(row));
        showAppended();
    }
    // "file 3.mp3", "file 2.mp3", "file 1.mp3", with the keys "0", "1", "2".
    void fill(int count) {
        std::vector<TestRow> rows;
        for (int i = 0; i < count; ++i)
            rows.push_back({std::to_wstring(i), L"file " + std::to_wstring(count - i) + L".mp3"});
        setRows(std::move(rows));
    }
    using ListRows::move;
    using ListRows::remove;
    using ListRows::removeAt;
    using ListRows::setRows;
    using ListRows::showAppended;
    using ListRows::sort;
};

}  // namespace tunovka
