// Contact records: what they are made of, and that everything is freed, once.
#include "contact_use.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include <objbase.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

using Sizes = std::vector<size_t>;
using Blocks = std::vector<const void*>;

constexpr size_t kHeadSize = 1296;

// A part of a record, by the numbers of the interface and not by its declarations.
struct PartRow {
    const char* label;
    size_t offset;  // of the pointer in the head
    size_t size;
    uint32_t capacity;  // 0: no capacity word
};
constexpr PartRow kParts[] = {
    {"name", 72, 1284, 0},           {"organisation", 1200, 1028, 0}, {"blob", 1208, 272, 0},
    {"phone capacity", 1216, 4, 10}, {"phones", 1224, 560, 0},        {"address capacity", 1232, 4, 3},
    {"addresses", 1240, 5412, 0},    {"e-mail capacity", 1248, 4, 3}, {"e-mails", 1256, 168, 0},
    {"URL capacity", 1264, 4, 3},    {"URLs", 1272, 804, 0},          {"second capacity", 1280, 4, 3},
    {"second list", 1288, 804, 0},
};
constexpr size_t kBlocks = std::size(kParts) + 1;

const char* part_of(const VlContact* contact, const PartRow& part) {
    const char* block = nullptr;
    memcpy(&block, reinterpret_cast<const char*>(contact) + part.offset, sizeof block);
    return block;
}

void clear_part(VlContact* contact, const PartRow& part) {
    memset(reinterpret_cast<char*>(contact) + part.offset, 0, sizeof(void*));
}

struct MakerRow {
    const char* label;
    VlContact* (*make)();
    void (*free)(VlContact*);
};
const MakerRow kMakers[] = {
    {"contact", [] { return VlCm_AllocContactItemEx(); }, [](VlContact* c) { VlCm_FreeContactItemEx(c); }},
    {"phone-book contact", [] { return VlCm_AllocPBAPContactItemEx(); },
     [](VlContact* c) { VlCm_FreePBAPContactItemEx(c); }},
};

// The head's bytes with all pointers to parts taken out.
std::string head_without_pointers(const VlContact* contact) {
    std::string bytes(reinterpret_cast<const char*>(contact), kHeadSize);
    for (const PartRow& part : kParts) bytes.replace(part.offset, sizeof(void*), sizeof(void*), '\0');
    return bytes;
}

class ContactRecord : public support::SuiteTest {};

}  // namespace

TEST_F(ContactRecord, IsFourteenBlocksOfTheTaskAllocator) {
    support::for_each_row(kMakers, [](const MakerRow& maker) {
        support::CallPatch allocating("CoTaskMemAlloc", CoTaskMemAlloc);
        VlContact* const contact = maker.make();
        Sizes taken;
        for (const auto& [size] : allocating.calls()) taken.push_back(size);
        Sizes expected{kHeadSize};
        for (const PartRow& part : kParts) expected.push_back(part.size);
        EXPECT_EQ(taken, expected);
        maker.free(contact);
    });
}

TEST_F(ContactRecord, IsZeroButForSizeAndCapacities) {
    support::for_each_row(kMakers, [](const MakerRow& maker) {
        support::CallPatch allocating("CoTaskMemAlloc", CoTaskMemAlloc);
        allocating.answer([&](SIZE_T size) { return memset(allocating.real(size), 0xAA, size); });
        VlContact* const contact = maker.make();
        std::string head(kHeadSize, '\0');
        head.replace(0, 2, "\x10\x05");  // 1296
        EXPECT_EQ(head_without_pointers(contact), head);
        support::for_each_row(kParts, [&](const PartRow& part) {
            std::string expected(part.size, '\0');
            if (part.capacity != 0) expected[0] = static_cast<char>(part.capacity);
            EXPECT_EQ(std::string(part_of(contact, part), part.size), expected);
        });
        maker.free(contact);
    });
}

TEST_F(ContactRecord, GivesBackTheInnerBlockFirstAndTheHeadLast) {
    support::for_each_row(kMakers, [](const MakerRow& maker) {
        VlContact* const contact = maker.make();
        contact->blob->block = Vlcm_SHAlloc(5);
        Blocks expected{contact->blob->block};
        for (const PartRow& part : kParts) expected.push_back(part_of(contact, part));
        expected.push_back(contact);
        support::CallPatch freeing("CoTaskMemFree", CoTaskMemFree);
        maker.free(contact);
        Blocks freed;
        for (const auto& [block] : freeing.calls()) freed.push_back(block);
        EXPECT_EQ(freed, expected);
    });
}

TEST_F(ContactRecord, LosesItsPointersBeforeTheHeadGoes) {
    support::for_each_row(kMakers, [](const MakerRow& maker) {
        VlContact* const contact = maker.make();
        support::CallPatch freeing("CoTaskMemFree", CoTaskMemFree);
        freeing.answer([&](void* block) {
            if (block == contact) {
                for (const PartRow& part : kParts) EXPECT_EQ(part_of(contact, part), nullptr) << part.label;
            }
            freeing.real(block);
        });
        maker.free(contact);
    });
}

TEST_F(ContactRecord, IsFreedWithoutSomeOfItsParts) {
    support::for_each_row(kParts, [](const PartRow& part) {
        VlContact* const contact = VlCm_AllocContactItemEx();
        Vlcm_SHFree(const_cast<char*>(part_of(contact, part)));
        clear_part(contact, part);
        VlCm_FreeContactItemEx(contact);
    });
}

TEST_F(ContactRecord, FreeingNullDoesNothing) {
    support::CallPatch freeing("CoTaskMemFree", CoTaskMemFree);
    VlCm_FreeContactItemEx(nullptr);
    VlCm_FreePBAPContactItemEx(nullptr);
    EXPECT_EQ(freeing.count(), 0u);
}

TEST_F(ContactRecord, IsNullAndLeavesNothingWhenAnyBlockIsMissing) {
    support::for_each_row(kMakers, [this](const MakerRow& maker) {
        for (size_t nth = 1; nth <= kBlocks; ++nth) {
            blocks().fail_nth(nth);
            EXPECT_EQ(maker.make(), nullptr) << nth;
            EXPECT_EQ(blocks().live(support::LeakKind::kTaskBlock), 0u) << nth;
        }
        blocks().fail_nth(0);
    });
}

TEST_F(ContactRecord, OpensNoScope) {
    OwnedContact first = new_contact();
    VlCm_CopyPBAPContactItemEx(first.get(), first.get());
    first.reset();
    EXPECT_TRUE(support::trace_log().empty());
}
