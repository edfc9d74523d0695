#pragma once

#include <string>
#include <vector>

#include "core/file_system.h"

namespace tunovka {

// A drive as a drive list shows it.
struct Drive {
    std::wstring name;  // "E:"
    DriveType type = DriveType::Unknown;
    std::wstring label;  // volume label, of a network drive its share; "" when it has or tells none

    // "E: [DATA]", "E:" without a label.
    std::wstring text() const { return label.empty() ? name : name + L" [" + label + L"]"; }
};

// The drives of this moment in the order of their letters. Only drives that answer at once are
// asked for a label: never a removable one or a disc, never a server. Of those that have not
// answered when the person gives the question up, the names alone.
std::vector<Drive> listDrives();

}  // namespace tunovka
