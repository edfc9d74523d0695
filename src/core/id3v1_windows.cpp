#include "core/ansi.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/id3v1.h"

namespace tunovka::MultiMedialny {

Id3v1Tag ReadId3v1(const std::wstring& path) {
    if (!FileSystemObject::FileExists(path)) return {};
    const std::uint64_t size = FileSystemObject::details(path).size;
    if (size < kId3v1Size) throw RuntimeError(kBadRecordNumber, {}, L"MultiMedialny");
    const std::string end = FileSystemObject::readPart(path, size - kId3v1Size, kId3v1Size);
    return parseId3v1(end, fromAnsi).value_or(Id3v1Tag{});
}

}  // namespace tunovka::MultiMedialny
