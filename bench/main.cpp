// Measures calls of VlCommon.dll against their floors.
#include "child_process.h"
#include "report.h"
#include "rows.h"
#include "scene.h"

#include <stdio.h>
#include <CLI/CLI.hpp>

#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace bench;

struct Options {
    Effort effort;
    bool check = false;      // counts only
    std::string only;        // part of a row's name
    std::string json_file;   // empty: none
    std::string table_file;  // empty: none
    std::string first_load;  // this is a child process
};

Result measure(const Row& row, const Options& options) {
    row.prepare();
    if (!row.agree()) throw std::runtime_error(row.name + ": library and floor differ");
    Result result{&row, {}, row.floor.count(), row.library.count()};
    if (!options.check) result.times = run_paired(row.floor.body, row.library.body, options.effort);
    return result;
}

void measure_all(const std::vector<Row>& rows, const Options& options, std::vector<Result>& results) {
    for (const Row& row : rows) {
        if (row.name.find(options.only) == std::string::npos) continue;
        std::cerr << "  " << row.name << std::endl;
        results.push_back(measure(row, options));
    }
}

// The number of calls that did more than they may.
size_t report_excesses(const std::vector<Result>& results) {
    size_t count = 0;
    for (const Result& result : results) {
        for (const std::string& line : excesses(result)) {
            std::cout << line << '\n';
            ++count;
        }
    }
    std::cout << results.size() << " calls counted, " << count << " excesses\n";
    return count;
}

void report_times(const std::vector<Result>& results, const Options& options) {
    const std::string text = table(results) + '\n' + growth_table(results);
    std::cout << text;
    if (!options.table_file.empty()) std::ofstream(options.table_file, std::ios::binary) << text;
    if (!options.json_file.empty()) std::ofstream(options.json_file, std::ios::binary) << json_text(results);
}

int run(const Options& options) {
    std::vector<Result> results;
    const std::vector<Row> loading = loading_rows();  // before anything of the suite is loaded here
    measure_all(loading, options, results);

    const Suite suite;
    const Scene scene(suite);
    std::vector<Row> calls;
    for (const auto& topic :
         {look_up_rows, text_rows, settings_rows, presentation_rows, port_rows, handoff_rows, contact_rows,
          item_rows, printer_rows, send_to_rows, remote_file_rows, image_rows}) {
        for (Row& row : topic(suite)) calls.push_back(std::move(row));
    }
    measure_all(calls, options, results);
    if (!options.check) report_times(results, options);
    return report_excesses(results) == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) try {
    CLI::App app("Measures calls of VlCommon.dll against their floors");
    Options options;
    app.add_option("--seconds", options.effort.seconds, "time per row");
    app.add_option("--samples", options.effort.samples, "pairs per row, instead of a time");
    app.add_option("--only", options.only, "only rows whose name contains this");
    app.add_option("--json", options.json_file, "write the results there, too");
    app.add_option("--table", options.table_file, "write the table there, too");
    app.add_flag("--check", options.check, "only count; fails when a call does more than it may");
    app.add_option("--first-load", options.first_load)->group("");  // not listed
    CLI11_PARSE(app, argc, argv);
    return options.first_load.empty() ? run(options) : load_and_tell_time(options.first_load.c_str());
} catch (const std::exception& failure) {
    fprintf(stderr, "vlcm_bench: %s\n", failure.what());
    return 1;
}
