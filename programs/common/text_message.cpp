#include "text_message.h"

#include "frame/bounded_text.h"

#include <stdexcept>

namespace programs {
namespace {

constexpr size_t kNumberSize = 64;
constexpr size_t kTextSize = sizeof(VlSmsRecord::rest) - kNumberSize;

void put(uint8_t* place, size_t size, const std::string& text) {
    if (text.size() >= size)
        throw std::length_error("longer than " + std::to_string(size - 1) + " bytes: " + text);
    vl::copy_bounded(reinterpret_cast<char*>(place), size, text.c_str());
}

std::string taken(const uint8_t* place, size_t size) {
    const auto* text = reinterpret_cast<const char*>(place);
    return {text, vl::bounded_length(text, size)};
}

}  // namespace

VlSmsRecord to_record(const TextMessage& message) {
    VlSmsRecord record = {};
    record.device = message.device;
    put(record.rest, kNumberSize, message.number);
    put(record.rest + kNumberSize, kTextSize, message.text);
    return record;
}

TextMessage from_record(const VlSmsRecord& record) {
    return {record.device, taken(record.rest, kNumberSize), taken(record.rest + kNumberSize, kTextSize)};
}

}  // namespace programs
