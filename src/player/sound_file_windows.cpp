#include <algorithm>

#include "core/ansi.h"
#include "core/file_system.h"
#include "core/id3v1.h"
#include "player/sound_file.h"

namespace tunovka {
namespace {

// A header that claims more is not read further: titles stand near its start.
constexpr std::uint64_t kLongestHeader = 1 << 20;

}  // namespace

SoundFile SoundFile::look(const std::wstring& path) {
    const std::uint64_t size = FileSystemObject::details(path).size;
    std::string start = FileSystemObject::readPart(path, 0, kSoundStart);
    if (const std::uint64_t tag = id3v2Size(start))
        start = FileSystemObject::readPart(path, tag, kSoundStart);

    SoundFile file{.isSound = beginsSound(start, size), .details = {}, .rate = {}};
    if (const auto frame = mpegStart(start)) file.rate = variableRate(start.substr(*frame));
    if (const std::uint64_t header = std::min(asfHeaderSize(start), kLongestHeader)) {
        const auto length = static_cast<std::size_t>(header);
        file.details = asfDetails(FileSystemObject::readPart(path, 0, length));
    } else if (constexpr auto tag = MultiMedialny::kId3v1Size; size >= tag) {
        file.details = id3v1Details(FileSystemObject::readPart(path, size - tag, tag), fromAnsi);
    }
    return file;
}

}  // namespace tunovka
