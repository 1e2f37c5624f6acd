// Phone models: those that are kept for phones, and those that the mobile SDK knows.
#pragma once

#include "answer.h"

namespace programs {

// All texts are UTF-8.
struct ModelRequest {
    std::string address;  // or a device's name
    std::string manufacturer, model, alternative, base, plug;
};

// The model that is kept for a phone. kNo: none.
[[nodiscard]] Answer ask_model(const ModelRequest& request);
// Keeps a model and answers what is kept then.
[[nodiscard]] Answer set_model(const ModelRequest& request);
// Forgets the phone's model. kNo: none was kept.
[[nodiscard]] Answer delete_model(const ModelRequest& request);
void print_model(const Json& facts);

// Whether the mobile SDK's lists hold the phone's model or, without an address, that of the request.
// kNo: neither list does, and it is not the placeholder for phone books.
[[nodiscard]] Answer match_model(const ModelRequest& request);
void print_match(const Json& facts);

}  // namespace programs
