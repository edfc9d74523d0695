#include "player/media_file.h"

#include <algorithm>

#include "core/ansi.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/id3v1.h"
#include "core/multimedialny.h"
#include "core/text.h"
#include "player/asf_header.h"
#include "playlist/line_grammar.h"

namespace tunovka {
namespace {

// A header that claims more is not read further: titles stand near its start.
constexpr std::uint64_t kLongestHeader = 1 << 20;

ClipDetails readTags(const std::wstring& file) {
    const std::string start = FileSystemObject::readPart(file, 0, kAsfPreambleSize);
    if (const std::uint64_t header = asfHeaderSize(start)) {
        const auto size = static_cast<std::size_t>(std::min(header, kLongestHeader));
        return asfDetails(FileSystemObject::readPart(file, 0, size));
    }
    const std::uint64_t size = FileSystemObject::details(file).size;
    if (size < MultiMedialny::kId3v1Size) return {};
    return id3v1Details(FileSystemObject::readPart(file, size - MultiMedialny::kId3v1Size,
                                                   MultiMedialny::kId3v1Size),
                        fromAnsi);
}

}  // namespace

ClipDetails tagDetails(const std::wstring& file) {
    try {
        return readTags(file);
    } catch (const RuntimeError&) {
        return {};
    }
}

std::vector<PlaylistClip> clipsOf(const std::wstring& file) {
    if (!MultiMedialny::isPlaylistName(lowerCased(file))) return {{file, {}}};
    return readPlaylistClips(fromAnsi(FileSystemObject::readAll(file)), playlistFolder(file));
}

}  // namespace tunovka
