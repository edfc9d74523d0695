#include "core/paths.h"

namespace tunovka {
namespace {

constexpr std::size_t kNone = std::wstring_view::npos;

bool isSeparator(wchar_t letter) {
    return letter == L'\\' || letter == L'/';
}

bool isLetter(wchar_t letter) {
    return (letter >= L'a' && letter <= L'z') || (letter >= L'A' && letter <= L'Z');
}

// Length of the drive or share at the path's start, 0 without one.
std::size_t driveLength(std::wstring_view path) {
    if (path.size() >= 2 && path[1] == L':' && isLetter(path[0])) return 2;
    if (path.size() < 2 || !isSeparator(path[0]) || !isSeparator(path[1])) return 0;
    const std::size_t server = path.find_first_of(L"\\/", 2);
    if (server == 2 || server == kNone || server + 1 == path.size()) return 0;
    const std::size_t share = path.find_first_of(L"\\/", server + 1);
    if (share == server + 1) return 0;
    return share == kNone ? path.size() : share;
}

// Length of what can have no parent: the drive with its separator, or the separator alone.
std::size_t rootLength(std::wstring_view path) {
    const std::size_t drive = driveLength(path);
    const bool hasSeparator = drive < path.size() && isSeparator(path[drive]);
    return drive + (hasSeparator ? 1 : 0);
}

std::size_t withoutTrailingSeparators(std::wstring_view path, std::size_t root) {
    std::size_t end = path.size();
    while (end > root && isSeparator(path[end - 1])) --end;
    return end;
}

// Where the last part begins, given that the path ends at `end` without separators.
std::size_t lastPart(std::wstring_view path, std::size_t root, std::size_t end) {
    std::size_t begin = end;
    while (begin > root && !isSeparator(path[begin - 1])) --begin;
    return begin;
}

}  // namespace

std::wstring fileName(std::wstring_view path) {
    const std::size_t root = rootLength(path);
    const std::size_t end = withoutTrailingSeparators(path, root);
    const std::size_t begin = lastPart(path, root, end);
    return std::wstring(path.substr(begin, end - begin));
}

std::wstring fileExtension(std::wstring_view path) {
    const std::wstring name = fileName(path);
    const std::size_t dot = name.rfind(L'.');
    return dot == std::wstring::npos ? std::wstring() : name.substr(dot + 1);
}

std::wstring parentFolder(std::wstring_view path) {
    const std::size_t root = rootLength(path);
    const std::size_t end = withoutTrailingSeparators(path, root);
    if (end == root) return {};
    std::size_t begin = lastPart(path, root, end);
    while (begin > root && isSeparator(path[begin - 1])) --begin;
    // A share is a folder of its own, without the separator behind it.
    if (begin == root && driveLength(path) > 2) begin = driveLength(path);
    return std::wstring(path.substr(0, begin));
}

std::wstring driveName(std::wstring_view path) {
    return std::wstring(path.substr(0, driveLength(path)));
}

std::wstring withBackslash(std::wstring_view path) {
    std::wstring result(path);
    if (result.empty() || result.back() != L'\\') result += L'\\';
    return result;
}

std::wstring afterLastBackslash(std::wstring_view text) {
    return std::wstring(text.substr(text.rfind(L'\\') + 1));
}

}  // namespace tunovka
