#include "core/ansi.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/id3v1.h"

namespace tunovka::MultiMedialny {

Id3v1Tag ReadId3v1(const std::wstring& path) {
    if (!FileSystemObject::FileExists(path)) return {};
    const std::string end = FileSystemObject::readEnd(path, kId3v1Size);
    if (end.size() < kId3v1Size) throw RuntimeError(kBadRecordNumber, {}, L"MultiMedialny");
    return parseId3v1(end, fromAnsi).value_or(Id3v1Tag{});
}

}  // namespace tunovka::MultiMedialny
