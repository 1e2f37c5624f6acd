// Models as tests write and read them.
#pragma once

#include "vlcm/phone_models.h"

#include <string.h>

#include <string>

inline constexpr unsigned char kPattern = 0xCD;

template <size_t size>
void set_field(char (&field)[size], const std::string& text) {
    memset(field, 0, size);
    memcpy(field, text.data(), text.size() < size ? text.size() : size);
}

struct ModelTexts {
    std::string manu{}, model1{}, model2{}, base{}, plug{};
};

// A text as long as its field leaves it without a terminator.
inline VlDeviceModel device_model(const ModelTexts& texts) {
    VlDeviceModel model;
    memset(&model, kPattern, sizeof model);
    set_field(model.manu, texts.manu);
    set_field(model.model1, texts.model1);
    set_field(model.model2, texts.model2);
    set_field(model.base, texts.base);
    set_field(model.plug, texts.plug);
    return model;
}

inline VlDeviceModel patterned_model() {
    VlDeviceModel model;
    memset(&model, kPattern, sizeof model);
    return model;
}

inline bool is_same_memory(const VlDeviceModel& a, const VlDeviceModel& b) {
    return memcmp(&a, &b, sizeof a) == 0;
}
