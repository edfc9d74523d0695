#include "ui/list_model.h"

#include <algorithm>
#include <numeric>

#include "core/text.h"

namespace tunovka {

std::optional<std::size_t> ListModel::findName(std::wstring_view letters, std::size_t from,
                                               bool whole) const {
    const std::wstring wanted = lowerCased(letters);
    const std::size_t rows = count();
    for (std::size_t i = 0; i < rows; ++i) {
        const std::size_t position = (from + i) % rows;
        const std::wstring name = row(position).name;
        if (name.size() < wanted.size() || (whole && name.size() != wanted.size())) continue;
        if (lowerCased(name.substr(0, wanted.size())) == wanted) return position;
    }
    return std::nullopt;
}

void SortedTexts::add(std::wstring_view text) {
    keys_ += sortKey(text);
    ends_.push_back(static_cast<std::uint32_t>(keys_.size()));
}

std::string_view SortedTexts::keyAt(std::size_t position) const {
    const std::size_t begin = position == 0 ? 0 : ends_[position - 1];
    return std::string_view(keys_).substr(begin, ends_[position] - begin);
}

std::vector<std::uint32_t> SortedTexts::positions(SortOrder order) const {
    std::vector<std::uint32_t> sorted(ends_.size());
    std::iota(sorted.begin(), sorted.end(), 0);
    std::ranges::stable_sort(sorted, [&](std::uint32_t one, std::uint32_t other) {
        if (order == SortOrder::Descending) std::swap(one, other);
        return keyAt(one) < keyAt(other);
    });
    return sorted;
}

}  // namespace tunovka
