#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "playlist/listed_files.h"

namespace tunovka {

// What can be told of a sound file by its bytes. They are foreign: every length is checked.

// How many bytes of a file's start, or of what is behind its ID3v2 tag, are looked at.
inline constexpr std::size_t kSoundStart = 65536;

// How many bytes of a file's start tell how long its ID3v2 tag or its ASF header is.
inline constexpr std::size_t kPreamble = 30;

// The length in bytes of the ID3v2 tag that a file begins with, 0 without one.
std::uint64_t id3v2Size(std::string_view fileStart);

// The length in bytes of the ASF header (the container of WMA) that a file begins with, preamble
// included; 0 when the file begins with something else. The number is what the file claims.
std::uint64_t asfHeaderSize(std::string_view fileStart);

// Where the frames of MPEG sound begin: at a frame that another one of its kind follows, or that
// ends the bytes. nullopt when there is none.
std::optional<std::size_t> mpegStart(std::string_view bytes);

// Whether the bytes, the first ones of a file of that size or those behind its ID3v2 tag, begin a
// sound: WAV or WMA with a whole header, MPEG frames, or the mark of another container. Codecs
// are not to be fed with anything else: what they make of garbage is beyond us.
bool beginsSound(std::string_view bytes, std::uint64_t fileSize);

// How the bytes of an MPEG file with variable bit rate lie in time, as its first frame tells.
struct VariableRate {
    double seconds = 0;          // the length; 0: not known
    std::vector<double> shares;  // of the bytes, at equal steps of time from 0 on

    // The share of the file, 0 to 1, at which a second begins.
    double shareAt(double second) const;
};
VariableRate variableRate(std::string_view firstFrame);

// Title and author of the content description in an ASF header; a header that is cut short gives
// what could be read.
ClipDetails asfDetails(std::string_view header);

// The last bytes of a file (128 or more) as an ID3v1 tag: title and artist without their padding.
// `fromAnsi` turns the code page's bytes into text.
ClipDetails id3v1Details(std::string_view fileEnd,
                         const std::function<std::wstring(std::string_view)>& fromAnsi);

// All of that of one file. Raises a RuntimeError when it cannot be read.
struct SoundFile {
    bool isSound = false;
    ClipDetails details;
    VariableRate rate;

    static SoundFile look(const std::wstring& path);
};

}  // namespace tunovka
