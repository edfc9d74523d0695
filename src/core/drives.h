#pragma once

#include <string>
#include <vector>

namespace tunovka {

// The drives of this moment in the order of their letters, as a drive list shows them: "E: [DATA]",
// of a network drive with its share; "E:" for one that has or tells no label. Only drives that
// answer at once are asked for it: never a removable one or a disc, never a server. Of those that
// have not answered when the person gives the question up, the names alone.
std::vector<std::wstring> listDrives();

}  // namespace tunovka
