#include "support/debug_output.h"
#include "support/guarded_buffer.h"
#include "support/message_box_answerer.h"

#include "subject.h"

#include <gtest/gtest.h>

#include <vector>

using support::DebugOutput;
using support::GuardedBuffer;
using support::MessageBoxAnswerer;

namespace {

// The first access violation of this thread is answered by leaving the page readable and writable.
const void* g_fault = nullptr;
LONG CALLBACK open_page(EXCEPTION_POINTERS* pointers) {
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode != EXCEPTION_ACCESS_VIOLATION) return EXCEPTION_CONTINUE_SEARCH;
    g_fault = reinterpret_cast<const void*>(record.ExceptionInformation[1]);
    DWORD old = 0;
    VirtualProtect(const_cast<void*>(g_fault), 1, PAGE_READWRITE, &old);
    return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

TEST(GuardedBuffer, RaisesOneByteTooFar) {
    const GuardedBuffer buffer(13);
    void* handler = AddVectoredExceptionHandler(1, open_page);
    auto bytes = buffer.as<volatile char>();
    bytes[12] = 'x';
    EXPECT_EQ(g_fault, nullptr);
    bytes[13] = 'x';
    EXPECT_EQ(g_fault, buffer.as() + 13);
    RemoveVectoredExceptionHandler(handler);
}

TEST(GuardedBuffer, TellsWhatIsUntouched) {
    const GuardedBuffer buffer(13);
    EXPECT_TRUE(buffer.untouched_from(0));
    memset(buffer.as(), 'x', 12);
    EXPECT_TRUE(buffer.untouched_from(12));
    EXPECT_FALSE(buffer.untouched_from(11));
    buffer.as()[-1] = 'x';
    EXPECT_FALSE(buffer.untouched_from(12));
}

TEST(DebugOutput, CollectsNarrowAndWideText) {
    {
        const DebugOutput output;
        subject_say();
        EXPECT_EQ(output.text(), "narrow wide");
        EXPECT_EQ(output.lines(), (std::vector<std::string>{"narrow ", "wide"}));
    }
    const DebugOutput next;
    EXPECT_EQ(next.text(), "");
}

TEST(MessageBoxAnswerer, AnswersAndKeepsTitleAndText) {
    for (int button : {IDYES, IDNO}) {
        MessageBoxAnswerer answerer(button);
        EXPECT_EQ(subject_ask(), button);
        EXPECT_TRUE(answerer.answered());
        EXPECT_EQ(answerer.title(), L"Subject");
        EXPECT_EQ(answerer.text(), L"Go on?");
    }
}

TEST(MessageBoxAnswerer, SaysWhenNoBoxCame) {
    MessageBoxAnswerer answerer(IDOK);
    EXPECT_FALSE(answerer.answered());
}
