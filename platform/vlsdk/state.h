// The state of the stack in this process: a parsed copy of the shared document.
#pragma once

#include "model.h"

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

}  // namespace vlsim
