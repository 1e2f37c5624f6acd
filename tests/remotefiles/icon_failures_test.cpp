// Each registry operation of the icon search fails once, on every path.
#include "icon_test.h"

#include "VlSim.h"

namespace {

constexpr uint32_t kRefused = ERROR_ACCESS_DENIED;

struct Path {
    const char* label;
    const char* class_icon;     // null: none
    const char* class_id_icon;  // null: no class identifier
    uint32_t operations;        // opened keys, and reads
    Icon expected;
};

class IconSearch : public IconTest {
protected:
    void prepare(const Path& path) {
        set_class();
        if (path.class_icon != nullptr) set_class_icon(path.class_icon);
        if (path.class_id_icon != nullptr) set_class_id();
        if (path.class_id_icon != nullptr) set_class_id_icon(path.class_id_icon);
    }
    static Icon ask_with_fault(const char* operation, uint32_t nth) {
        VlSim_Fail(operation, nth, kRefused);
        Icon icon = ask(kFile);
        VlSim_ClearFaults();
        EXPECT_EQ(VlSim_LiveCount(VLSIM_KEYS), 0u);
        return icon;
    }
    // The own icon's key or value missing leads to the class identifier, anything else missing to none.
    static Icon expected_with_fault(const Path& path, uint32_t nth) {
        if (path.class_icon == nullptr || path.class_id_icon == nullptr || nth != 2) return not_found();
        return found("server.dll", 2);
    }
    void check_all_faults(const Path& path) {
        prepare(path);
        EXPECT_EQ(ask(kFile), path.expected);
        for (const char* operation : {"Btsdk_RegOpenKey", "Btsdk_RegQueryStringValue"}) {
            for (uint32_t nth = 1; nth <= path.operations; ++nth) {
                EXPECT_EQ(ask_with_fault(operation, nth), expected_with_fault(path, nth))
                    << operation << " " << nth;
            }
        }
    }
};

TEST_F(IconSearch, OfAClassWithAnIconOfItsOwn) {
    check_all_faults({"own icon", "own.dll,1", nullptr, 2, found("own.dll", 1)});
}

TEST_F(IconSearch, OfAClassWithBoth) {
    check_all_faults({"both", "own.dll,1", "server.dll,2", 2, found("own.dll", 1)});
}

TEST_F(IconSearch, OfAClassWhoseIconIsTheFileItself) {
    check_all_faults({"the file itself", "\"%1\"", "server.dll,2", 4, found("server.dll", 2)});
}

TEST_F(IconSearch, OpensAndClosesOneKeyAfterTheOther) {
    prepare({"the file itself", "\"%1\"", "server.dll,2", 4, {}});
    support::clear_sdk_log();
    ask(kFile);
    std::vector<std::string> expected;
    for (int i = 0; i < 4; ++i) {
        for (const char* operation : {"RegOpenKey", "RegQueryStringValue", "RegCloseKey"}) {
            expected.emplace_back(std::string("Btsdk_") + operation);
        }
    }
    EXPECT_EQ(support::sdk_operations(), expected);
}

}  // namespace
