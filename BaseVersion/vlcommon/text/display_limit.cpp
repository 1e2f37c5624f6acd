#include "display_limit.h"

#include "frame/trace.h"
#include "vlcm/text.h"

#include <string.h>

namespace vl::text {
namespace {

constexpr char kEllipsis[] = "...";
constexpr int kMargin = sizeof kEllipsis - 1;
constexpr char kNoCount[] = "error in VlCm_LimitStringCharacterCount, can not calc string count\n";

// Bytes of a sequence by the upper four bits of its first byte alone: five or six are not known, and a
// stray continuation byte takes one place.
constexpr unsigned char kSequenceBytes[16] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 3, 4};

int characters_of(unsigned char lead, int wide_weight) {
    if ((lead & 0xF0) == 0xE0) return wide_weight;
    const bool stray = (lead & 0xC0) == 0x80;
    return stray ? 0 : 1;
}

struct Stop {
    long long position = 0;
    long long highest = -1;   // the largest count that was walked past
    bool at_control = false;  // at the terminator or another byte below 0x10
};

// Walks until `char_limit` is reached or the margin before `byte_limit` would be passed.
Stop walk(const char* text, int byte_limit, long long char_limit, int wide_weight) {
    Stop stop;
    for (long long count = 0; count < char_limit;) {
        if (count > stop.highest) stop.highest = count;
        const auto lead = static_cast<unsigned char>(text[stop.position]);
        if (lead < 0x10) {
            stop.at_control = true;
            return stop;
        }
        count += characters_of(lead, wide_weight);
        const int bytes = kSequenceBytes[lead >> 4];
        if (stop.position + bytes + kMargin > byte_limit) return stop;
        stop.position += bytes;
    }
    return stop;
}

}  // namespace

int limit_characters(char* text, int byte_limit, int char_limit, int wide_weight) {
    if (text == nullptr || byte_limit < char_limit) return 0;
    for (long long limit = char_limit;;) {
        const Stop stop = walk(text, byte_limit, limit, wide_weight);
        const auto position = static_cast<int>(stop.position);
        if (stop.at_control) return position + 1;
        char* const cut = text + position;
        if (cut[kMargin] == 0) return position + kMargin;
        if (position != 0 && byte_limit > stop.position + kMargin) {
            memcpy(cut, kEllipsis, sizeof kEllipsis);
            return position;
        }
        if (position == 0) {
            if (byte_limit < 0) trace_line(kNoCount);
            return 0;
        }
        // No room for the dots: the same with one character less. Every limit above the highest count
        // that was walked past stops at this very place, so those are not walked again.
        limit = stop.highest;
    }
}

}  // namespace vl::text

using namespace vl;

extern "C" int VlCm_LimitStringCharacterCount(char* text, int byteLimit, int charLimit, int wideWeight) {
    return text::limit_characters(text, byteLimit, charLimit, wideWeight);
}
