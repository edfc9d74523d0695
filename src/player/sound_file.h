#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "playlist/listed_files.h"

namespace tunovka {

// How the bytes of an MPEG file with variable bit rate lie in time.
struct VariableRate {
    double seconds = 0;          // the length; 0: the rate is not known to vary
    std::vector<double> shares;  // of the bytes, at equal steps of time from 0 on

    // The share of the file, 0 to 1, at which a second begins.
    double shareAt(double second) const;
};

// What can be told of a sound file by its bytes. They are foreign: every length is checked.
struct SoundFile {
    // Whether it is one: WAV or WMA with a whole header, MPEG frames, or the mark of another
    // container. Codecs are not to be fed with anything else.
    bool isSound = false;
    ClipDetails details;  // of the ASF header (WMA), else of the ID3v1 tag
    VariableRate rate;    // of the Xing or VBRI header

    // Looks at a file of `size` bytes. `read` gives at most `count` bytes from the place `at` on,
    // `fromAnsi` the text of bytes of the code page. Raises what they raise.
    using Read = std::function<std::string(std::uint64_t at, std::size_t count)>;
    static SoundFile look(std::uint64_t size, const Read& read,
                          const std::function<std::wstring(std::string_view)>& fromAnsi);
};

// Title and author in an ASF header (the container of WMA), as far as it can be read.
ClipDetails asfDetails(std::string_view header);

}  // namespace tunovka
