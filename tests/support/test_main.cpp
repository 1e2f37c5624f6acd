// The entry of every test program: its tests, or with --role=NAME one of its roles.
#include "support/role.h"

#include <gtest/gtest.h>
#include <stdio.h>
#include <string.h>
#include <windows.h>

#include <map>

namespace support {
namespace {

std::map<std::string, RoleBody>& roles() {
    static std::map<std::string, RoleBody> registered;
    return registered;
}

constexpr char kRoleOption[] = "--role=";

int run_role(const std::string& name, const std::vector<std::string>& arguments) {
    const auto role = roles().find(name);
    if (role == roles().end()) {
        printf("no role %s in this program\n", name.c_str());
        return kNoSuchRole;
    }
    const int code = role->second(arguments);
    return ::testing::UnitTest::GetInstance()->Failed() ? kRoleFailed : code;
}

}  // namespace

RoleRegistration::RoleRegistration(const char* name, RoleBody body) { roles()[name] = body; }

}  // namespace support

int main(int argc, char** argv) {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    ::testing::InitGoogleTest(&argc, argv);
    constexpr size_t kLength = sizeof support::kRoleOption - 1;
    if (argc > 1 && strncmp(argv[1], support::kRoleOption, kLength) == 0) {
        return support::run_role(argv[1] + kLength, std::vector<std::string>(argv + 2, argv + argc));
    }
    // GoogleTest keeps a handle of each thread that it traces in: it takes this thread's now, before a
    // test counts handles.
    { const ::testing::ScopedTrace first(__FILE__, __LINE__, ""); }
    return RUN_ALL_TESTS();
}
