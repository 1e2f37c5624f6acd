// Roles: helper programs inside a test program, run by it in another process (child_process.h):
//
//     TEST_ROLE(peer) { return arguments.size() == 1 ? 0 : 1; }
//
// The body's result is the exit code; an expectation that fails inside makes it kRoleFailed.
#pragma once

#include <string>
#include <vector>

namespace support {

using RoleBody = int (*)(const std::vector<std::string>& arguments);

struct RoleRegistration {
    RoleRegistration(const char* name, RoleBody body);
};

constexpr int kRoleFailed = 98, kNoSuchRole = 99;

}  // namespace support

#define TEST_ROLE(name)                                                             \
    static int role_##name(const std::vector<std::string>& arguments);              \
    static const support::RoleRegistration registration_##name(#name, role_##name); \
    static int role_##name([[maybe_unused]] const std::vector<std::string>& arguments)
