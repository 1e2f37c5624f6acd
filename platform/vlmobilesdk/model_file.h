// The file of supported phone models; its format is described in docs/mobile-models.md.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace vlmobile {

struct Model {
    std::string manufacturer;          // all texts are in the ANSI code page
    std::array<std::string, 2> names;  // the second may be empty
};

// The file that VLMOBILE_MODELS names in the environment, else "mobile_models.json" beside this DLL.
std::wstring model_file();

// The models listed under `series`; nothing when the file cannot be read or breaks its format.
std::optional<std::vector<Model>> read_models(const std::wstring& file, const char* series);

}  // namespace vlmobile
