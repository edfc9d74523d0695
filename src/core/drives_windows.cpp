#include "core/disk_windows.h"
#include "core/drives.h"

namespace tunovka {
namespace {

std::wstring labelOf(const Drive& drive) {
    std::wstring label;
    switch (drive.type) {
        case DriveType::Network:  // what the connection was made to, as this machine remembers it
            Disk::share(drive.name, label);
            break;
        case DriveType::Removable:
        case DriveType::CdRom:
            break;
        default:
            Disk::label(drive.name + L"\\", label);
    }
    return label;
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
