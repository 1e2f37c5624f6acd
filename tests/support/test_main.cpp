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

// GoogleTest watches each thread that has scoped traces or failures, by a handle that it keeps: have it
// open the main thread's now, before a test counts handles.
void warm_up_googletest() { SCOPED_TRACE("warm-up"); }

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
    support::warm_up_googletest();
    const int failed = RUN_ALL_TESTS();
    // Under Wine a process that ends half-way may answer 0: ctest looks for this line as well.
    if (failed == 0) printf("All tests of this program passed.\n");
    return failed;
}
