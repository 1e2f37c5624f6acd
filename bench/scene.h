// The surroundings of the measured calls: a quiet simulated stack and a settings file.
#pragma once

#include "module.h"

#include <optional>
#include <string>

namespace bench {

class Scene {
public:
    explicit Scene(const Suite& suite);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

private:
    std::string settings_path_;
    std::optional<std::string> earlier_settings_;
};

}  // namespace bench
