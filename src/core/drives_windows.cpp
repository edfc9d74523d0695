#include <windows.h>

#include "core/drives.h"
#include "core/late_function.h"

namespace tunovka {
namespace {

std::wstring volumeLabel(const std::wstring& drive) {
    wchar_t label[MAX_PATH + 1] = {};
    GetVolumeInformationW((drive + L"\\").c_str(), label, MAX_PATH + 1, nullptr, nullptr, nullptr,
                          nullptr, 0);
    return label;
}

// What the connection was made to, as this machine remembers it.
std::wstring shareName(const std::wstring& drive) {
    static const LateFunction<decltype(WNetGetConnectionW)> connection(L"mpr.dll",
                                                                       "WNetGetConnectionW");
    wchar_t share[MAX_PATH + 1] = {};
    DWORD length = MAX_PATH + 1;
    return connection && connection(drive.c_str(), share, &length) == NO_ERROR ? share : L"";
}

std::wstring labelOf(const Drive& drive) {
    switch (drive.type) {
        case DriveType::Network:
            return shareName(drive.name);
        case DriveType::Removable:
            return {};
        default:
            return volumeLabel(drive.name);
    }
}

}  // namespace

std::vector<Drive> listDrives() {
    std::vector<Drive> drives;
    const DWORD present = GetLogicalDrives();
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
        if (!(present >> (letter - L'A') & 1)) continue;
        Drive drive;
        drive.name = {letter, L':'};
        drive.type = FileSystemObject::driveType(drive.name);
        drive.label = labelOf(drive);
        drives.push_back(std::move(drive));
    }
    return drives;
}

}  // namespace tunovka
