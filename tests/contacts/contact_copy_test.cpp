// Copies of contacts: what is copied, what is shared, and who frees it.
#include "contact_use.h"

#include "support/call_patch.h"
#include "support/suite_test.h"

#include <objbase.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

// Every byte that a copy takes over, in one list of areas.
struct Area {
    const char* label;
    char* (*of)(VlContact&);
    size_t size;
};
template <typename T>
char* bytes_of(T* part) {
    return reinterpret_cast<char*>(part);
}
const Area kHeadAreas[] = {
    {"first text", [](VlContact& c) { return bytes_of(&c) + 4; }, 64},
    {"items", [](VlContact& c) { return bytes_of(&c) + 80; }, 32},
    {"second text", [](VlContact& c) { return bytes_of(&c) + 112; }, 64},
    {"long text", [](VlContact& c) { return bytes_of(&c) + 176; }, 1024},
};
const Area kPartAreas[] = {
    {"name", [](VlContact& c) { return bytes_of(c.name); }, 1284},
    {"organisation", [](VlContact& c) { return bytes_of(c.organisation); }, 1028},
    {"blob", [](VlContact& c) { return bytes_of(c.blob); }, 272},
    {"phone capacity", [](VlContact& c) { return bytes_of(c.phoneCapacity); }, 4},
    {"phones", [](VlContact& c) { return bytes_of(c.phones); }, 560},
    {"address capacity", [](VlContact& c) { return bytes_of(c.addressCapacity); }, 4},
    {"addresses", [](VlContact& c) { return bytes_of(c.addresses); }, 5412},
    {"e-mail capacity", [](VlContact& c) { return bytes_of(c.emailCapacity); }, 4},
    {"e-mails", [](VlContact& c) { return bytes_of(c.emails); }, 168},
    {"URL capacity", [](VlContact& c) { return bytes_of(c.urlCapacity); }, 4},
    {"URLs", [](VlContact& c) { return bytes_of(c.urls); }, 804},
    {"second capacity", [](VlContact& c) { return bytes_of(c.secondCapacity); }, 4},
    {"second list", [](VlContact& c) { return bytes_of(c.second); }, 804},
};

std::string content(VlContact& contact, const Area& area) { return {area.of(contact), area.size}; }

// Another pattern in each area, different in its first and last byte.
void fill(VlContact& contact) {
    unsigned next = 1;
    const auto fill_area = [&](const Area& area) {
        for (size_t i = 0; i < area.size; ++i) area.of(contact)[i] = static_cast<char>(next++ % 251 + 1);
    };
    std::for_each(std::begin(kHeadAreas), std::end(kHeadAreas), fill_area);
    std::for_each(std::begin(kPartAreas), std::end(kPartAreas), fill_area);
}

std::vector<char*> parts(VlContact& contact) {
    std::vector<char*> pointers;
    for (const Area& area : kPartAreas) pointers.push_back(area.of(contact));
    return pointers;
}

// A part taken out of a record for a while.
template <typename Part>
class WithoutPart {
public:
    explicit WithoutPart(Part*& part) : slot_(part), kept_(part) { slot_ = nullptr; }
    ~WithoutPart() { slot_ = kept_; }
    WithoutPart(const WithoutPart&) = delete;
    WithoutPart& operator=(const WithoutPart&) = delete;

private:
    Part*& slot_;
    Part* kept_;
};

class ContactCopy : public support::SuiteTest {
protected:
    ContactCopy() : source_(VlCm_AllocPBAPContactItemEx()), destination_(VlCm_AllocContactItemEx()) {}
    ~ContactCopy() override {
        if (source_) source_->blob->block = nullptr;  // rubbish, or freed with the other record
    }
    ContactCopy(const ContactCopy&) = delete;
    ContactCopy& operator=(const ContactCopy&) = delete;

    VlContact& source() { return *source_; }
    VlContact& destination() { return *destination_; }
    void copy() { VlCm_CopyPBAPContactItemEx(destination_.get(), source_.get()); }
    // Leaves rubbish in both inner pointers, see forget_inner_blocks().
    void copy_filled() {
        fill(source());
        copy();
    }
    void forget_inner_blocks() {
        source_->blob->block = nullptr;
        destination_->blob->block = nullptr;
    }

    OwnedContact source_;
    OwnedContact destination_;
};

}  // namespace

TEST_F(ContactCopy, TakesOverEveryPartAndTheHeadsFields) {
    copy_filled();
    const auto same = [this](const Area& area) {
        EXPECT_EQ(content(destination(), area), content(source(), area));
    };
    support::for_each_row(kHeadAreas, same);
    support::for_each_row(kPartAreas, same);
    forget_inner_blocks();
}

TEST_F(ContactCopy, KeepsTheDestinationsOwnParts) {
    const std::vector<char*> before = parts(destination());
    copy_filled();
    EXPECT_EQ(parts(destination()), before);
    for (char* part : parts(source())) EXPECT_EQ(std::count(before.begin(), before.end(), part), 0);
    forget_inner_blocks();
}

TEST_F(ContactCopy, SetsTheSizeWhateverItWas) {
    source().size = 7;
    destination().size = 9;
    copy();
    EXPECT_EQ(destination().size, 1296u);
    EXPECT_EQ(source().size, 7u);
}

TEST_F(ContactCopy, WithANullRecordTouchesNothing) {
    destination().size = 9;
    fill(destination());
    const std::string before = content(destination(), kPartAreas[0]);
    VlCm_CopyPBAPContactItemEx(destination_.get(), nullptr);
    VlCm_CopyPBAPContactItemEx(nullptr, source_.get());
    VlCm_CopyPBAPContactItemEx(nullptr, nullptr);
    EXPECT_EQ(destination().size, 9u);
    EXPECT_EQ(content(destination(), kPartAreas[0]), before);
    forget_inner_blocks();
}

TEST_F(ContactCopy, PassesOverPartsThatAreNullInEitherRecord) {
    fill(source());
    const char last = content(source(), kPartAreas[12]).back();
    const auto copy_with_one_missing = [&](VlContact& record, auto VlContact::*part) {
        memset(destination().second, 0, 804);
        const WithoutPart missing(record.*part);
        copy();
        if (!destination().second || !source().second) return;
        EXPECT_EQ(content(destination(), kPartAreas[12]).back(), last);
    };
    for (VlContact* record : {&source(), &destination()}) {
        copy_with_one_missing(*record, &VlContact::name);
        copy_with_one_missing(*record, &VlContact::organisation);
        copy_with_one_missing(*record, &VlContact::blob);
        copy_with_one_missing(*record, &VlContact::phoneCapacity);
        copy_with_one_missing(*record, &VlContact::phones);
        copy_with_one_missing(*record, &VlContact::addressCapacity);
        copy_with_one_missing(*record, &VlContact::addresses);
        copy_with_one_missing(*record, &VlContact::emailCapacity);
        copy_with_one_missing(*record, &VlContact::emails);
        copy_with_one_missing(*record, &VlContact::urlCapacity);
        copy_with_one_missing(*record, &VlContact::urls);
        copy_with_one_missing(*record, &VlContact::secondCapacity);
        copy_with_one_missing(*record, &VlContact::second);
    }
    forget_inner_blocks();
}

TEST_F(ContactCopy, SharesTheInnerBlock) {
    source().blob->block = Vlcm_SHAlloc(16);
    copy();
    EXPECT_EQ(destination().blob->block, source().blob->block);
    destination().blob->block = nullptr;
    VlCm_FreePBAPContactItemEx(source_.release());
}

TEST_F(ContactCopy, SharedBlockIsFreedOnceInAnyOrderWhenOneRecordForgetsIt) {
    const struct {
        const char* label;
        bool source_keeps_it;
        bool source_goes_first;
    } rows[] = {
        {"the phone's record keeps it and goes first", true, true},
        {"the phone's record keeps it and goes last", true, false},
        {"the copy keeps it and goes last", false, true},
        {"the copy keeps it and goes first", false, false},
    };
    support::for_each_row(rows, [](const auto& row) {
        VlPbapContact* const source = VlCm_AllocPBAPContactItemEx();
        VlContact* const copy = VlCm_AllocContactItemEx();
        void* const block = source->blob->block = Vlcm_SHAlloc(16);
        VlCm_CopyPBAPContactItemEx(copy, source);
        (row.source_keeps_it ? copy : source)->blob->block = nullptr;
        support::CallPatch freeing("CoTaskMemFree", CoTaskMemFree);
        if (row.source_goes_first) VlCm_FreePBAPContactItemEx(source);
        VlCm_FreeContactItemEx(copy);
        if (!row.source_goes_first) VlCm_FreePBAPContactItemEx(source);
        const auto freed = freeing.calls();
        EXPECT_EQ(std::count(freed.begin(), freed.end(), std::make_tuple(block)), 1);
    });
}

TEST_F(ContactCopy, SharedBlockIsFreedTwiceWhenNeitherForgetsIt) {
    void* const block = source().blob->block = Vlcm_SHAlloc(16);
    copy();
    {
        support::CallPatch freeing("CoTaskMemFree", CoTaskMemFree);
        size_t times = 0;
        freeing.answer([&](void* freed) {
            if (freed != block || ++times == 1) freeing.real(freed);
        });
        VlCm_FreePBAPContactItemEx(source_.release());
        VlCm_FreeContactItemEx(destination_.release());
        EXPECT_EQ(times, 2u);
    }
}

TEST_F(ContactCopy, OfARecordOntoItselfChangesNothing) {
    fill(source());
    const std::string before = content(source(), kPartAreas[0]);
    VlCm_CopyPBAPContactItemEx(source_.get(), source_.get());
    EXPECT_EQ(content(source(), kPartAreas[0]), before);
}
