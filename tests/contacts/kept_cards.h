// Cards that tests made, kept for a reader that is not ours: a file beside the contact's details.
#pragma once

#include "vlcm/contacts.h"

#include <string>

// Keeps the card of the running test. Left out is what no reader can take back as it was: a card without
// any name, and texts that are not UTF-8 or hold what a vCard would have to escape.
void keep_card(const VlContact& contact, const std::string& card);

// The same with the details as the simulated stack reads them (docs/simulator.md).
void keep_card(const std::string& details, const std::string& card);
