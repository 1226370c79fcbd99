#include "base/Utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

bool continues(unsigned char c) {
    return (c & 0xC0) == 0x80;
}

// Length of the sequence at `p`, of which `left` bytes are there, or 0 when it is ill-formed.
std::size_t sequenceLength(const unsigned char* p, std::size_t left) {
    const unsigned char lead = p[0];
    if (lead < 0x80)
        return lead != 0 ? 1 : 0;
    if (lead < 0xC2 || lead > 0xF4)
        return 0;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (left < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if (!continues(p[i]))
            return 0;
    const unsigned char second = p[1];
    const bool wrong = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                       (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
    return wrong ? 0 : length;
}

// Eight bytes, none of them 0 and none above 0x7F.
bool isPlainBlock(const unsigned char* p) {
    constexpr std::uint64_t kHigh = 0x8080808080808080;
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    std::uint64_t block = 0;
    std::memcpy(&block, p, sizeof block);
    return ((block | (block - kOnes)) & kHigh) == 0;
}

} // namespace

bool isCleanUtf8(std::string_view text) {
    const auto* p = reinterpret_cast<const unsigned char*>(text.data());
    for (std::size_t left = text.size(); left > 0;) {
        const std::size_t step = left >= 8 && isPlainBlock(p) ? 8 : sequenceLength(p, left);
        if (step == 0)
            return false;
        p += step;
        left -= step;
    }
    return true;
}
