#include "model.h"

#include "VlCommon.h"
#include "VlMobileSDK.h"
#include "address.h"
#include "devices.h"
#include "facts.h"
#include "text.h"

#include <stdio.h>
#include <string.h>

namespace programs {
namespace {

// The record is in the ANSI code page.
template <size_t size>
void put(char (&field)[size], const std::string& text) {
    const std::string local = ansi(wide(text));
    if (local.empty() && !text.empty())
        throw NotFound("the code page of Windows has not all of \"" + text + "\"");
    if (local.size() >= size) throw NotFound("longer than " + std::to_string(size - 1) + " bytes: " + text);
    memcpy(field, local.c_str(), local.size() + 1);
}

VlDeviceModel record_of(const ModelRequest& request) {
    VlDeviceModel record = {};
    put(record.manu, request.manufacturer);
    put(record.model1, request.model);
    put(record.model2, request.alternative);
    put(record.base, request.base);
    put(record.plug, request.plug);
    return record;
}

std::string told(const char* local) { return utf8(wide_from_ansi(local)); }

Json names_of(const char* manufacturer, const char* model, const char* alternative) {
    return {{"manufacturer", told(manufacturer)}, {"model", told(model)}, {"alternative", told(alternative)}};
}

Json model_facts(const Address& address, const VlDeviceModel& record) {
    Json facts = {{"address", address_text(address.data())}};
    facts.update(names_of(record.manu, record.model1, record.model2));
    facts["base"] = told(record.base);
    facts["plug"] = told(record.plug);
    facts["phoneBook"] = VlCm_IsPBAPModel(&record) != FALSE;
    return facts;
}

VlDeviceModel kept_model(const Address& address) {
    VlDeviceModel record = {};
    if (!VlCm_GetDeviceModel(address.data(), &record)) {
        throw NotFound("no model is kept for " + address_text(address.data()));
    }
    return record;
}

Json symbian_facts(const VlDeviceModel& record) {
    SymbianModelEntry entry = {};
    if (!VlCm_IsMatchSymbianModelExist(&record, &entry)) return nullptr;
    return names_of(entry.manufacturer, entry.model1, entry.model2);
}

}  // namespace

Answer ask_model(const ModelRequest& request) {
    const Address address = address_of(request.address);
    return {model_facts(address, kept_model(address)), kYes};
}

Answer set_model(const ModelRequest& request) {
    const Address address = address_of(request.address);
    const VlDeviceModel record = record_of(request);
    if (!VlCm_SetDeviceModel(address.data(), &record)) throw NotFound("the model could not be written");
    return {model_facts(address, kept_model(address)), kYes};
}

Answer delete_model(const ModelRequest& request) {
    const Address address = address_of(request.address);
    Json facts = model_facts(address, kept_model(address));
    const bool deleted = VlCm_DeleteDeviceModel(address.data()) != FALSE;
    facts["deleted"] = deleted;
    return {std::move(facts), deleted ? kYes : kNo};
}

void print_model(const Json& facts) {
    for (const auto& [member, value] : facts.items()) {
        printf("%-14s %s\n", member.c_str(), shown(facts, member.c_str()).c_str());
    }
}

Answer match_model(const ModelRequest& request) {
    const VlDeviceModel record =
        request.address.empty() ? record_of(request) : kept_model(address_of(request.address));
    Json facts = names_of(record.manu, record.model1, record.model2);
    const bool series40 = VlCm_IsMatchS40ModelExist(&record) != FALSE;
    const bool phone_book = VlCm_IsPBAPModel(&record) != FALSE;
    facts["symbian"] = symbian_facts(record);
    facts["series40"] = series40;
    facts["phoneBook"] = phone_book;
    const bool known = !facts["symbian"].is_null() || series40 || phone_book;
    return {std::move(facts), known ? kYes : kNo};
}

void print_match(const Json& facts) {
    printf("%s %s\n", shown(facts, "manufacturer").c_str(), shown(facts, "model").c_str());
    const Json& symbian = facts.at("symbian");
    const std::string entry =
        symbian.is_null() ? "no" : shown(symbian, "manufacturer") + " " + shown(symbian, "model");
    printf("  Symbian list    %s\n", entry.c_str());
    printf("  Series 40 list  %s\n", facts.at("series40") ? "yes" : "no");
    printf("  phone book      %s\n", facts.at("phoneBook") ? "yes" : "no");
}

}  // namespace programs
