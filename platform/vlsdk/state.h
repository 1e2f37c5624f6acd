// The state of the stack in this process: a parsed copy of the shared document.
#pragma once

#include "model.h"

#include <string>

namespace vlsim {

// The state for the length of a scope, as fresh as the shared file. Do not change the state meanwhile.
class State {
public:
    State();
    ~State();
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    const Model* operator->() const { return &model_; }

private:
    const Model& model_;
};

// The folder of the shared file: VLSIM_HOME, else "vlsim" in the local application data.
[[nodiscard]] const std::wstring& home_folder();

}  // namespace vlsim
