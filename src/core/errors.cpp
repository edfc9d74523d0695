#include "core/errors.h"

namespace tunovka {

std::wstring errorDescription(int number) {
    switch (number) {
        case kInvalidCall:
            return L"Invalid procedure call or argument";
        case kOverflow:
            return L"Overflow";
        case kOutOfMemory:
            return L"Out of memory";
        case kSubscriptOutOfRange:
            return L"Subscript out of range";
        case kTypeMismatch:
            return L"Type mismatch";
        case kBadFileName:
            return L"Bad file name or number";
        case kFileNotFound:
            return L"File not found";
        case kFileAlreadyExists:
            return L"File already exists";
        case kDiskFull:
            return L"Disk full";
        case kBadRecordNumber:
            return L"Bad record number";
        case kDeviceUnavailable:
            return L"Device unavailable";
        case kPermissionDenied:
            return L"Permission denied";
        case kPathFileAccess:
            return L"Path/File access error";
        case kPathNotFound:
            return L"Path not found";
        case kInvalidPattern:
            return L"Invalid pattern string";
        case kKeyAlreadyAssociated:
            return L"This key is already associated with an element of this collection";
        case kElementNotFound:
            return L"Element not found";
        case kKeyNotUnique:
            return L"Key is not unique in collection";
        default:
            return L"Application-defined or object-defined error";
    }
}

RuntimeError::RuntimeError(int number, std::wstring_view detail, std::wstring_view source)
    : number(number), description(errorDescription(number)), source(source) {
    if (detail.empty()) return;
    description += L": ";
    description += detail;
}

}  // namespace tunovka
