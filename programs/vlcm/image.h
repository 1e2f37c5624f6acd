// Pictures and attachments.
#pragma once

#include "answer.h"

namespace programs {

struct ImageRequest {
    std::string file;
    std::string thumbnail;
};

// The full path of a file. Throws NotFound when there is none.
[[nodiscard]] std::wstring existing_file(const std::string& file);

// Format, dimensions and size of a picture. kNo: it is none that Windows can read.
[[nodiscard]] Answer ask_image(const ImageRequest& request);
void print_image(const Json& facts);

// Makes a thumbnail. kNo: it could not be made; what was there is left.
[[nodiscard]] Answer ask_thumbnail(const ImageRequest& request);
void print_thumbnail(const Json& facts);

// Size, type and time stamp of a file as a message tells them. kNo: the file cannot be read.
[[nodiscard]] Answer ask_attachment(const std::string& file);
void print_attachment(const Json& facts);

}  // namespace programs
