#include "vcard.h"

#include "VlSDK.h"
#include "contact_text.h"

#include <initializer_list>

namespace vl::mobile {
namespace {

constexpr size_t kValueLimit = 259;  // a value is held in 260 bytes
constexpr size_t kHeadLimit = 64;
constexpr size_t kNumberLimit = 40;
constexpr char kLineEnd[] = "\r\n";

// A line's head, or a line that is always the same.
struct FixedText {
    template <size_t size>
    constexpr FixedText(const char (&text)[size]) : bytes(text), length(size - 1) {
        static_assert(size <= kHeadLimit);
    }
    const char* bytes;
    size_t length;
};

// What stands between a line's head and its end.
class Value {
public:
    Value() = default;
    explicit Value(ContactText text) { add(text); }
    void add(ContactText text) {
        const size_t room = kValueLimit - length_;
        const size_t length = text.length < room ? text.length : room;
        memcpy(bytes_ + length_, text.bytes, length);
        length_ += length;
    }
    void add_behind_separator(ContactText text) {
        add({";", 1});
        add(text);
    }
    [[nodiscard]] const char* bytes() const { return bytes_; }
    [[nodiscard]] size_t length() const { return length_; }
    [[nodiscard]] bool empty() const { return length_ == 0; }

private:
    char bytes_[kValueLimit];
    size_t length_ = 0;
};

class CardFile {
public:
    explicit CardFile(HANDLE file) : file_(file) {}

    void write(const char* bytes, size_t length) const {
        uint32_t written = 0;
        Btsdk_WriteFile(file_, bytes, static_cast<uint32_t>(length), &written, nullptr);
    }
    void write(FixedText text) const { write(text.bytes, text.length); }
    void property(FixedText head, const Value& value) const {
        char line[kHeadLimit + kValueLimit + sizeof kLineEnd];
        memcpy(line, head.bytes, head.length);
        char* end = line + head.length;
        memcpy(end, value.bytes(), value.length());
        end += value.length();
        memcpy(end, kLineEnd, sizeof kLineEnd - 1);
        write(line, head.length + value.length() + sizeof kLineEnd - 1);
    }
    void property_unless_empty(FixedText head, ContactText text) const {
        if (!text.empty()) property(head, Value(text));
    }

private:
    HANDLE file_;
};

Value structured_name(const VlContactName& name) {
    Value value(text_of(name.family));
    for (const ContactText part : {text_of(name.given), text_of(name.additional)}) {
        if (!part.empty()) value.add_behind_separator(part);
    }
    return value;
}

Value joined_name(const VlContactName& name) {
    Value value(text_of(name.family));
    value.add(text_of(name.given));
    value.add(text_of(name.additional));
    return value;
}

// Without a name the head stands alone and has no line end: required.
void write_names(const CardFile& card, const VlContactName& name) {
    constexpr char kHead[] = "N;CHARSET=utf-8:";
    const Value value = structured_name(name);
    if (value.empty()) return card.write(kHead);
    card.property(kHead, value);
    card.property("FN;CHARSET=utf-8:", joined_name(name));
}

// A department takes the company's place: required.
void write_work(const CardFile& card, const VlContactOrganisation& work) {
    const ContactText department = text_of(work.department);
    card.property_unless_empty("ORG;CHARSET=utf-8:", department.empty() ? text_of(work.company) : department);
    card.property_unless_empty("TITLE;CHARSET=utf-8:", text_of(work.title));
}

struct PhoneLine {
    uint32_t type;
    FixedText head;
};
constexpr PhoneLine kPhoneLines[] = {
    {VLCM_PHONE_CELL, "TEL;CELL;VOICE:"},
    {VLCM_PHONE_HOME, "TEL;HOME;VOICE:"},
    {VLCM_PHONE_WORK, "TEL;WORK;VOICE:"},
    {VLCM_PHONE_VOICE, "TEL;VOICE:"},
};

// Whatever the capacity word says, the list is as long as it was made.
ContactText first_number(const VlContact& contact, uint32_t type) {
    for (size_t i = 0; i < VLCM_CONTACT_PHONES; ++i) {
        const ContactText number = text_of(contact.phones[i].number, kNumberLimit);
        if (contact.phones[i].type == type && !number.empty()) return number;
    }
    return {};
}

void write_phones(const CardFile& card, const VlContact& contact) {
    for (const PhoneLine& line : kPhoneLines) {
        card.property_unless_empty(line.head, first_number(contact, line.type));
    }
}

void write_address(const CardFile& card, FixedText head, const VlContactAddress& address) {
    Value value;
    bool any = false;
    for (const ContactText part :
         {text_of(address.street), text_of(address.locality), text_of(address.region),
          text_of(address.postalCode), text_of(address.country)}) {
        value.add_behind_separator(part);
        any = any || !part.empty();
    }
    if (any) card.property(head, value);
}

}  // namespace

void write_card(HANDLE file, const VlContact& contact) {
    const CardFile card(file);
    card.write("BEGIN:VCARD\r\nVERSION:2.1\r\n");
    write_names(card, *contact.name);
    write_work(card, *contact.organisation);
    write_phones(card, contact);
    write_address(card, "ADR;WORK;PREF;CHARSET=utf-8:;", contact.addresses[VLCM_ADDRESS_WORK]);
    write_address(card, "ADR;HOME;PREF;CHARSET=utf-8:;", contact.addresses[VLCM_ADDRESS_HOME]);
    card.property_unless_empty("URL;WORK;CHARSET=utf-8:", text_of(contact.urls[0].text));
    card.property_unless_empty("EMAIL;PREF;INTERNET;CHARSET=utf-8:", text_of(contact.emails[0].address));
    card.write("END:VCARD\r\n");
}

}  // namespace vl::mobile
