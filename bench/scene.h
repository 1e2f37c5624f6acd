// The surroundings of the measured calls: a quiet simulated stack and a settings file.
#pragma once

#include "module.h"

namespace bench {

class Scene {
public:
    explicit Scene(const Suite& suite);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

private:
    std::string made_file_;  // empty: the settings file was there
};

}  // namespace bench
