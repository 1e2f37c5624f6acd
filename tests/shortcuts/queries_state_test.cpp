// Whether a shortcut is the default one, enabled, connected.
#include "VlCommon.h"
#include "support/suite_test.h"

namespace {

class ShortcutState : public support::SuiteTest {};

TEST_F(ShortcutState, HandleZeroIsNoDefaultShortcut) { EXPECT_FALSE(VlCm_IsDefaultShortcut(0)); }

}  // namespace
