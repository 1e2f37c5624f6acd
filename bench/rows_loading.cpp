#include "child_process.h"
#include "rows.h"

#include <tlhelp32.h>

#include <memory>

namespace bench {
namespace {

constexpr const char* kFloor = "bench_empty.dll";
constexpr const char* kLibrary = "VlCommon.dll";
constexpr const char* kFloorText = "an empty DLL with the same modules in its import table";

void load_and_unload(const char* file) { FreeLibrary(LoadLibraryA(file)); }

uint64_t loaded_modules() {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, 0);
    MODULEENTRY32 entry{};
    entry.dwSize = sizeof entry;
    uint64_t count = 0;
    for (BOOL more = Module32First(snapshot, &entry); more; more = Module32Next(snapshot, &entry)) ++count;
    CloseHandle(snapshot);
    return count;
}

std::function<Counts()> modules_of(const char* file) {
    return [file] {
        const uint64_t before = loaded_modules();
        const Module loaded(file);
        Counts counts;
        counts.modules = loaded_modules() - before;
        return counts;
    };
}

// Another set of imports would be another floor.
bool import_alike() {
    return imported_modules(Module(kFloor).handle()) == imported_modules(Module(kLibrary).handle());
}

template <typename Load>
Row row(const char* name, double target, Load load) {
    return {.name = name,
            .floor_text = kFloorText,
            .target = target,
            .floor = {load(kFloor), modules_of(kFloor)},
            .library = {load(kLibrary), modules_of(kLibrary)},
            .allowance = {.modules = modules_of(kFloor)().modules},
            .agree = import_alike};
}

Body in_new_process(const char* file) {
    return [file](size_t calls) {
        double sum = 0;
        for (size_t made = 0; made < calls; ++made) sum += first_load_in_child(file);
        return sum;
    };
}

Body alone(const char* file) {
    return timed([file] { load_and_unload(file); });
}

// The suite's other modules stay loaded from the first call on, as in a program that uses them itself.
class HeldImports {
public:
    void hold() {
        if (!modules_.empty()) return;
        for (const std::string& name : imported_modules(Module(kLibrary).handle())) {
            modules_.push_back(std::make_unique<Module>(name));
        }
    }

private:
    std::vector<std::unique_ptr<Module>> modules_;
};

Body beside_its_imports(const char* file) {
    const auto imports = std::make_shared<HeldImports>();
    return [file, imports](size_t calls) {
        imports->hold();
        return alone(file)(calls);
    };
}

}  // namespace

std::vector<Row> loading_rows() {
    return {
        row("first load in a process", 3, in_new_process),
        row("load and unload again", 1.15, alone),
        row("load and unload again, imports stay", 1.15, beside_its_imports),
    };
}

}  // namespace bench
