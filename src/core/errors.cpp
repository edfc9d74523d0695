#include "core/errors.h"

#include <algorithm>
#include <iterator>

namespace tunovka {
namespace {

struct Description {
    int number;
    const wchar_t* sentence;
};

constexpr Description kDescriptions[] = {
    {kInvalidCall, L"Neplatné volanie alebo údaj"},
    {kOverflow, L"Pretečenie: číslo je priveľké"},
    {kOutOfMemory, L"Nedostatok pamäte. Zavri iné programy a skús to znova"},
    {kTypeMismatch, L"Údaj je iného druhu"},
    {kInternalError, L"Vnútorná chyba programu"},
    {kBadFileName, L"Neplatný názov súboru alebo priečinka"},
    {kFileNotFound, L"Súbor sa nenašiel"},
    {kFileAlreadyExists, L"Súbor s takýmto názvom už existuje"},
    {kDiskFull, L"Disk je plný. Uvoľni na ňom miesto a skús to znova"},
    {kBadRecordNumber, L"Súbor je na to, čo sa z neho číta, príliš krátky"},
    {kDeviceUnavailable, L"Zariadenie neodpovedá. Skontroluj, či je pripojené a zapnuté"},
    {kPermissionDenied, L"Prístup bol odmietnutý. Súbor je chránený alebo ho používa iný program"},
    {kPathFileAccess, L"K súboru alebo priečinku sa nedá pristupovať"},
    {kPathNotFound, L"Cesta sa nenašla. Skontroluj, či je disk pripojený a priečinok na ňom"},
    {kKeyNotUnique, L"Taký kľúč už v zozname je"},
};

// Errors of the system by their numbers in winerror.h. A sentence stands only where it tells more
// than that of the number.
struct SystemError {
    unsigned long code = 0;
    int number = 0;
    const wchar_t* sentence = nullptr;
};

constexpr wchar_t kInUse[] = L"Súbor používa iný program. Zavri ho v ňom a skús to znova";
constexpr wchar_t kTooLarge[] =
    L"Súbor je na tento disk priveľký. Súbory nad 4 GB pojme len disk so systémom NTFS alebo exFAT";
constexpr wchar_t kGone[] =
    L"Disk alebo sieť neodpovedá. Skontroluj, či je disk pripojený a počítač v sieti zapnutý";

constexpr SystemError kSystemErrors[] = {
    {2, kFileNotFound},     // ERROR_FILE_NOT_FOUND
    {3, kPathNotFound},     // ERROR_PATH_NOT_FOUND
    {5, kPermissionDenied,  // ERROR_ACCESS_DENIED
     L"Prístup bol odmietnutý. Súbor je chránený alebo naň nemáš práva; zruš mu ochranu alebo zvoľ "
     L"iný priečinok"},
    {15, kPathNotFound},     // ERROR_INVALID_DRIVE
    {19, kPermissionDenied,  // ERROR_WRITE_PROTECT
     L"Disk je chránený proti zápisu. Zruš ochranu alebo zvoľ iný disk"},
    {21, kPathNotFound,  // ERROR_NOT_READY
     L"Disk nie je pripravený. Vlož do mechaniky médium a skús to znova"},
    {32, kPermissionDenied, kInUse},   // ERROR_SHARING_VIOLATION
    {33, kPermissionDenied, kInUse},   // ERROR_LOCK_VIOLATION
    {39, kDiskFull},                   // ERROR_HANDLE_DISK_FULL
    {51, kPathNotFound, kGone},        // ERROR_REM_NOT_LIST
    {53, kPathNotFound, kGone},        // ERROR_BAD_NETPATH
    {55, kPathNotFound, kGone},        // ERROR_DEV_NOT_EXIST
    {64, kPathNotFound, kGone},        // ERROR_NETNAME_DELETED
    {65, kPermissionDenied},           // ERROR_NETWORK_ACCESS_DENIED
    {66, kPathNotFound},               // ERROR_BAD_DEV_TYPE, of a network path
    {67, kPathNotFound, kGone},        // ERROR_BAD_NET_NAME
    {80, kFileAlreadyExists},          // ERROR_FILE_EXISTS
    {112, kDiskFull},                  // ERROR_DISK_FULL
    {121, kPathNotFound, kGone},       // ERROR_SEM_TIMEOUT
    {123, kBadFileName},               // ERROR_INVALID_NAME
    {161, kBadFileName},               // ERROR_BAD_PATHNAME
    {183, kFileAlreadyExists},         // ERROR_ALREADY_EXISTS
    {206, kBadFileName},               // ERROR_FILENAME_EXCED_RANGE
    {223, kDiskFull, kTooLarge},       // ERROR_FILE_TOO_LARGE
    {267, kPathNotFound},              // ERROR_DIRECTORY
    {303, kPermissionDenied, kInUse},  // ERROR_DELETE_PENDING
    {665, kDiskFull, kTooLarge},       // ERROR_FILE_SYSTEM_LIMITATION
    {1005, kPathNotFound},             // ERROR_UNRECOGNIZED_VOLUME
    {1110, kPathNotFound, kGone},      // ERROR_MEDIA_CHANGED
    {1117, kPathFileAccess,            // ERROR_IO_DEVICE
     L"Disk sa nedá čítať alebo naň zapísať. Skontroluj, či nie je poškodený alebo odpojený"},
    {1167, kPathNotFound, kGone},       // ERROR_DEVICE_NOT_CONNECTED
    {1224, kPermissionDenied, kInUse},  // ERROR_USER_MAPPED_FILE
    {1231, kPathNotFound, kGone},       // ERROR_NETWORK_UNREACHABLE
    {1295, kDiskFull,                   // ERROR_DISK_QUOTA_EXCEEDED
     L"Na disku je vyčerpané miesto, ktoré ti patrí. Uvoľni na ňom miesto a skús to znova"},
};

const SystemError* known(unsigned long code) {
    const auto* const found = std::ranges::find(kSystemErrors, code, &SystemError::code);
    return found == std::end(kSystemErrors) ? nullptr : found;
}

}  // namespace

std::wstring errorDescription(int number) {
    const auto* const found = std::ranges::find(kDescriptions, number, &Description::number);
    return found == std::end(kDescriptions) ? L"Neznáma chyba" : found->sentence;
}

int errorNumberOf(unsigned long systemError) {
    const SystemError* const error = known(systemError);
    return error ? error->number : kPathFileAccess;
}

RuntimeError::RuntimeError(int number, std::wstring_view detail, std::wstring_view source)
    : number(number), description(errorDescription(number)), source(source) {
    if (detail.empty()) return;
    description += L": ";
    description += detail;
}

void raiseSystemError(unsigned long systemError) {
    RuntimeError failure(errorNumberOf(systemError), {}, L"FileSystemObject");
    const SystemError* const error = known(systemError);
    if (error && error->sentence) failure.description = error->sentence;
    throw RuntimeError(failure);
}

}  // namespace tunovka
