// All rows, by topic.
#pragma once

#include "module.h"
#include "row.h"

namespace bench {

// Before anything of the suite is loaded in this process.
std::vector<Row> loading_rows();

std::vector<Row> look_up_rows(const Suite& suite);
std::vector<Row> text_rows(const Suite& suite);
std::vector<Row> settings_rows(const Suite& suite);
std::vector<Row> presentation_rows(const Suite& suite);
std::vector<Row> remote_file_rows(const Suite& suite);
std::vector<Row> port_rows(const Suite& suite);
std::vector<Row> handoff_rows(const Suite& suite);
std::vector<Row> contact_rows(const Suite& suite);
std::vector<Row> item_rows(const Suite& suite);
std::vector<Row> printer_rows(const Suite& suite);
std::vector<Row> send_to_rows(const Suite& suite);
std::vector<Row> image_rows(const Suite& suite);

}  // namespace bench
