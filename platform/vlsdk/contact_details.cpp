#include "contact_details.h"

#include "records.h"
#include "scenario_values.h"

namespace vlsim {
namespace {

using nlohmann::json;

struct PhoneType {
    const char* name;
    uint32_t number;
};
constexpr PhoneType kPhoneTypes[] = {
    {"cell", VLCM_PHONE_CELL},
    {"home", VLCM_PHONE_HOME},
    {"work", VLCM_PHONE_WORK},
    {"voice", VLCM_PHONE_VOICE},
};

uint32_t phone_type_of(const json& value) {
    for (const PhoneType& type : kPhoneTypes) {
        if (value == type.name) return type.number;
    }
    return number_of(value);
}

// Fills one entry for each item, as many as there is room for.
template <typename Entry, size_t room, typename Fill>
void fill_entries(Entry (&entries)[room], const Members& members, const char* list, Fill fill) {
    size_t filled = 0;
    for (const json& item : members.list(list)) {
        if (filled == room) return;
        fill(entries[filled++], item);
    }
}

void fill_name(VlContactName& name, const Members& members) {
    set_text(name.family, members.text("family"));
    set_text(name.given, members.text("given"));
    set_text(name.additional, members.text("additional"));
}

void fill_organisation(VlContactOrganisation& organisation, const Members& members) {
    set_text(organisation.company, members.text("company"));
    set_text(organisation.department, members.text("department"));
    set_text(organisation.title, members.text("title"));
}

void fill_phone(VlContactPhone& phone, const json& item) {
    phone.type = VLCM_PHONE_VOICE;
    if (item.contains("type")) phone.type = phone_type_of(item.at("type"));
    set_text(phone.number, Members(item).text("number"));
}

void fill_address(VlContactAddress& address, const json& object, const char* member) {
    if (!object.contains(member)) return;
    const Members members(object.at(member));
    set_text(address.street, members.text("street"));
    set_text(address.locality, members.text("locality"));
    set_text(address.region, members.text("region"));
    set_text(address.postalCode, members.text("postalCode"));
    set_text(address.country, members.text("country"));
}

}  // namespace

ContactDetails read_contact_details(const char* text) {
    const json object = json::parse(text);
    const Members members(object);
    ContactDetails details;
    fill_name(details.name, members);
    fill_organisation(details.organisation, members);
    fill_entries(details.phones, members, "phones", fill_phone);
    fill_address(details.addresses[VLCM_ADDRESS_OTHER], object, "other");
    fill_address(details.addresses[VLCM_ADDRESS_HOME], object, "home");
    fill_address(details.addresses[VLCM_ADDRESS_WORK], object, "work");
    fill_entries(details.emails, members, "emails",
                 [](VlContactEmail& email, const json& item) { set_text(email.address, text_of(item)); });
    fill_entries(details.urls, members, "urls",
                 [](VlContactUrl& url, const json& item) { set_text(url.text, text_of(item)); });
    details.picture = members.bytes("picture");
    return details;
}

}  // namespace vlsim
