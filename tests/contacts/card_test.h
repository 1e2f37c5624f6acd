// The fixture of the export's tests: the stack reads any details as the contact that the test fills.
#pragma once

#include "contact_use.h"

#include "support/call_patch.h"
#include "support/suite_test.h"

#include <functional>
#include <optional>
#include <string>

class CardTest : public support::SuiteTest {
public:
    ~CardTest() override;
    CardTest(const CardTest&) = delete;
    CardTest& operator=(const CardTest&) = delete;

protected:
    using Fill = std::function<void(VlContact&)>;

    CardTest();

    // The file that the export writes.
    [[nodiscard]] const std::string& path() const { return path_; }
    // What it holds; nullopt: there is none.
    [[nodiscard]] std::optional<std::string> file() const { return support::read_file(path_); }
    // What the stack reads from now on.
    void fill_by(Fill fill) { fill_ = std::move(fill); }
    [[nodiscard]] uint32_t export_card() const;
    // Exports such a contact. The card is kept for the reader that is not ours.
    [[nodiscard]] std::string card_of(const Fill& fill);

private:
    std::string path_;
    Fill fill_;
    support::CallPatch<uint32_t(const void*, void*)> parser_;
};

// A whole card around these lines.
[[nodiscard]] std::string whole_card(const std::string& lines);
// The same of a contact without any name.
[[nodiscard]] std::string nameless_card(const std::string& lines);
