#include "core/disk_questions.h"
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
    DiskQuestions<Drive> questions;
    const DWORD present = GetLogicalDrives();
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
        const std::wstring name = {letter, L':'};
        if (!(present >> (letter - L'A') & 1)) continue;
        drives.push_back({.name = name});
        questions.put([name] {
            Drive drive{name, FileSystemObject::driveType(name)};
            drive.label = labelOf(drive);
            return drive;
        });
    }
    for (Drive& drive : drives)
        if (const auto answer = questions.next(drive.name)) drive = *answer;
    return drives;
}

}  // namespace tunovka
