// The fixture of the simulated stack's own tests: a state folder of this program's own, a reset stack,
// and at the end no misuse and nothing left open but what the test took off the reports.
#pragma once

#include "VlSDK.h"
#include "VlSim.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vlsim_test {

// The folder that VLSIM_HOME names in this program and in its children.
std::string home_folder();

class StackTest : public ::testing::Test {
public:
    StackTest();
    ~StackTest() override;
    StackTest(const StackTest&) = delete;
    StackTest& operator=(const StackTest&) = delete;

protected:
    // The reports so far; they are forgotten.
    static std::vector<std::string> take_misuse();
};

// A value of the state as JSON text.
std::string state_value(const std::string& pointer);

std::vector<std::string> logged_calls();

ShortcutProperty shortcut_query(BtHandle shortcut, uint16_t mask = 0);

// Handles of a walk, with what its records held.
struct Walked {
    BtHandle handle;
    uint16_t service_class;
    std::string name;
};
std::vector<Walked> walk_devices();
std::vector<Walked> walk_services(BtHandle device);
std::vector<Walked> walk_servers();
std::vector<Walked> walk_connections();

}  // namespace vlsim_test
