// What was found, as a table to read and as JSON.
#pragma once

#include "row.h"

#include <string>
#include <vector>

namespace bench {

// Markdown; reads as plain text too.
std::string table(const std::vector<Result>& results);

// How the cost of one more record grows with the length of the list; empty without such rows.
std::string growth_table(const std::vector<Result>& results);

std::string json_text(const std::vector<Result>& results);

// One line for each call that did more than it may.
std::vector<std::string> excesses(const Result& result);

}  // namespace bench
