#include "player/sound_file.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/id3v1.h"
#include "core/text.h"

namespace tunovka {
namespace {

using namespace std::string_view_literals;
using Bytes = std::string_view;

constexpr auto kAsfHeader = "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv;
constexpr auto kContentDescription =
    "\x33\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv;
constexpr std::size_t kGuidSize = 16;
constexpr std::size_t kObjectPreamble = kGuidSize + 8;  // GUID and 64-bit length
constexpr std::size_t kAsfPreamble = 30;                // of the header, with what is behind these

// How much is looked at of a file's start, or of what is behind its ID3v2 tag.
constexpr std::size_t kStart = 65536;
// An ASF header that claims more is not read further: titles stand near its start.
constexpr std::uint64_t kLongestHeader = 1 << 20;

// Bytes past the end count as 0.
std::uint8_t byteAt(Bytes bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<std::uint8_t>(bytes[at]) : 0;
}

std::uint64_t littleEndian(Bytes bytes, std::size_t at, std::size_t count) {
    std::uint64_t value = 0;
    while (count-- > 0) value = value << 8 | byteAt(bytes, at + count);
    return value;
}

std::uint32_t bigEndian(Bytes bytes, std::size_t at, std::size_t count = 4) {
    std::uint32_t value = 0;
    for (; count-- > 0; ++at) value = value << 8 | byteAt(bytes, at);
    return value;
}

Bytes part(Bytes bytes, std::size_t at, std::size_t count) {
    return at < bytes.size() ? bytes.substr(at, count) : Bytes();
}

struct MpegFrame {
    std::uint32_t kind = 0;  // what all frames of a file have in common
    std::size_t length = 0;  // bytes
    double seconds = 0;
    std::size_t xing = 0;  // where a Xing header begins
};

std::optional<MpegFrame> mpegFrame(Bytes bytes) {
    using Rates = std::array<std::uint16_t, 14>;  // thousands of bits a second
    static constexpr Rates kRates[] = {
        {32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},  // MPEG 1, layer I
        {32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},     // layer II
        {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},      // layer III
        {32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},     // MPEG 2, layer I
        {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}};         // layers II and III
    constexpr unsigned kHertz[] = {44100, 48000, 32000};

    if (bytes.size() < 4) return std::nullopt;
    const std::uint32_t head = bigEndian(bytes, 0);
    const unsigned version = head >> 19 & 3;  // 0: 2.5, 2: 2, 3: 1
    const unsigned layer = 4 - (head >> 17 & 3);
    const unsigned rate = head >> 12 & 15, hertzAt = head >> 10 & 3, padding = head >> 9 & 1;
    if (head >> 21 != 0x7FF || version == 1 || layer == 4 || rate == 0 || rate == 15 ||
        hertzAt == 3)
        return std::nullopt;
    const bool first = version == 3, mono = (head >> 6 & 3) == 3;
    const unsigned hertz = kHertz[hertzAt] >> (first ? 0 : version == 2 ? 1 : 2);
    const unsigned samples = layer == 1 ? 384 : layer == 3 && !first ? 576 : 1152;
    const unsigned bits = kRates[first ? layer - 1 : layer == 1 ? 3 : 4][rate - 1] * 1000U;
    const unsigned slot = layer == 1 ? 4 : 1;  // bytes by which a frame grows
    MpegFrame frame;
    frame.kind = head & 0xFFFE0C00;
    frame.length = (samples / 8 / slot * bits / hertz + padding) * slot;
    frame.seconds = static_cast<double>(samples) / hertz;
    frame.xing = 4 + (first ? (mono ? 17 : 32) : (mono ? 9 : 17));
    return frame;
}

// A format with sane numbers, then data; chunks past the bytes are not looked for.
bool isWave(Bytes bytes, std::uint64_t fileSize) {
    bool formatSeen = false;
    for (std::uint64_t at = 12; at + 8 <= fileSize;) {
        const Bytes chunk = part(bytes, static_cast<std::size_t>(at), Bytes::npos);
        if (chunk.size() < 8 || chunk.starts_with("data")) return formatSeen;
        if (chunk.starts_with("fmt ")) {
            const auto channels = littleEndian(chunk, 10, 2), hertz = littleEndian(chunk, 12, 4);
            const auto block = littleEndian(chunk, 20, 2), bits = littleEndian(chunk, 22, 2);
            const bool plain = littleEndian(chunk, 8, 2) == 1;
            formatSeen = littleEndian(chunk, 4, 4) >= 16 && channels > 0 && channels <= 64 &&
                         hertz >= 100 && hertz <= 1'000'000 && block > 0 &&
                         (!plain || block == channels * ((bits + 7) / 8));
            if (!formatSeen) return false;
        }
        const std::uint64_t size = littleEndian(chunk, 4, 4);
        at += 8 + size + size % 2;
    }
    return false;
}

// UTF-16 up to the first NUL.
std::wstring fromUtf16(Bytes bytes) {
    std::wstring text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto unit = static_cast<wchar_t>(littleEndian(bytes, at, 2));
        if (unit == 0) break;
        text += unit;
    }
    return trimBlanks(text);
}

// Five 16-bit lengths (title, author, copyright, description, rating), then the five texts.
ClipDetails contentDescription(Bytes body) {
    constexpr std::size_t texts = 5 * 2;
    const auto titleSize = static_cast<std::size_t>(littleEndian(body, 0, 2));
    const auto authorSize = static_cast<std::size_t>(littleEndian(body, 2, 2));
    return {fromUtf16(part(body, texts, titleSize)),
            fromUtf16(part(body, texts + titleSize, authorSize))};
}

// The length of the ID3v2 tag that a file begins with, 0 without one.
std::uint64_t id3v2Size(Bytes start) {
    if (!start.starts_with("ID3") || start.size() < 10) return 0;
    std::uint64_t size = 0;  // of seven bits each
    for (std::size_t at = 6; at < 10; ++at) size = size << 7 | (byteAt(start, at) & 0x7F);
    const bool footer = (byteAt(start, 5) & 0x10) != 0;
    return 10 + size + (footer ? 10 : 0);
}

// The length that the ASF header claims which a file begins with, 0 without one.
std::uint64_t asfHeaderSize(Bytes start) {
    if (start.size() < kAsfPreamble || !start.starts_with(kAsfHeader)) return 0;
    return littleEndian(start, kGuidSize, 8);
}

// Where the frames of MPEG sound begin: at a frame that another one of its kind follows, or that
// ends the bytes. npos when there is none.
std::size_t mpegStart(Bytes bytes) {
    for (std::size_t at = 0; at + 4 <= bytes.size(); ++at) {
        if (byteAt(bytes, at) != 0xFF) continue;
        const std::optional<MpegFrame> frame = mpegFrame(bytes.substr(at));
        if (!frame) continue;
        const Bytes rest = part(bytes, at + frame->length, Bytes::npos);
        const std::optional<MpegFrame> next = mpegFrame(rest);
        if (next && next->kind == frame->kind) return at;
        const bool ends =
            at + frame->length <= bytes.size() && (rest.empty() || rest.starts_with("TAG"));
        if (ends) return at;
    }
    return Bytes::npos;
}

// Whether the bytes, a file's first ones or those behind its ID3v2 tag, begin a sound.
bool beginsSound(Bytes bytes, std::uint64_t fileSize) {
    if (bytes.starts_with("RIFF") && part(bytes, 8, 4) == "WAVE") return isWave(bytes, fileSize);
    if (bytes.starts_with(kAsfHeader)) {
        const std::uint64_t header = asfHeaderSize(bytes);
        return header >= kAsfPreamble && header < fileSize;
    }
    for (const Bytes mark : {"OggS"sv, "fLaC"sv, "RF64"sv, "FORM"sv, "MThd"sv, ".snd"sv})
        if (bytes.starts_with(mark)) return true;
    return part(bytes, 4, 4) == "ftyp" || mpegStart(bytes) != Bytes::npos;
}

VariableRate variableRate(Bytes firstFrame) {
    const std::optional<MpegFrame> frame = mpegFrame(firstFrame);
    if (!frame) return {};
    VariableRate rate;
    if (const Bytes xing = part(firstFrame, frame->xing, 120);
        xing.starts_with("Xing") || xing.starts_with("Info")) {
        const std::uint32_t holds = bigEndian(xing, 4);  // 1: frames, 2: bytes, 4: the table
        if (holds & 1) rate.seconds = bigEndian(xing, 8) * frame->seconds;
        const std::size_t table = 8 + (holds & 1 ? 4 : 0) + (holds & 2 ? 4 : 0);
        if (holds & 4 && table + 100 <= xing.size())
            for (std::size_t at = 0; at < 100; ++at)
                rate.shares.push_back(byteAt(xing, table + at) / 256.0);
    } else if (const Bytes vbri = part(firstFrame, 36, Bytes::npos); vbri.starts_with("VBRI")) {
        rate.seconds = bigEndian(vbri, 14) * frame->seconds;
        const std::size_t count = bigEndian(vbri, 18, 2), scale = bigEndian(vbri, 20, 2);
        const std::size_t size = std::min<std::size_t>(bigEndian(vbri, 22, 2), 4);
        double sum = 0;
        for (std::size_t at = 0; at < count; ++at) {
            rate.shares.push_back(sum);
            sum += static_cast<double>(bigEndian(vbri, 26 + at * size, size)) *
                   static_cast<double>(scale);
        }
        if (sum > 0)
            for (double& share : rate.shares) share /= sum;
        else
            rate.shares.clear();
    }
    return rate;
}

}  // namespace

double VariableRate::shareAt(double second) const {
    const double share = seconds > 0 ? std::clamp(second / seconds, 0.0, 1.0) : 0;
    if (shares.empty()) return share;
    const double step = share * static_cast<double>(shares.size());
    const std::size_t at = std::min(static_cast<std::size_t>(step), shares.size() - 1);
    const double next = at + 1 < shares.size() ? shares[at + 1] : 1;
    return shares[at] + (next - shares[at]) * (step - static_cast<double>(at));
}

ClipDetails asfDetails(std::string_view header) {
    if (asfHeaderSize(header) == 0) return {};
    Bytes rest = header.substr(kAsfPreamble);
    while (rest.size() >= kObjectPreamble) {
        const std::uint64_t size = littleEndian(rest, kGuidSize, 8);
        if (size < kObjectPreamble) return {};
        const Bytes object = rest.substr(0, size < rest.size() ? size : rest.size());
        if (object.starts_with(kContentDescription))
            return contentDescription(object.substr(kObjectPreamble));
        rest.remove_prefix(object.size());
    }
    return {};
}

SoundFile SoundFile::look(std::uint64_t size, const Read& read,
                          const std::function<std::wstring(std::string_view)>& fromAnsi) {
    std::string start = read(0, kStart);
    if (const std::uint64_t tag = id3v2Size(start)) start = read(tag, kStart);

    SoundFile file{.isSound = beginsSound(start, size), .details = {}, .rate = {}};
    file.rate = variableRate(part(start, mpegStart(start), Bytes::npos));
    if (const std::uint64_t header = std::min(asfHeaderSize(start), kLongestHeader)) {
        file.details = asfDetails(read(0, static_cast<std::size_t>(header)));
    } else if (constexpr auto length = MultiMedialny::kId3v1Size; size >= length) {
        if (const auto tag = MultiMedialny::parseId3v1(read(size - length, length), fromAnsi))
            file.details = {MultiMedialny::shownField(tag->Title),
                            MultiMedialny::shownField(tag->Artist)};
    }
    return file;
}

}  // namespace tunovka
