#pragma once

namespace tunovka {

// How a list of rows is sorted by their texts; None keeps the order in which rows were added.
enum class SortOrder { None, Ascending, Descending };

}  // namespace tunovka
