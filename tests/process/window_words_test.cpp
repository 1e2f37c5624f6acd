// 32-bit access to window words.
#include "process_test.h"

using namespace process_test;

namespace {

class WindowWords : public ProcessTest {
protected:
    WindowWords() { calls.name(window_.handle(), "window"); }
    LONG_PTR user_data() { return GetWindowLongPtrA(window_.handle(), GWLP_USERDATA); }
    QueueWindow window_{"words"};
};

TEST_F(WindowWords, SetExtendsTheSign) {
    const struct {
        LONG value;
        LONG_PTR stored;
    } kRows[] = {{0x396, 0x396}, {-1, -1}, {INT32_MIN, LONG_PTR{INT32_MIN}}, {INT32_MAX, INT32_MAX}};
    for (const auto& row : kRows) {
        Vlcm_SetWindowLong(window_.handle(), GWLP_USERDATA, row.value);
        EXPECT_EQ(user_data(), row.stored);
        EXPECT_EQ(calls.take(), Lines{"SetWindowLongPtrA(window, -21, " + std::to_string(row.value) + ")"});
    }
    EXPECT_EQ(trace(), Lines{});
}

TEST_F(WindowWords, SetAnswersTheLow32BitsOfThePreviousValue) {
    SetWindowLongPtrA(window_.handle(), GWLP_USERDATA, 0x1234567887654321);
    EXPECT_EQ(Vlcm_SetWindowLong(window_.handle(), GWLP_USERDATA, 5), static_cast<LONG>(0x87654321));
    EXPECT_EQ(Vlcm_SetWindowLong(window_.handle(), GWLP_USERDATA, 6), 5);
}

TEST_F(WindowWords, GetAnswersTheLow32Bits) {
    SetWindowLongPtrA(window_.handle(), GWLP_USERDATA, 0x1234567887654321);
    EXPECT_EQ(Vlcm_GetWindowLong(window_.handle(), GWLP_USERDATA), static_cast<LONG>(0x87654321));
    EXPECT_EQ(calls.take(), Lines{"GetWindowLongPtrA(window, -21)"});
    EXPECT_EQ(trace(), Lines{});
}

TEST_F(WindowWords, ReachesOtherWordsByTheirIndex) {
    SetWindowLongPtrA(window_.handle(), GWLP_ID, 77);
    EXPECT_EQ(Vlcm_GetWindowLong(window_.handle(), GWLP_ID), 77);
    EXPECT_EQ(Vlcm_SetWindowLong(window_.handle(), GWLP_ID, 78), 77);
    EXPECT_EQ(GetWindowLongPtrA(window_.handle(), GWLP_ID), 78);
}

TEST_F(WindowWords, AnswersZeroForWhatIsNoWindow) {
    EXPECT_EQ(Vlcm_GetWindowLong(nullptr, GWLP_USERDATA), 0);
    EXPECT_EQ(Vlcm_SetWindowLong(nullptr, GWLP_USERDATA, 1), 0);
}

}  // namespace
